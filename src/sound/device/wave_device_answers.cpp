// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What a device answers about itself.

#include "sound/device/wave_device.h"
#include "sound/media.h"
#include "sound/sound_libraries.h"
#include "sound/wave_control.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace ov::sound {

namespace {

using Words = std::vector<WaveWord>;

std::string_view modeName(std::uint8_t mode) noexcept {
    constexpr std::array<std::string_view, 3> names{"stopped", "playing", "paused"};
    return names[mode];
}

std::string_view nameOf(TimeFormat format) noexcept {
    switch (format) {
    case TimeFormat::milliseconds:
        return "milliseconds";
    case TimeFormat::samples:
        return "samples";
    case TimeFormat::bytes:
        break;
    }
    return "bytes";
}

bool isFlag(const WaveWord& word) noexcept {
    return isOneOf(word, {"wait", "notify"});
}

} // namespace

std::uint32_t WaveDevice::capability(const Words& words, std::string& reply) {
    const auto item = std::find_if(words.begin(), words.end(),
                                   [](const WaveWord& word) { return !isFlag(word); });
    if (item == words.end())
        return media_error::missingParameter;
    if (item->phrase == "device type")
        reply = "waveaudio";
    else if (item->phrase == "inputs")
        reply = "0";
    else if (item->phrase == "outputs")
        reply = std::to_string(soundOutputCount());
    else
        reply = isOneOf(*item, {"has audio", "can play", "uses files", "compound device"})
                    ? "true"
                    : "false";
    return media_error::none;
}

std::uint32_t WaveDevice::status(const Words& words, std::string& reply) {
    const auto item = std::find_if(words.begin(), words.end(), [](const WaveWord& word) {
        return !isFlag(word) && word.phrase != "track";
    });
    if (item == words.end())
        return media_error::missingParameter;
    if (item->phrase == "mode")
        return statusOfMode(reply);
    if (!player_)
        return media_error::unsupported;
    const WaveWord* track = findWord(words, "track");
    if (track != nullptr && track->number != 1)
        return media_error::outOfRange;
    // Of a track the position is where it starts.
    if (track != nullptr && item->phrase == "position")
        reply = "0";
    else if (!statusOfFile(*item, reply))
        reply = statusOfPlay(item->phrase);
    return media_error::none;
}

std::uint32_t WaveDevice::statusOfMode(std::string& reply) const {
    if (failure_ == media_error::none)
        reply = modeName(static_cast<std::uint8_t>(mode_));
    return failure_;
}

bool WaveDevice::statusOfFile(const WaveWord& word, std::string& reply) const {
    const std::array<std::pair<std::string_view, std::int64_t>, 9> numbers{
        {{"length", layout_.toUnits(layout_.length, format_)},
         {"number of tracks", 1},
         {"current track", 1},
         {"start position", 0},
         {"channels", layout_.channels},
         {"samplespersec", layout_.rate},
         {"bitspersample", layout_.bitsPerSample},
         {"bytespersec", layout_.bytesPerSecond},
         {"alignment", layout_.blockSize}}};
    for (const auto& [phrase, number] : numbers)
        if (word.phrase == phrase)
            reply = std::to_string(number);
    if (word.phrase == "format tag")
        reply = layout_.formatTag == 1 ? "pcm" : std::to_string(layout_.formatTag);
    return !reply.empty();
}

std::string WaveDevice::statusOfPlay(std::string_view item) const {
    if (item == "position")
        return std::to_string(layout_.toUnits(position(), format_));
    if (item == "time format")
        return std::string(nameOf(format_));
    if (item == "tempo")
        return std::to_string(player_->tempo());
    if (item == "level")
        return std::to_string(std::abs(WaveControl::instance().peak()));
    if (item == "output" && output_ >= 0)
        return std::to_string(output_);
    if (item == "input" || item == "output")
        return "mapper";
    return "true"; // ready, media present
}

std::uint32_t WaveDevice::info(const Words& words, std::string& reply) const {
    if (findWord(words, "product") != nullptr)
        reply = "OVSearch wave audio";
    else if (findWord(words, "file") != nullptr)
        reply = file_;
    else
        return media_error::missingParameter;
    return media_error::none;
}

} // namespace ov::sound
