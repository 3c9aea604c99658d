// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/ctrlOVSearch.h"

#include "control/search_run.h"
#include "dictation/tree_scan.h"
#include "platform/text.h"
#include "playback/modMultimedia.h"
#include "plugin/modOVPlugIn.h"
#include "support/log.h"
#include "support/modLanguage.h"
#include "support/modUtil.h"
#include "support/text_ids.h"
#include "widgets/text.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLayout>
#include <QPointer>
#include <QShortcut>
#include <exception>

namespace ov {

namespace {

// What a host function throws is its failure, not ours: the control goes on without an answer.
template <typename Call>
auto asked(const char* procedure, Call call) -> decltype(call()) {
    try {
        return call();
    } catch (const HostError& error) {
        WriteErrorLog(Error(error.number(), error.description()), procedure);
    } catch (...) {
        WriteErrorLog(Error(0, "the host threw what it may not throw"), procedure);
    }
    return {};
}

// Every action that the host announces by name; letter case does not matter.
bool isAction(std::string_view parameter, std::string_view name) {
    return platform::upperCase(parameter) == name;
}

class ControlHandle final : public IFormExtension {
public:
    explicit ControlHandle(QWidget* parent) : control_(new ctrlOVSearch(parent)) {}
    ~ControlHandle() override {
        if (control_)
            control_->letGo();
    }
    ControlHandle(const ControlHandle&) = delete;
    ControlHandle& operator=(const ControlHandle&) = delete;

    void IFormExtension_Init(IPlugin& plugIn, IHostForm& form) override {
        if (control_)
            control_->IFormExtension_Init(plugIn, form);
    }
    WindowHandle IFormExtension_Window() noexcept override {
        return static_cast<QWidget*>(control_.data());
    }

private:
    QPointer<ctrlOVSearch> control_; // empty when the host destroyed the window around it
};

} // namespace

std::shared_ptr<IFormExtension> makeControl(WindowHandle parent) {
    return std::make_shared<ControlHandle>(static_cast<QWidget*>(parent));
}

class ctrlOVSearch::Operation {
public:
    explicit Operation(ctrlOVSearch& control)
        : control_(control), focused_(QApplication::focusWidget()) {
        if (control_.operations_++ > 0)
            return;
        control_.stopRequested_ = false;
        control_.view_.setBusy(true, control_.searching_);
    }
    ~Operation() {
        if (--control_.operations_ > 0)
            return;
        control_.searching_ = false;
        if (control_.terminating_)
            control_.deleteLater();
        else
            giveBack();
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

private:
    // A button that is disabled meanwhile loses the focus; a key must not land on another one.
    void giveBack() {
        control_.view_.setBusy(false, false);
        if (!focused_ || !control_.isAncestorOf(focused_) || focused_->hasFocus())
            return;
        if (focused_->isEnabled())
            focused_->setFocus();
        else
            control_.view_.lvSearchCriteria->setFocus();
    }

    ctrlOVSearch& control_;
    QPointer<QWidget> focused_;
};

ctrlOVSearch::ctrlOVSearch(QWidget* parent) : QWidget(parent), view_(*this) {
    setObjectName(QStringLiteral("ctrlOVSearch"));
    setFocusProxy(view_.lvSearchCriteria);
}

ctrlOVSearch::~ctrlOVSearch() {
    UserControl_Terminate();
}

// ---- Start

void ctrlOVSearch::IFormExtension_Init(IPlugin& plugIn, IHostForm& form) {
    initialising_ = true;
    plugIn_ = &plugIn;
    m_icExtendableForm = &form;
    modOVPlugIn::setCallingPlugIn(&plugIn);
    asked("IFormExtension_Init", [this] {
        m_cEventSource = m_icExtendableForm->EventSource();
        if (m_cEventSource)
            m_cEventSource->subscribe(*this);
        return 0;
    });
    view_.picPlayer->createMixer();
    readFromHost();
    if (!modLanguage::LoadLanguageFile()) {
        modLanguage::ShowLanguageLoadFailure();
        return;
    }
    buildControl(plugIn);
    initialising_ = false;
}

void ctrlOVSearch::readFromHost() {
    namespace host = modOVPlugIn;
    constexpr const char* procedure = "IFormExtension_Init";
    const std::int32_t language = asked(procedure, [&] { return host::GetLanguage(*plugIn_); });
    const std::int32_t subLanguage =
        asked(procedure, [&] { return host::GetSubLanguage(*plugIn_); });
    settings_ = ControlSettings(asked(procedure, [] { return host::GetLocalINIFile(); }));
    dictationTree_ = asked(
        procedure, [] { return host::GetHostDirectory(host::host_directory::dictationTree); });
    criteriaFile_ = CriteriaFile(
        asked(procedure, [] { return host::GetHostDirectory(host::host_directory::settings); }));
    settings_.markAsCopied();
    modLanguage::SetLanguage(language, subLanguage);
}

void ctrlOVSearch::buildControl(IPlugin& plugIn) {
    const std::string title = modLanguage::GetText(text_id::title);
    plugIn.setPlugInDescription(title);
    modUtil::SetMessageTitle(title);
    modDictation::BuildSearchFieldTable();
    asked("LoadColumnSettings", [] {
        modDictation::LoadColumnSettings();
        return 0;
    });
    view_.setCompareAnd(settings_.searchCompareAnd());
    view_.lvSearchResult->setSettings(settings_);
    view_.lvSearchResult->ApplyColumns();
    view_.picPlayer->PlayerInitControls();
    view_.picPlayer->setBackUpSeconds(settings_.backUpSeconds());
    view_.picPlayer->setSpeedPercent(settings_.speedPercent());
    built_ = true;
    retranslate();
    for (const std::string& criterion : criteriaFile_.load())
        view_.lvSearchCriteria->add(criterion);
    connectAll();
    addShortcuts();
    asked("IFormExtension_Init", [&] {
        m_icExtendableForm->ReportControlReady(plugIn);
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
    connect(view_.cmdSearchStop, &QPushButton::clicked, this, &ctrlOVSearch::stopSearch);
    for (QRadioButton* option : view_.optCriteriaCompare)
        connect(option, &QRadioButton::clicked, this, &ctrlOVSearch::compareChanged);

    connect(view_.splitter, &QSplitter::splitterMoved, this, [this] { shareMoved_ = true; });

    const CriteriaList* criteria = view_.lvSearchCriteria;
    const auto criteriaOption = [this](int index) {
        return [this, index] { cmdSearchKriteriaOptions_Click(index); };
    };
    connect(criteria, &CriteriaList::addRequested, this, criteriaOption(ControlView::addCriterion));
    connect(criteria, &CriteriaList::editRequested, this,
            criteriaOption(ControlView::editCriterion));
    connect(criteria, &CriteriaList::deleteRequested, this,
            criteriaOption(ControlView::deleteCriterion));
    connect(criteria, &CriteriaList::selectionMoved, this,
            [this] { view_.enableCriteriaButtons(); });

    const ResultList* results = view_.lvSearchResult;
    const PlayerPanel* player = view_.picPlayer;
    connect(results, &ResultList::playRequested, player, &PlayerPanel::PlayerPlay);
    connect(results, &ResultList::playOrPauseRequested, player, &PlayerPanel::playOrPause);
    connect(results, &ResultList::skipRequested, player, &PlayerPanel::skip);
    connect(results, &ResultList::stopPlayingRequested, player, &PlayerPanel::PlayerStop);
    connect(player, &PlayerPanel::backUpSecondsChosen, this,
            [this](std::int32_t seconds) { settings_.setBackUpSeconds(seconds); });
    connect(player, &PlayerPanel::speedChosen, this,
            [this](std::int32_t percent) { settings_.setSpeedPercent(percent); });
    connect(results, &ResultList::showLogRequested, this,
            [this] { cmdSearchOptions_Click(ControlView::log); });
    connect(results, &ResultList::columnsRequested, this,
            [this] { cmdSearchOptions_Click(ControlView::columns); });
    connect(results, &ResultList::sortRequested, this, &ctrlOVSearch::sortResults);
    connect(results, &ResultList::copyRequested, this, [this] {
        copyRows([this](const auto& goOn) { view_.lvSearchResult->copySelectedRows(goOn); });
    });
    connect(results, &ResultList::copyPathsRequested, this, [this] {
        copyRows([this](const auto& goOn) { view_.lvSearchResult->copySelectedPaths(goOn); });
    });
}

void ctrlOVSearch::addShortcuts() {
    const auto add = [this](const QKeySequence& key, auto slot) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, slot);
    };
    const auto search = [this] { cmdSearchOptions_Click(ControlView::search); };
    add(Qt::Key_F5, search);
    add(QKeySequence::Find, search);
    add(Qt::Key_Escape, &ctrlOVSearch::stopSearch);
    const auto addExport = [&](const QKeySequence& key, exporting::print::Command what) {
        add(key, [this, what] {
            command("ExportRows", [this, what] {
                if (checkDictationTree(dictationTree_, *this))
                    exportRows(what, false);
            });
        });
    };
    addExport(QKeySequence::Print, exporting::print::Command::print);
    addExport(QKeySequence::Save, exporting::print::Command::saveAs);
}

// ---- End

void ctrlOVSearch::letGo() {
    UserControl_Terminate();
    hide();
    setParent(nullptr); // the host's window may go before a search has come to its end
    if (operations_ == 0)
        delete this;
}

void ctrlOVSearch::UserControl_Terminate() {
    if (terminating_)
        return;
    terminating_ = true;
    if (m_cEventSource)
        m_cEventSource->unsubscribe(*this);
    if (modDictation::isSearchRunning())
        modDictation::requestSearchAbort();
    const QList<QDialog*> dialogs = findChildren<QDialog*>();
    for (QDialog* dialog : dialogs)
        dialog->reject();
    windowInterface_->closeBoxes();
    endPlayer();
    if (built_) {
        saveCriteria();
        view_.lvSearchResult->saveSettings();
        if (shareMoved_)
            settings_.setCriteriaShare(view_.criteriaShare());
    }
    if (modOVPlugIn::callingPlugIn() == plugIn_)
        modOVPlugIn::setCallingPlugIn(nullptr); // the host's objects may go from now on
}

// The level timer is ended twice and the status timer not at all, which ends with the control.
void ctrlOVSearch::endPlayer() const {
    view_.picPlayer->PlayerStop();
    view_.picPlayer->stopLevelTimer();
    view_.picPlayer->stopLevelTimer();
    modMultimedia::MciCloseAll();
    view_.picPlayer->releaseMixer();
}

// ---- What the host tells

void ctrlOVSearch::EventSource_ActionEvent(std::int32_t action, std::int32_t /*second*/,
                                           std::string_view parameter) {
    if (action == action_event::update && isAction(parameter, "UPDATE"))
        refresh();
    if (action != action_event::changed)
        return;
    if (isAction(parameter, "DIR_NETDICTATIONTREE")) {
        dictationTree_ = modOVPlugIn::GetHostDirectory(modOVPlugIn::host_directory::dictationTree);
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

// Before Qt hands it on to the children, open dialogs among them.
void ctrlOVSearch::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange && built_)
        retranslate();
    QWidget::changeEvent(event);
}

// Only now is it known how much room the halves share.
void ctrlOVSearch::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (shown_ || !built_)
        return;
    shown_ = true;
    layout()->activate();
    view_.setCriteriaShare(settings_.criteriaShare());
}

void ctrlOVSearch::retranslate() {
    modDictation::BuildSearchFieldTable();
    const std::string title = modLanguage::GetText(text_id::title);
    modUtil::SetMessageTitle(title);
    plugIn_->setPlugInDescription(title);
    setAccessibleName(widgets::toQt(title));
    view_.retranslate(*this);
    if (hitCount_) {
        view_.lblSearchResult->setText(searchResultText(*hitCount_));
        view_.setNotice(searchNotice());
    } else {
        view_.lblSearchResult->setText(widgets::text(text_id::resultLabel, {""}));
    }
}

// ---- Commands

void ctrlOVSearch::command(const char* procedure, const std::function<void()>& run) {
    if (operations_ > 0 || terminating_)
        return;
    const Operation operation(*this);
    try {
        run();
    } catch (const HostError& error) {
        report(Error(error.number(), error.description()), procedure);
    } catch (const std::exception& error) {
        report(Error(0, error.what()), procedure);
    } catch (...) {
        report(Error(0, "unknown"), procedure);
    }
}

void ctrlOVSearch::report(const Error& error, const char* procedure) {
    WriteErrorLog(error, procedure);
    if (!terminating_)
        modUtil::ShowMessage(error.description, platform::MessageIcon::exclamation, {}, this);
}

} // namespace ov
