// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "playback/clsMixer.h"
#include "playback/panel/bus/player_status.h"
#include "playback/panel/choices/player_menu.h"
#include "playback/panel/file_opening.h"
#include "playback/panel/offered_position.h"
#include "playback/panel/outputs/output_menu.h"
#include "playback/panel/played_dictation.h"
#include "playback/panel/remembered_positions.h"
#include "playback/panel/seek/overview_loader.h"
#include "playback/panel/seek/seek_slider.h"
#include "playback/panel/time_edit.h"
#include "playback/pedal/pedalled_player.h"
#include "playback/play_loop.h"

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QBoxLayout;

namespace ov {

class PedalDesk;

// The small player of the search control. It plays one dictation at a time through the media
// commands, shows where it is, and moves through it. Errors of the device are shown as its state
// and as the tooltip of the state; nothing is thrown.
class PlayerPanel final : public QFrame, public PedalledPlayer {
    Q_OBJECT

public:
    explicit PlayerPanel(QWidget* parent);
    ~PlayerPanel() override;
    PlayerPanel(const PlayerPanel&) = delete;
    PlayerPanel& operator=(const PlayerPanel&) = delete;

    // Where button 0 finds what to play: the path of the selected dictation, empty for none.
    void setSelection(std::function<std::string()> selectedPath) {
        selectedPath_ = std::move(selectedPath);
    }

    void createMixer() { mixer_ = std::make_unique<clsMixer>(); }
    void releaseMixer() { mixer_ = nullptr; }
    // Sets up mixer, volume slider, level bar, progress bar, seek slider, time label. Needs the
    // mixer.
    void PlayerInitControls();

    // Opens the file unless it is the open one or does not exist. One that takes long is opened
    // while the window goes on, and is played then if PlayerPlay() asked for it; PlayerStop() gives
    // it up.
    void PlayerOpenFile(const std::string& path);
    void PlayerPlay();
    void PlayerPauseResume();
    // Closes the file too; playing it again starts at its beginning.
    void PlayerStop();
    void PlayerClose();

    // Plays the selected dictation or, when that is the open one, pauses or goes on.
    void playOrPause();
    // Moves by that many seconds, within the dictation. Goes on playing if it was.
    void skip(std::int32_t seconds);
    // Plays the last seconds again: as many as it backs up, or five.
    void playAgain();
    // Begins a stretch that is played again and again, ends it there, plays on, in turn.
    void markLoop();
    // Lets the user type where to go.
    void askForTime();
    // Puts the time that is heard on the clipboard.
    void copyTimeStamp();
    // The same as a text; empty while nothing is open.
    QString timeStampText() const;
    bool isOpen() const { return !alias_.empty(); }

    // For other programs. None of these waits, or lets messages be handled.
    PlayerStatus status() const;
    // Within the dictation, but not to its end, where it would be closed. Plays on if it did.
    void goTo(std::chrono::milliseconds place);
    // As the user would, within the bounds.
    void changeSpeed(std::int32_t percent);
    void changeVolume(double share); // 0 to 1

    // No more ticks of the level timer: the panel goes away.
    void stopLevelTimer();

    const PlayerChoices& choices() const { return choices_; }
    // Numbers beyond what they may be are moved to their bounds.
    void setChoices(const PlayerChoices& choices);

    // The user chooses the output there.
    const OutputMenu& outputs() const { return *outputMenu_; }
    // 0 to 65535, as the mixer has it.
    void setVolume(std::int32_t volume);

    // Where dictations that are left are kept, while that is still wanted: another window may have
    // been told to forget them.
    void setRememberedPositions(RememberedPositions positions, std::function<bool()> isWanted = {});

    // See PedalledPlayer.
    bool isPedalPlaying() const override;
    void pedalPlay() override;
    void pedalRest() override;
    std::optional<Place> pedalPlace() const override;
    void pedalPlayFrom(std::chrono::milliseconds place) override;
    void pedalRestAt(std::chrono::milliseconds place) override;
    void pedalDo(PedalAction action, std::int32_t jumpSeconds) override;

    void retranslate();

Q_SIGNALS:
    // The user chose others.
    void choicesMade(const PlayerChoices& choices, const PlayerChoices& before);
    // The user wants to choose what pedals do.
    void pedalsRequested();
    void volumeChosen(std::int32_t volume);
    // The dictation that is open in the player; empty: none.
    void fileChanged(const std::string& path);
    // It was to be opened, and is no file.
    void fileMissing(const std::string& path);
    // The user wants to see the row of this dictation.
    void rowRequested(const std::string& path);
    // Something of status() may be another.
    void refreshed();
    // It is elsewhere than the time that passed has brought it.
    void moved();

private:
    void buildPanel();
    QBoxLayout* buildButtons();
    QBoxLayout* buildPosition();
    void buildVolume();
    void buildMenu();
    void connectAll();
    void setUpPedals();
    void addPedalEntry();

    void cmdSearchPlayer_Click(int index);
    void takeOpened();
    void giveUpOpening();
    void timerOpening_Timer();
    void load(const std::string& path, sound::OpenedSound opened);
    void playOpen();
    void PlayerLoad(const std::string& alias);
    void tellFile();
    void closeFile();
    void choose(const PlayerChoices& choices);
    void showChoices();
    void offerPlace(std::int64_t bytes);
    void keepPlace();
    void forgetPlace();
    bool remembers() const;
    void reportUnkept(const platform::Status& status) const;
    void stop();
    void goOnAtOffered();
    void playOnFrom(std::int32_t position);
    std::int32_t placeFrom(std::int32_t position, std::int64_t seconds) const;
    void goToTime(const TypedTime& time);
    void goToUnits(std::int64_t place);
    void setLoop(const PlayLoop& loop);
    std::string playOn();
    void tell(const QString& words);
    void PlayerRefresh();
    void refreshOpen();
    void refreshClosed();
    void showState();
    void setProblem(const std::string& problem);
    // After a command that lets the device play, with its answer; after one that stops it.
    void noteStart(const std::string& problem);
    void noteHalt();
    bool isPlaying() const;
    bool isRoundDue() const;
    void beginDueRound();
    std::string playFrom(std::int32_t position);
    bool backsUpFrom(std::int32_t position) const;
    std::string playBackedUp();
    std::string resume();
    void restAt(std::int32_t position);
    void pedalToStart();
    // Pedals left it there, so that it goes on from just there.
    bool isResting() const;
    // What the device says; resting is pausing.
    std::string shownMode() const;
    void setSeekRange();
    void setUpVolume();
    void setUpLevel();
    void timerSearchPlayerStatus_Timer();
    void lookAfterPlay();
    void timerSearchPlayerVU_Timer();
    void startTimers();
    void stopTimers();
    void seekSliderMoved(int value);
    void volumeSliderMoved(int value);
    void seekTo(std::int32_t position);
    double seekScale() const;
    void applySpeed();

    std::array<QPushButton*, 3> cmdSearchPlayer_{};
    SeekSlider* slSearchPlayerSeek_;
    QSlider* slSearchPlayerVolume_;
    QProgressBar* prgSearchPlayerVU_;
    QProgressBar* prgSearchPlayerStatus_;
    QLabel* lblSeachPlayerStatus_;
    PlayedDictation* cmdPlayedDictation_;
    OfferedPosition* cmdOfferedPosition_;
    TimeEdit* txtGoToTime_;
    QLabel* lblSearchPlayerLength_;
    QToolButton* cmdSearchPlayerOptions_;
    PlayerMenu* menu_ = nullptr;
    OutputMenu* outputMenu_ = nullptr;
    QTimer timerSearchPlayerStatus_;
    QTimer timerSearchPlayerVU_;
    QTimer timerOpening_;
    std::unique_ptr<FileOpening> opening_; // what is wanted and not open yet
    OverviewLoader overview_;

    std::function<std::string()> selectedPath_;
    std::unique_ptr<clsMixer> mixer_;
    std::string alias_; // "PBWave" while a file is open
    std::string file_;
    std::int32_t length_ = 0;
    std::int32_t lengthMs_ = 0;
    std::int32_t rate_ = 0; // of the device's units in a second
    std::int32_t speed_ = 0;
    std::int32_t position_ = -1;
    PlayerChoices choices_;
    PlayLoop loop_;
    bool playsLoop_ = false; // what plays ends where that does
    RememberedPositions positions_;
    std::function<bool()> isRemembering_;
    RememberedPositions::Recording recording_; // the open one
    bool playing_ = false;                     // and nobody told it to stop
    std::int32_t restsAt_ = -1;
    std::string problem_;  // why it does not play, in the words of the device
    bool showing_ = false; // sliders are being set, nobody moves them
    std::shared_ptr<PedalDesk> pedals_;
};

} // namespace ov
