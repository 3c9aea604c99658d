// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/pedal/frmPedals.h"
#include "dialogs/details_dialog.h"
#include "dialogs/frmCriteria.h"
#include "dialogs/frmExportOptionsPrint.h"
#include "dialogs/frmSearchName.h"
#include "dialogs/frmSearchResultColumns.h"
#include "playback/panel/player_panel.h"
#include "tests/playback/panel/pedal/pedals_fixture.h"
#include "tests/wave_files.h"
#include "tests/window/looked_through.h"
#include "tests/window/window_fixture.h"
#include "widgets/help/shortcuts.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QMetaEnum>
#include <QProgressBar>

// What the windows say and how their parts behave.

namespace ov {
namespace {

// Not sizes, places and colours, which are the desktop's.
constexpr const char* shownProperties =
    "windowTitle title text placeholderText toolTip whatsThis accessibleName accessibleDescription "
    "focusPolicy contextMenuPolicy mouseTracking textFormat alignment wordWrap indent checkable "
    "checked "
    "default autoDefault flat autoRaise popupMode readOnly maxLength clearButtonEnabled editable "
    "insertPolicy maxVisibleItems minimum maximum singleStep pageStep value suffix displayFormat "
    "calendarPopup orientation textVisible tracking selectionMode selectionBehavior editTriggers "
    "dragEnabled dragDropMode alternatingRowColors showGrid tabKeyNavigation sortingEnabled "
    "rootIsDecorated itemsExpandable uniformItemSizes textElideMode stretchLastSection "
    "highlightSections showSortIndicator modal acceptDrops";

const std::set<std::string> usual{"AlignLeading|AlignVCenter",
                                  "AutoText",
                                  "DefaultContextMenu",
                                  "InsertAtBottom",
                                  "NoDragDrop",
                                  "NoFocus"};

std::string oneLine(QString words) {
    return words.replace(u'\n', QLatin1String("\\n")).toStdString();
}

// Empty for what is as good as unset, and what a clock shows.
std::string valueOf(const QObject& object, const QMetaProperty& property) {
    const QVariant value = property.read(&object);
    if (object.inherits("QDateEdit") && property.name() == QByteArray("text"))
        return {};
    if (!property.isEnumType()) {
        for (const QVariant& unset : {QVariant(false), QVariant(0), QVariant(-1)})
            if (value == unset)
                return {};
        return oneLine(value.toString());
    }
    const QMetaEnum names = property.enumerator();
    return property.isFlagType() ? names.valueToKeys(value.toInt()).toStdString()
                                 : std::string(names.valueToKey(value.toInt()));
}

std::string entriesOf(const QWidget& widget) {
    std::string all;
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        for (int i = 0; i < list->count(); ++i)
            all += " | " + oneLine(list->itemText(i));
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
        view != nullptr && view->model() != nullptr && !view->inherits("QHeaderView"))
        for (int column = 0; column < view->model()->columnCount(); ++column)
            all += " | " + oneLine(view->model()->headerData(column, Qt::Horizontal).toString());
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label && label->buddy())
        all += " > " + label->buddy()->objectName().toStdString();
    for (const QAction* action : widget.actions())
        all += action->isSeparator()
                   ? " | --"
                   : " | " + oneLine(action->text() + u' ' + action->shortcut().toString()) +
                         (action->isChecked()     ? "(x)"
                          : action->isCheckable() ? "( )"
                                                  : "") +
                         (action->isEnabled() ? "" : "(off)");
    return all;
}

// What is in the cells, and which is the current one.
std::string rowsOf(const QWidget& widget) {
    const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
    if (view == nullptr || view->model() == nullptr || view->inherits("QHeaderView"))
        return {};
    std::string all;
    constexpr int most = 3;
    const QAbstractItemModel& model = *view->model();
    for (int row = 0; row < std::min(model.rowCount(), most); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const QModelIndex cell = model.index(row, column);
            all += (column == 0 ? "  row" : "") +
                   std::string(cell == view->currentIndex() ? " |* " : " | ") +
                   oneLine(cell.data().toString().section(QStringLiteral("ovsearch-"), 0, 0));
        }
        all += "\n";
    }
    return all;
}

// What stands beside or below what; a number tells how much of the room it takes more than others.
std::string layoutOf(const QLayout& layout) {
    const auto* box = qobject_cast<const QBoxLayout*>(&layout);
    const auto* grid = qobject_cast<const QGridLayout*>(&layout);
    std::string all = !box                                          ? "grid("
                      : box->direction() == QBoxLayout::TopToBottom ? "down("
                                                                    : "along(";
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem& item = *layout.itemAt(i);
        if (i > 0)
            all += ", ";
        if (QWidget* widget = item.widget())
            all += widget->objectName().isEmpty() ? widget->metaObject()->className()
                                                  : widget->objectName().toStdString();
        else
            all += item.layout() ? layoutOf(*item.layout()) : "-";
        if (box && box->stretch(i) > 0)
            all += " " + std::to_string(box->stretch(i));
        if (int at[4]; grid) {
            grid->getItemPosition(i, &at[0], &at[1], &at[2], &at[3]);
            for (const int one : at)
                all += " " + std::to_string(one);
        }
    }
    return all + ")";
}

bool isOurs(const QWidget& widget) {
    const bool says = widget.inherits("QLabel") || widget.inherits("QAbstractButton");
    return widget.inherits("QHeaderView") || widget.inherits("QGroupBox") ||
           widget.inherits("QMenu") ||
           (widget.objectName().isEmpty() ? says && !widget.property("text").toString().isEmpty()
                                          : !widget.objectName().startsWith(QLatin1String("qt_")));
}

void describe(const QWidget& widget, const QWidget& root, std::string& all) {
    if (isOurs(widget)) {
        all += widget.objectName().toStdString() + ": " + widget.metaObject()->className() +
               (widget.isVisibleTo(&root) ? "" : " hidden") +
               (widget.isEnabledTo(&root) ? "" : " disabled") +
               (root.focusWidget() == &widget ? " focused" : "") +
               (widget.property("icon").value<QIcon>().isNull() ? "" : " with icon") +
               (&widget == &root ? " " + root.locale().name().toStdString() : "") +
               (widget.windowFlags().testFlag(Qt::WindowContextHelpButtonHint) ? " ?" : "") +
               entriesOf(widget) + "\n";
        for (const QByteArray& name : QByteArray(shownProperties).split(' '))
            if (const int index = widget.metaObject()->indexOfProperty(name.constData());
                index >= 0)
                if (const auto value = valueOf(widget, widget.metaObject()->property(index));
                    !value.empty() && !usual.contains(value))
                    all += "  " + name.toStdString() + " " + value + "\n";
        const QColor marked = widget.palette().color(QPalette::Active, QPalette::Highlight);
        if (marked != QApplication::palette().color(QPalette::Active, QPalette::Highlight))
            all += "  highlight " + marked.name().toStdString() + "\n";
        const QMetaEnum policies = QMetaEnum::fromType<QSizePolicy::Policy>();
        const QSizePolicy policy = widget.sizePolicy();
        all += std::string("  ") + policies.valueToKey(policy.horizontalPolicy()) + " " +
               policies.valueToKey(policy.verticalPolicy()) +
               (policy.retainSizeWhenHidden() ? " keeps its place" : "") + "\n" + rowsOf(widget);
    }
    if (widget.layout() && !widget.inherits("QDialogButtonBox") &&
        !widget.objectName().startsWith(QLatin1String("qt_")))
        all += "  " + layoutOf(*widget.layout()) + "\n";
    for (const QObject* below : widget.children())
        if (const auto* one = qobject_cast<const QWidget*>(below))
            if (!one->isWindow() || one->inherits("QMenu"))
                describe(*one, root, all);
}

class Looks : public WindowTest {
protected:
    Looks() {
        writeWave(store.native("Knee.WAV"), {}, sweep(8000, 80000));
        store.add("no sound.WAV");
        store.add("7$P1@@1$ABC.WAV");
        openControl();
    }
    std::string ofAllWindows() {
        frmCriteria editor;
        frmCriteria ofDates;
        frmSearchResultColumns columns;
        frmExportOptionsPrint print;
        frmSearchName name(nullptr);
        DetailsDialog details("\\a\\2$ROH.WAV", nullptr);
        frmPedals pedals;
        const std::initializer_list<QDialog*> dialogs{&editor, &ofDates, &columns, &print,
                                                      &name,   &details, &pedals};
        for (QDialog* dialog : dialogs)
            dialog->show();
        choose(child<QComboBox>(ofDates, "cboField"), modDictation::field_id::dictated);
        choose(child<QComboBox>(ofDates, "cboOperator"), modDictation::operator_id::betweenDates);
        pedals_.plugIn();
        widgets::showShortcuts(window());
        std::vector<QWidget*> windows{&window(), &widget<QDialog>("frmShortcuts")};
        windows.insert(windows.end(), dialogs.begin(), dialogs.end());
        std::string all;
        for (const char* language : {"9", "7"}) {
            speak(language);
            for (QWidget* one : windows) {
                if (QEvent change(QEvent::LanguageChange); language == std::string("7"))
                    QCoreApplication::sendEvent(one, &change);
                one->grab(); // what is read of an empty list is told as it is drawn
                all += std::string("== ") + language + "\n";
                describe(*one, *one, all);
            }
        }
        return all;
    }
    // With two dictations in the list, one of them selected.
    std::string ofMenus() {
        const std::function<void()> openers[] = {
            [this] { press("cmdSearchOptions(2)"); },
            [this] { press("cmdSavedSearches"); },
            [this] { rightClick(results()); },
            [this] { rightClick(*results().horizontalHeader()->viewport()); },
            [this] { rightClick(widget<QTreeWidget>("lvSearchCriteria")); },
        };
        std::string all = "== found\n";
        describe(window(), window(), all);
        for (const auto& open : openers) {
            open();
            describe(popup(), popup(), all);
            popup().close();
        }
        return all;
    }
    // With a dictation that is open, and with one that cannot be.
    std::string ofPlayer() {
        PlayerPanel player(nullptr);
        player.createMixer();
        player.PlayerInitControls();
        std::string all = "== open\n";
        for (const char* name : {"Knee.WAV", "no sound.WAV"}) {
            player.PlayerOpenFile(store.path(name));
            auto& state = child<QProgressBar>(player, "prgSearchPlayerStatus");
            EXPECT_TRUE(QTest::qWaitFor([&] { return state.format() != u"Not ready"; }, 60000));
            describe(player, player, all);
        }
        return all;
    }

    const Environment silent_{"SDL_AUDIODRIVER", "dummy"};
    FakePedals pedals_;
};

TEST_F(Looks, AreAsTheyWereLookedThrough) {
    std::string now = ofAllWindows();
    speak("9");
    searchAll();
    results().selectRow(0);
    now += ofMenus() + ofPlayer();
    expectLookedThrough(now, "window/looks.txt");
}

} // namespace
} // namespace ov
