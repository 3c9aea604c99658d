// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/ctrlOVSearch.h"

#include "platform/known_folders.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"
#include "support/log.h"
#include "support/modUtil.h"
#include "widgets/text.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QShortcut>
#include <utility>

namespace ov {

namespace {

// Every action that the host announces by name; letter case does not matter.
bool isAction(std::string_view parameter, std::string_view name) {
    return platform::upperCase(parameter) == name;
}

} // namespace

ctrlOVSearch::ctrlOVSearch(QWidget* parent)
    : QWidget(parent),
      view_(*this),
      commands_(this, [this](const char* procedure, const CommandQueue::Command& run) {
          perform(procedure, run);
      }) {
    setObjectName(QStringLiteral("ctrlOVSearch"));
    setFocusProxy(view_.lvSearchCriteria);
    followParent();
}

ctrlOVSearch::~ctrlOVSearch() {
    UserControl_Terminate();
}

// ---- Start

void ctrlOVSearch::IFormExtension_Init(IPlugin& plugIn, IHostForm& form) {
    if (isEnding())
        return;
    plugIn_ = &plugIn;
    m_icExtendableForm = &form;
    const Frame frame(*this);
    listenToHost();
    view_.picPlayer->createMixer();
    readFromHost();
    if (isEnding())
        return;
    if (!modLanguage::LoadLanguageFile()) {
        modLanguage::ShowLanguageLoadFailure();
        return;
    }
    buildControl();
}

void ctrlOVSearch::listenToHost() {
    constexpr const char* procedure = "IFormExtension_Init";
    m_cEventSource = ask(procedure, [this] { return m_icExtendableForm->EventSource(); });
    if (!m_cEventSource)
        return;
    ask(procedure, [this] {
        m_cEventSource->subscribe(*this);
        return 0;
    });
    if (isEnding()) // the end may have come before the host had us on its list
        m_cEventSource->unsubscribe(*this);
}

void ctrlOVSearch::readFromHost() {
    namespace host = modOVPlugIn;
    constexpr const char* procedure = "IFormExtension_Init";
    const std::int32_t language = ask(procedure, [this] { return host::GetLanguage(*plugIn_); });
    const std::int32_t subLanguage =
        ask(procedure, [this] { return host::GetSubLanguage(*plugIn_); });
    const std::string settings = ask(procedure, [] { return host::GetLocalINIFile(); });
    dictationTree_ =
        ask(procedure, [] { return host::GetHostDirectory(host::host_directory::dictationTree); });
    const std::string directory =
        ask(procedure, [] { return host::GetHostDirectory(host::host_directory::settings); });
    if (isEnding())
        return;
    settings_ = ControlSettings(settings);
    exportSettings_ = exporting::ExportSettings(settings);
    constexpr std::size_t bytesOfMiB = std::size_t{1} << 20;
    remembered_ =
        std::make_shared<modDictation::RememberedStore>(modDictation::RememberedStore::Rules{
            .mostBytes = static_cast<std::size_t>(settings_.rememberedMiB()) * bytesOfMiB,
            .trustsUnknown = settings_.trustsFolderTimes()});
    criteriaFile_ = CriteriaFile(directory);
    if (const std::string own = platform::userDataFolder(); !own.empty())
        savedSearches_ = SavedSearches(own + "Searches\\");
    view_.picPlayer->setRememberedPositions(
        RememberedPositions(platform::userDataFolder()),
        [kept = settings_] { return kept.playerChoices().remembersPositions; });
    settings_.markAsCopied();
    modLanguage::SetLanguage(language, subLanguage);
}

void ctrlOVSearch::buildControl() {
    retranslate();
    ask("LoadColumnSettings", [] {
        modDictation::LoadColumnSettings();
        return 0;
    });
    if (isEnding())
        return;
    view_.setCompareAnd(settings_.searchCompareAnd());
    view_.lvSearchResult->setSettings(settings_);
    view_.lvSearchResult->ApplyColumns();
    view_.picPlayer->PlayerInitControls();
    view_.picPlayer->setChoices(settings_.playerChoices());
    if (const auto volume = settings_.volume())
        view_.picPlayer->setVolume(*volume);
    OutputMenu::setOutput(settings_.output());
    setUpCatalogue();
    view_.chkFollow->setChecked(settings_.followsCriteria());
    view_.lvSearchCriteria->load({criteriaFile_.load(), view_.isCompareAnd()});
    view_.criteriaRoom->begin(settings_.criteriaShare());
    enter(ControlState::idle); // from now on the criteria are worth saving
    connectAll();
    addShortcuts();
    joinBus();
    ask("IFormExtension_Init", [this] {
        m_icExtendableForm->ReportControlReady(*plugIn_);
        return 0;
    });
}

void ctrlOVSearch::connectAll() {
    for (int i = 0; i < static_cast<int>(view_.cmdSearchOptions.size()); ++i)
        connect(view_.cmdSearchOptions[static_cast<std::size_t>(i)], &QPushButton::clicked, this,
                [this, i] { cmdSearchOptions_Click(i); });
    for (int i = 0; i < static_cast<int>(view_.cmdSearchKriteriaOptions.size()); ++i)
        connect(view_.cmdSearchKriteriaOptions[static_cast<std::size_t>(i)], &QPushButton::clicked,
                this, [this, i] { cmdSearchKriteriaOptions_Click(i); });
    connect(&view_.emptyState->button(), &QPushButton::clicked, this, &ctrlOVSearch::listAll);
    connect(view_.cmdSearchStop, &QPushButton::clicked, this, &ctrlOVSearch::stopSearch);
    for (QRadioButton* option : view_.optCriteriaCompare)
        connect(option, &QRadioButton::clicked, this,
                [this] { view_.lvSearchCriteria->chooseAll(view_.isCompareAnd()); });

    connectCriteria();
    connectResults();
    connectFilter();
    connectHandingOut();
    connectHeader();
    connectPlaying();
    setUpPedals();
}

void ctrlOVSearch::connectCriteria() {
    const CriteriaList* criteria = view_.lvSearchCriteria;
    const auto option = [this](int index) {
        return [this, index] { cmdSearchKriteriaOptions_Click(index); };
    };
    connect(criteria, &CriteriaList::addRequested, this, option(ControlView::addCriterion));
    connect(criteria, &CriteriaList::editRequested, this, option(ControlView::editCriterion));
    connect(criteria, &CriteriaList::deleteRequested, this, option(ControlView::deleteCriterion));
    connect(view_.cmdSavedSearches, &QPushButton::clicked, this,
            [this] { post("SavedSearches", [this] { showSavedSearches(); }); });
    connect(criteria, &CriteriaList::dragRequested, this,
            [this] { post("DragCriteria", [this] { view_.lvSearchCriteria->dragSelected(); }); });
    connect(criteria, &CriteriaList::duplicateRequested, this,
            [this] { post("DuplicateCriterion", [this] { duplicateCriterion(); }); });
    connect(criteria, &CriteriaList::pasteRequested, this,
            [this] { post("PasteCriteria", [this] { pasteCriteria(); }); });
    connect(criteria, &CriteriaList::selectionMoved, this,
            [this] { view_.enableCriteriaButtons(); });
    connect(criteria, &CriteriaList::allChanged, this, &ctrlOVSearch::compareChanged);
    connect(criteria, &CriteriaList::changed, this, &ctrlOVSearch::criteriaChanged);
    connect(view_.chkFollow, &QCheckBox::toggled, this, &ctrlOVSearch::followChosen);
}

void ctrlOVSearch::addShortcuts() {
    const auto add = [this](const QKeySequence& key, auto slot) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, slot);
        return shortcut;
    };
    add(Qt::Key_F5, &ctrlOVSearch::searchByKey);
    add(QKeySequence::Find, &ctrlOVSearch::searchByKey);
    add(Qt::SHIFT | Qt::Key_F5, &ctrlOVSearch::searchAfresh);
    add(Qt::Key_Escape, &ctrlOVSearch::escape);
    add(Qt::CTRL | Qt::Key_K, &ctrlOVSearch::enterFilter);
    add(Qt::Key_F6, [this] { view_.goRound(true); });
    add(Qt::SHIFT | Qt::Key_F6, [this] { view_.goRound(false); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_H, [this] { view_.lvSearchResult->openHeaderMenu(); });
    add(Qt::CTRL | Qt::Key_Down, [this] {
        if (view_.isInCriteria(window()->focusWidget()))
            view_.lvSearchResult->setFocus(Qt::ShortcutFocusReason);
    });
    add(Qt::CTRL | Qt::Key_J, [this] { view_.picPlayer->askForTime(); })->setAutoRepeat(false);
    add(Qt::CTRL | Qt::Key_L, [this] { view_.picPlayer->markLoop(); })->setAutoRepeat(false);
    add(Qt::CTRL | Qt::Key_T, [this] { view_.picPlayer->copyTimeStamp(); })->setAutoRepeat(false);
    add(Qt::Key_F7, [this] { view_.picPlayer->playAgain(); });
    constexpr std::int32_t skipSeconds = 5;
    add(Qt::CTRL | Qt::Key_Left, [this] { view_.picPlayer->skip(-skipSeconds); });
    add(Qt::CTRL | Qt::Key_Right, [this] { view_.picPlayer->skip(skipSeconds); });
    const auto addExport = [&](const QKeySequence& key, exporting::print::Command what) {
        add(key, [this, what] {
            post("ExportRows", [this, what] {
                if (listAnswers())
                    exportRows(what, false);
            });
        });
    };
    addExport(QKeySequence::Print, exporting::print::Command::print);
    addExport(QKeySequence::Save, exporting::print::Command::saveAs);
}

// ---- What the host tells

void ctrlOVSearch::EventSource_ActionEvent(std::int32_t action, std::int32_t /*second*/,
                                           std::string_view parameter) {
    const Frame frame(*this);
    if (action == action_event::update && isAction(parameter, "UPDATE"))
        refresh();
    if (action != action_event::changed)
        return;
    if (isAction(parameter, "DIR_NETDICTATIONTREE")) {
        std::string root =
            modOVPlugIn::GetHostDirectory(modOVPlugIn::host_directory::dictationTree);
        if (isEnding())
            return;
        dictationTree_ = std::move(root);
        showCounts();
        showHint();
        refresh();
    } else if (isAction(parameter, "LANGUAGE")) {
        // The plug-in object was told before us and has set the language.
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(this, &change);
    }
}

void ctrlOVSearch::EventSource_WindowEvent(std::int32_t /*event*/, std::int32_t /*windowId*/,
                                           std::int32_t /*third*/, std::int32_t /*fourth*/,
                                           IHostWindow& /*window*/) {}

// The language before Qt hands it on to the children, open dialogs among them.
void ctrlOVSearch::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange && rulesOf(state_).hasContents) {
        retranslate();
        windowInterface_->changeLanguage(this);
    } else if (event->type() == QEvent::ParentChange) {
        followParent();
    }
    QWidget::changeEvent(event);
}

void ctrlOVSearch::retranslate() {
    modDictation::BuildSearchFieldTable();
    const std::string title = modLanguage::GetText(text_id::title);
    modUtil::SetMessageTitle(title);
    plugIn_->setPlugInDescription(title);
    setAccessibleName(widgets::toQt(title));
    view_.retranslate(*this);
    showOutcome(view_, outcome_);
    showCounts();
    showHint();
}

} // namespace ov
