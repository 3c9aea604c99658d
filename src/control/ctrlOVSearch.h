// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/command_queue.h"
#include "control/control_settings.h"
#include "control/control_state.h"
#include "control/control_view.h"
#include "control/criteria/criteria_file.h"
#include "control/criteria/saved_searches.h"
#include "control/filter/aside_work.h"
#include "control/host_trap.h"
#include "control/search_run.h"
#include "export/print/list_export.h"
#include "playback/panel/bus/player_bus.h"
#include "playback/panel/choices/choice_keeper.h"
#include "plugin/host_interfaces.h"
#include "plugin/modOVPlugIn.h"
#include "support/log.h"
#include "widgets/window_interface.h"

#include <QAction>
#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace ov {

struct CriterionCounts;
class MovedDictation;

// The search control that the host places in its main window: criteria, the hits of a search,
// the player. The host drives it through the object that makeControl() gives.
//
// Every call that leaves it (to the host, to a dialog, to the event loop) may come back to a
// control that has been let go of: after each, isEnding() is looked at.
class ctrlOVSearch final : public QWidget, public IEventSink {
    Q_OBJECT

public:
    explicit ctrlOVSearch(QWidget* parent);
    ~ctrlOVSearch() override;

    // The start sequence. A host function that fails counts as one that answers nothing.
    void IFormExtension_Init(IPlugin& plugIn, IHostForm& form);

    // The host lets go, or has destroyed the window around the control. Ends what runs, saves what
    // the user entered, calls the host no more, and deletes the control as soon as nothing of it
    // is on the stack.
    void letGo();
    bool isEnding() const { return state_ == ControlState::ending; }

    void EventSource_ActionEvent(std::int32_t action, std::int32_t second,
                                 std::string_view parameter) override;
    void EventSource_WindowEvent(std::int32_t event, std::int32_t windowId, std::int32_t third,
                                 std::int32_t fourth, IHostWindow& window) override;

    void cmdSearchOptions_Click(int index);
    void cmdSearchKriteriaOptions_Click(int index);

protected:
    void changeEvent(QEvent* event) override;

private:
    // Code of the control that calls the host or lets messages be handled is on the stack. Keeps
    // the control alive, and lets it call in its own name.
    class Frame {
    public:
        explicit Frame(ctrlOVSearch& control)
            : alive_(control),
              calling_(control.plugIn_),
              windows_(*control.windowInterface_, &control) {}

    private:
        struct Alive {
            explicit Alive(ctrlOVSearch& entered) : control(entered) { ++control.frames_; }
            ~Alive() { control.leaveFrame(); }
            Alive(const Alive&) = delete;
            Alive& operator=(const Alive&) = delete;
            ctrlOVSearch& control;
        };
        Alive alive_; // the last to go
        modOVPlugIn::CallingPlugIn calling_;
        widgets::WindowInterface::Use windows_;
    };

    void UserControl_Terminate();
    void leaveFrame();
    void followParent();
    void listenToHost();
    void readFromHost();
    void buildControl();
    void connectAll();
    void connectCriteria();
    void connectResults();
    void connectFilter();
    void connectHandingOut();
    void connectHeader();
    void connectPlaying();
    void setUpPedals();
    void choosePedals();
    void addShortcuts();
    void retranslate();
    void refresh() {} // hook of the host's "UPDATE": nothing to refresh

    // What the host answers; nothing when it fails, or has let go meanwhile.
    template <typename Call>
    auto ask(const char* procedure, Call call) -> decltype(call()) {
        return isEnding() ? decltype(call())() : trapped(procedure, call);
    }

    // Nothing comes after the end.
    void enter(ControlState state);

    // Hands a command to the queue, which runs it by perform().
    void post(const char* procedure, std::function<void()> run);
    // What a command throws is logged and shown.
    void perform(const char* procedure, const std::function<void()>& run);
    void report(const Error& error, const char* procedure);

    // False, after a box, when the store cannot be reached; lets messages be handled meanwhile.
    bool storeAnswers();
    // The same for what only needs the list: one of a catalogue needs no store.
    bool listAnswers();
    void runSearch(SearchRun::Questions withoutCriteria);
    void runSearch(SearchRun::Questions withoutCriteria, const std::string& catalogue);
    void setUpCatalogue();
    void useCatalogue(bool uses);
    void countCriteria();
    void takeCounts(const CriterionCounts& counts);
    std::string presentPath();
    void playMoved(const std::string& path);
    std::string findMoved(const std::string& path);
    std::string movedInCatalogue(MovedDictation& moved);
    std::string movedOnDisk(const MovedDictation& moved);
    void listAll();
    void showHint();
    void showCounts();
    modDictation::Search presentSearch() const;
    void showSavedSearches();
    void saveSearch(const SavedSearch& renamed);
    void bringSearch(const SavedSearch& saved);
    void deleteSearch(const SavedSearch& saved);
    void tellUnsavedSearch(const platform::Status& status);
    void noteSearch();
    void joinBus();
    int rowBeside(int step) const;
    void playRow(int step);
    void tellSavedSearches(const BusCommands::Done& done) const;
    void searchByName(const std::string& name, const BusCommands::Done& done);
    bool showsWhatIsAsked() const;
    void criteriaChanged();
    void followChosen(bool follows);
    void followLater();
    void followChanges();
    std::optional<SearchOutcome> runFollowing(SearchRun& run);
    void searchAfresh();
    void stopSearch();
    void escape();
    void enterFilter();
    void exportResults(bool isAgain = false);
    void exportRows(exporting::print::Command what, bool selectedOnly);
    void chooseColumns();
    void changeHeader(const HeaderChoice& choice);
    void sortRows(const HeaderChoice& choice);
    void showColumns(const std::function<bool(const modDictation::SearchField&)>& isVisible);
    void saveColumns();
    void showRow(const std::string& path);
    void showDetails();
    void goToHits();
    void searchByKey();
    void showLog();
    void copyRows(const std::function<void(const std::function<bool()>&)>& copy);
    void addCriterion();
    void editCriterion();
    void deleteCriterion();
    void duplicateCriterion();
    void pasteCriteria();
    std::optional<std::string> openEditor(const std::string& criteriaString, bool isNew);
    void keepCriterion(bool isNew);
    void saveCriteria();
    void compareChanged(bool all);
    void endPlayer() const;

    std::shared_ptr<widgets::WindowInterface> windowInterface_ = widgets::WindowInterface::shared();
    ControlView view_;
    CommandQueue commands_;
    // NOLINTBEGIN(readability-identifier-naming): the host's documentation names these two
    std::shared_ptr<EventSource> m_cEventSource;
    IHostForm* m_icExtendableForm = nullptr;
    // NOLINTEND(readability-identifier-naming)
    IPlugin* plugIn_ = nullptr; // nullptr again when the host has let go
    QMetaObject::Connection parentGone_;
    ControlSettings settings_;
    ChoiceKeeper playerChoices_{{[this](const PlayerChoices& choices, const PlayerChoices& before) {
                                     settings_.setPlayerChoices(choices, before);
                                 },
                                 [this](std::int32_t volume) { settings_.setVolume(volume); }}};
    exporting::ExportSettings exportSettings_;
    CriteriaFile criteriaFile_;
    SavedSearches savedSearches_;
    std::string dictationTree_;
    ControlState state_ = ControlState::notBuilt;
    int frames_ = 0;
    bool criteriaUnsaved_ = false;
    bool criteriaChanged_ = false;                              // since they were searched for
    std::stop_source stop_;                                     // of the command that is at work
    bool toldUnsaved_ = false;                                  // that the criteria cannot be saved
    QPointer<QWidget> searchedFrom_;                            // of the criteria: had the keyboard
    std::optional<SearchOutcome> outcome_;                      // of the last search
    modDictation::Search searched_;                             // what it looked for
    std::shared_ptr<modDictation::RememberedStore> remembered_; // by all searches
    std::string catalogue_;                                     // that searches ask; empty: none
    QAction* catalogueAction_ = new QAction(this);
    AsideWork counting_; // of what the criteria of the last search meet
    std::unique_ptr<PlayerBus> bus_;
};

// The control as the host holds it: letting go of it ends the control, wherever it is.
std::shared_ptr<IFormExtension> makeControl(WindowHandle parent);

} // namespace ov
