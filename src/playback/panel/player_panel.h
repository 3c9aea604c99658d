// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "playback/clsMixer.h"
#include "playback/panel/file_opening.h"
#include "playback/panel/offered_position.h"
#include "playback/panel/overview_loader.h"
#include "playback/panel/played_dictation.h"
#include "playback/panel/remembered_positions.h"
#include "playback/panel/seek_slider.h"
#include "playback/panel/time_edit.h"

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class QAction;
class QActionGroup;
class QBoxLayout;
class QMenu;

namespace ov {

// The small player of the search control. It plays one dictation at a time through the media
// commands, shows where it is, and moves through it. Errors of the device are shown as its state
// and as the tooltip of the state; nothing is thrown.
class PlayerPanel final : public QFrame {
    Q_OBJECT

public:
    explicit PlayerPanel(QWidget* parent);

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
    // Lets the user type where to go.
    void askForTime();
    // Puts the time that is heard on the clipboard.
    void copyTimeStamp();
    bool isOpen() const { return !alias_.empty(); }

    // No more ticks of the level timer: the panel goes away.
    void stopLevelTimer();

    // Seconds that the player goes back before it goes on after a pause or from where it was moved
    // to, 0 to 10.
    void setBackUpSeconds(std::int32_t seconds);
    static constexpr std::int32_t usualSpeed = 100;
    // Speed in percent, 50 to 200, pitch unchanged.
    void setSpeedPercent(std::int32_t percent);

    // Where dictations that are left are kept, and whether that is wanted.
    void setRememberedPositions(RememberedPositions positions);
    void setRemembers(bool remembers);
    // See player_texts.h; one that names no time is the usual one.
    void setTimeStampForm(const std::string& form);

    void retranslate();

Q_SIGNALS:
    // The user chose another.
    void backUpSecondsChosen(std::int32_t seconds);
    void speedChosen(std::int32_t percent);
    void remembersChosen(bool remembers);
    void timeStampFormChosen(const std::string& form);
    // The dictation that is open in the player; empty: none.
    void fileChanged(const std::string& path);
    // The user wants to see the row of this dictation.
    void rowRequested(const std::string& path);

private:
    void buildPanel();
    QBoxLayout* buildButtons();
    QBoxLayout* buildPosition();
    void buildVolume();
    void buildMenu();
    void buildStampMenu(QMenu& menu);
    void nameTimeStamps();
    QActionGroup* addChoices(QMenu& menu, const char* format,
                             std::initializer_list<std::int32_t> values);
    void connectAll();

    void cmdSearchPlayer_Click(int index);
    void takeOpened();
    void giveUpOpening();
    void timerOpening_Timer();
    void load(const std::string& path, sound::OpenedSound opened);
    void playOpen();
    void PlayerLoad(const std::string& alias);
    void tellFile();
    void closeFile();
    void chooseRemembers(bool remembers);
    void offerPlace(std::int64_t bytes);
    void keepPlace();
    void forgetPlace();
    void reportUnkept(const platform::Status& status) const;
    void stop();
    void goOnAtOffered();
    void playOnFrom(std::int32_t position);
    std::int32_t placeFrom(std::int32_t position, std::int64_t seconds) const;
    void goToTime(const TypedTime& time);
    void PlayerRefresh();
    void refreshOpen();
    void showState();
    void setProblem(const std::string& problem);
    // After a command that lets the device play, with its answer; after one that stops it.
    void noteStart(const std::string& problem);
    void noteHalt();
    bool isPlaying() const;
    std::string playFrom(std::int32_t position);
    bool backsUpFrom(std::int32_t position) const;
    std::string playBackedUp();
    std::string resume();
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
    QMenu* speedMenu_ = nullptr;
    QMenu* backUpMenu_ = nullptr;
    QActionGroup* speeds_ = nullptr;
    QActionGroup* backUps_ = nullptr;
    QActionGroup* stamps_ = nullptr;
    QAction* rememberAction_ = nullptr;
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
    std::int32_t backUpSeconds_ = 0;
    std::int32_t speedPercent_ = usualSpeed;
    RememberedPositions positions_;
    RememberedPositions::Recording recording_; // the open one
    bool remembers_ = false;
    std::string stampForm_;
    bool playing_ = false; // and nobody told it to stop
    std::string problem_;  // why it does not play, in the words of the device
    bool showing_ = false; // sliders are being set, nobody moves them
};

} // namespace ov
