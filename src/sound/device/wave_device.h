// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/device/wave_command.h"
#include "sound/format/wave_layout.h"
#include "sound/wave_player.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// One open device: a file, its mode, time format and position, and what it answers.
//
//   command   stopped              playing                paused
//   play      from the position    starts anew            goes on, or starts anew with "from"
//   pause     wrong order          paused                 nothing
//   resume    wrong order          nothing                playing
//   stop      nothing              stopped, stays there   stopped, stays there
//   seek      moves                stopped at the target  stopped at the target
//
// At its natural end a play is stopped at its "to", or where the data end. One that ends because
// the output vanished or the file cannot be read is stopped where it was, and "status mode" and
// the next pause or resume answer that failure until something is played, sought or stopped.
//
// "set tempo 50" to "set tempo 200" play slower or faster at the same pitch; "status tempo" tells.
// Positions and lengths are those of the file at any tempo.
//
// A device without a file has a mode, nothing else.

namespace ov::sound {

class WaveDevice {
public:
    WaveDevice(std::string file, std::unique_ptr<WavePlayer> player);

    // Carries out all verbs but open and close. Returns a media_error.
    std::uint32_t execute(WaveVerb verb, const std::vector<WaveWord>& words, std::string& reply);

    // False once nothing is to be heard any more.
    bool isPlaying();

    // Takes the player out, silent, for somebody who has time to end it.
    std::unique_ptr<WavePlayer> release();

private:
    enum class Mode : std::uint8_t { stopped, playing, paused };

    void refresh();
    double position() const;
    void moveTo(double frame);
    std::uint32_t start(double from, double to);
    // Whether a place in the time format lies within the file.
    bool frameOf(std::int64_t value, double& frame) const;

    std::uint32_t play(const std::vector<WaveWord>& words);
    std::uint32_t pause();
    std::uint32_t resume();
    std::uint32_t stop();
    std::uint32_t seek(const std::vector<WaveWord>& words);
    std::uint32_t set(const std::vector<WaveWord>& words);
    std::uint32_t setOne(const WaveWord& word);
    std::uint32_t setOutput(const WaveWord& word);
    std::uint32_t status(const std::vector<WaveWord>& words, std::string& reply);
    std::uint32_t statusOfMode(std::string& reply) const;
    bool statusOfFile(const WaveWord& word, std::string& reply) const;
    std::string statusOfPlay(std::string_view item) const;
    static std::uint32_t capability(const std::vector<WaveWord>& words, std::string& reply);
    std::uint32_t info(const std::vector<WaveWord>& words, std::string& reply) const;

    std::string file_;
    std::unique_ptr<WavePlayer> player_; // nullptr without a file
    WaveLayout layout_;
    Mode mode_ = Mode::stopped;
    TimeFormat format_ = TimeFormat::milliseconds;
    double position_ = 0; // while not playing
    double to_ = 0;       // of the newest play
    std::uint32_t failure_ = 0;
    int output_ = -1;
};

} // namespace ov::sound
