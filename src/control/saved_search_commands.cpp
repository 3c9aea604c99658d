// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The menu of the saved searches.

#include "control/criteria/criteria_groups.h"
#include "control/ctrlOVSearch.h"
#include "dialogs/frmSearchName.h"
#include "platform/files.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QMenu>
#include <algorithm>

namespace ov {

namespace {

// Fits a menu, and is no accelerator.
QString menuText(const QString& text, const QWidget& widget) {
    constexpr int letters = 60;
    const QFontMetrics metrics = widget.fontMetrics();
    return metrics
        .elidedText(text.simplified(), Qt::ElideRight, metrics.averageCharWidth() * letters)
        .replace(u'&', QStringLiteral("&&"));
}

// "A + (B / C)" for all of A and any of B and C.
QString criteriaText(const modDictation::Search& search) {
    const QLatin1String plus(" + ");
    const QLatin1String slash(" / ");
    QList<QStringList> groups;
    for (const modDictation::Criterion& criterion : search.criteria) {
        if (groups.isEmpty() || !criterion.indented)
            groups.emplace_back();
        groups.back() << widgets::toQt(modDictation::GetCriterionText(criterion)).trimmed();
    }
    QStringList texts;
    for (const QStringList& group : groups) {
        const QString text = group.join(search.all ? slash : plus);
        texts << (group.size() > 1 && groups.size() > 1 ? u'(' + text + u')' : text);
    }
    return texts.join(search.all ? plus : slash);
}

using Act = std::function<void(const SavedSearch&)>;

void addSearches(QMenu& menu, const std::vector<SavedSearch>& searches, const Act& act) {
    for (const SavedSearch& one : searches) {
        const QString shown = one.name.empty() ? criteriaText(one.search) : widgets::toQt(one.name);
        QAction* action = menu.addAction(menuText(shown, menu));
        QObject::connect(action, &QAction::triggered, &menu, [act, one] { act(one); });
    }
}

void addSubmenu(QMenu& menu, std::int32_t caption, const std::vector<SavedSearch>& searches,
                const Act& act) {
    QMenu* submenu = menu.addMenu(QString());
    widgets::setCaption(*submenu->menuAction(), caption);
    submenu->setEnabled(!searches.empty());
    addSearches(*submenu, searches, act);
}

} // namespace

modDictation::Search ctrlOVSearch::presentSearch() const {
    modDictation::Search search;
    search.criteria = view_.lvSearchCriteria->criteria();
    search.all = view_.isCompareAnd();
    return search;
}

void ctrlOVSearch::showSavedSearches() {
    const std::vector<SavedSearch> saved = savedSearches_.saved();
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("SavedSearchesMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* save = menu->addAction(QString());
    widgets::setCaption(*save, text_id::saveSearchAs);
    save->setEnabled(savedSearches_.canKeep() && !view_.lvSearchCriteria->criteria().empty());
    connect(save, &QAction::triggered, this,
            [this] { post("SaveSearch", [this] { saveSearch({}); }); });
    menu->addSeparator();
    const auto posted = [this](void (ctrlOVSearch::*act)(const SavedSearch&)) {
        return [this, act](const SavedSearch& search) {
            post("SavedSearches", [this, act, search] { (this->*act)(search); });
        };
    };
    addSearches(*menu, saved, posted(&ctrlOVSearch::bringSearch));
    menu->addSeparator();
    addSubmenu(*menu, text_id::recentSearches, savedSearches_.recent(),
               posted(&ctrlOVSearch::bringSearch));
    addSubmenu(*menu, text_id::renameSearch, saved, posted(&ctrlOVSearch::saveSearch));
    addSubmenu(*menu, text_id::deleteSearch, saved, posted(&ctrlOVSearch::deleteSearch));
    const QPushButton& button = *view_.cmdSavedSearches;
    menu->popup(button.mapToGlobal(button.rect().bottomLeft()));
}

// Under the name that the user gives; one that is saved already is renamed.
void ctrlOVSearch::saveSearch(const SavedSearch& renamed) {
    enter(ControlState::asking);
    frmSearchName dialog(this);
    dialog.SearchName = renamed.name;
    dialog.exec();
    if (!dialog.OKPressed() || isEnding())
        return;
    const std::string name = readableSearchName(dialog.SearchName);
    if (name.empty())
        return platform::userInterface().beep();
    const std::vector<SavedSearch> saved = savedSearches_.saved();
    const bool isTaken = std::ranges::find(saved, name, &SavedSearch::name) != saved.end();
    if (isTaken && name != renamed.name &&
        !modUtil::AskYesNo({text_id::replaceSearchQuestion, {name}}, {}, this))
        return;
    if (!isEnding())
        tellUnsavedSearch(renamed.file.empty() ? savedSearches_.save(name, presentSearch())
                                               : savedSearches_.rename(renamed, name));
}

void ctrlOVSearch::bringSearch(const SavedSearch& saved) {
    view_.lvSearchCriteria->replaceAll({entriesOf(saved.search.criteria), saved.search.all});
    if (saved.skipped == 0)
        return;
    enter(ControlState::asking);
    modUtil::ShowMessage({text_id::searchPartlyRead,
                          {widgets::groupedNumber(static_cast<std::int64_t>(saved.skipped)),
                           platform::toNativePath(saved.file)}},
                         platform::MessageIcon::exclamation, {}, this);
}

void ctrlOVSearch::deleteSearch(const SavedSearch& saved) {
    enter(ControlState::asking);
    if (modUtil::AskYesNo({text_id::deleteSearchQuestion, {saved.name}}, {}, this) && !isEnding())
        tellUnsavedSearch(SavedSearches::remove(saved));
}

void ctrlOVSearch::tellUnsavedSearch(const platform::Status& status) {
    if (status.ok())
        return;
    WriteErrorLog(status, "SavedSearches");
    enter(ControlState::asking);
    modUtil::ShowMessage({text_id::searchNotSaved, {status.description()}},
                         platform::MessageIcon::exclamation, {}, this);
}

void ctrlOVSearch::noteSearch() {
    if (searched_.criteria == std::vector<modDictation::Criterion>(1))
        return; // all dictations
    if (const platform::Status noted = savedSearches_.note(searched_); !noted.ok())
        WriteErrorLog(noted, "SavedSearches");
}

} // namespace ov
