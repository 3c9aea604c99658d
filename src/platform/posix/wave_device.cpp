// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "platform/posix/wave_device.h"

#include "platform/media.h"
#include "platform/posix/wave_control.h"
#include "platform/posix/wave_output.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace ov::platform {

namespace {

using Words = std::vector<WaveWord>;

std::string_view modeName(std::uint8_t mode) noexcept {
    constexpr std::array<std::string_view, 3> names{"stopped", "playing", "paused"};
    return names[mode];
}

struct TimeFormatPhrase {
    std::string_view phrase;
    TimeFormat format;
    std::string_view name;
};
constexpr std::array<TimeFormatPhrase, 4> timeFormats{
    {{"time format milliseconds", TimeFormat::milliseconds, "milliseconds"},
     {"time format ms", TimeFormat::milliseconds, "milliseconds"},
     {"time format samples", TimeFormat::samples, "samples"},
     {"time format bytes", TimeFormat::bytes, "bytes"}}};

std::string_view nameOf(TimeFormat format) noexcept {
    return std::find_if(timeFormats.begin(), timeFormats.end(),
                        [format](const auto& entry) { return entry.format == format; })
        ->name;
}

bool isOneOf(std::string_view phrase, std::initializer_list<std::string_view> phrases) noexcept {
    return std::find(phrases.begin(), phrases.end(), phrase) != phrases.end();
}

bool isFlag(const WaveWord& word) noexcept {
    return isOneOf(word.phrase, {"wait", "notify"});
}

bool needsFile(WaveVerb verb) noexcept {
    return verb >= WaveVerb::play && verb <= WaveVerb::set && verb != WaveVerb::stop;
}

std::uint32_t capability(const Words& words, std::string& reply) {
    const auto item = std::find_if(words.begin(), words.end(),
                                   [](const WaveWord& word) { return !isFlag(word); });
    if (item == words.end())
        return media_error::missingParameter;
    if (item->phrase == "device type")
        reply = "waveaudio";
    else if (item->phrase == "inputs")
        reply = "0";
    else if (item->phrase == "outputs")
        reply = std::to_string(WaveOutput::count());
    else
        reply = isOneOf(item->phrase, {"has audio", "can play", "uses files", "compound device"})
                    ? "true"
                    : "false";
    return media_error::none;
}

} // namespace

WaveDevice::WaveDevice(std::string file, std::unique_ptr<WavePlayer> player)
    : file_(std::move(file)),
      player_(std::move(player)),
      layout_(player_ ? player_->layout() : WaveLayout{}) {}

std::unique_ptr<WavePlayer> WaveDevice::release() {
    if (player_)
        player_->halt();
    mode_ = Mode::stopped;
    return std::move(player_);
}

bool WaveDevice::isPlaying() {
    refresh();
    return mode_ == Mode::playing;
}

void WaveDevice::refresh() {
    if (mode_ != Mode::playing || player_->isPlaying())
        return;
    failure_ = player_->failure();
    position_ = player_->halt();
    // A last block that is not whole cannot be heard, but the end is the end.
    if (failure_ == media_error::none && to_ - position_ < layout_.framesPerBlock)
        position_ = to_;
    mode_ = Mode::stopped;
}

double WaveDevice::position() const {
    return mode_ == Mode::playing ? player_->position() : position_;
}

void WaveDevice::moveTo(double frame) {
    if (mode_ == Mode::playing)
        player_->halt();
    mode_ = Mode::stopped;
    position_ = frame;
    failure_ = media_error::none;
}

bool WaveDevice::frameOf(std::int64_t value, double& frame) const {
    frame = layout_.fromUnits(value, format_);
    return value >= 0 && value <= layout_.toUnits(layout_.length, format_);
}

std::uint32_t WaveDevice::execute(WaveVerb verb, const Words& words, std::string& reply) {
    refresh();
    if (!player_ && needsFile(verb))
        return media_error::unsupported;
    switch (verb) {
    case WaveVerb::play:
        return play(words);
    case WaveVerb::pause:
        return pause();
    case WaveVerb::resume:
        return resume();
    case WaveVerb::stop:
        return stop();
    case WaveVerb::seek:
        return seek(words);
    case WaveVerb::set:
        return set(words);
    case WaveVerb::status:
        return status(words, reply);
    case WaveVerb::capability:
        return capability(words, reply);
    case WaveVerb::info:
        return info(words, reply);
    default: // cue: always ready to play
        return media_error::none;
    }
}

std::uint32_t WaveDevice::start(double from, double to) {
    moveTo(from);
    to_ = to;
    if (from >= to)
        return media_error::none;
    const std::uint32_t error = player_->play(from, to);
    if (error == media_error::none)
        mode_ = Mode::playing;
    return error;
}

std::uint32_t WaveDevice::play(const Words& words) {
    double from = position();
    double to = layout_.length;
    const WaveWord* fromWord = findWord(words, "from");
    const WaveWord* toWord = findWord(words, "to");
    if ((fromWord != nullptr && !frameOf(fromWord->number, from)) ||
        (toWord != nullptr && !frameOf(toWord->number, to)) || from > to)
        return media_error::outOfRange;
    return start(from, to);
}

std::uint32_t WaveDevice::pause() {
    if (mode_ == Mode::stopped)
        return failure_ != media_error::none ? failure_ : media_error::wrongOrder;
    if (mode_ == Mode::playing)
        position_ = player_->halt();
    mode_ = Mode::paused;
    return media_error::none;
}

std::uint32_t WaveDevice::resume() {
    if (mode_ == Mode::stopped)
        return failure_ != media_error::none ? failure_ : media_error::wrongOrder;
    return mode_ == Mode::paused ? start(position_, to_) : media_error::none;
}

std::uint32_t WaveDevice::stop() {
    moveTo(mode_ == Mode::playing ? player_->halt() : position_);
    return media_error::none;
}

std::uint32_t WaveDevice::seek(const Words& words) {
    double target = 0;
    if (findWord(words, "to end") != nullptr)
        target = layout_.length;
    else if (const WaveWord* word = findWord(words, "to")) {
        if (!frameOf(word->number, target))
            return media_error::outOfRange;
    } else if (findWord(words, "to start") == nullptr) {
        return media_error::missingParameter;
    }
    moveTo(target);
    return media_error::none;
}

std::uint32_t WaveDevice::set(const Words& words) {
    for (const WaveWord& word : words)
        if (const std::uint32_t error = setOne(word); error != media_error::none)
            return error;
    return media_error::none;
}

std::uint32_t WaveDevice::setOne(const WaveWord& word) {
    for (const TimeFormatPhrase& format : timeFormats)
        if (word.phrase == format.phrase)
            format_ = format.format;
    if (word.phrase.ends_with("output"))
        return setOutput(word);
    if (word.phrase.starts_with("audio"))
        player_->setMuted(word.phrase.ends_with("off"));
    if (word.phrase == "tempo") {
        if (word.number < slowestTempo || word.number > fastestTempo)
            return media_error::outOfRange;
        player_->setTempo(static_cast<int>(word.number));
    }
    if (word.phrase.starts_with("door"))
        return media_error::unsupported;
    // What the file is cannot be chosen.
    const bool ofFile =
        isOneOf(word.phrase, {"alignment", "bitspersample", "bytespersec", "channels",
                              "format tag pcm", "format tag", "samplespersec"});
    return ofFile ? media_error::wrongOrder : media_error::none;
}

std::uint32_t WaveDevice::setOutput(const WaveWord& word) {
    const bool any = word.phrase == "any output";
    if (!any && (word.number < 0 || word.number >= WaveOutput::count()))
        return media_error::outOfRange;
    output_ = any ? -1 : static_cast<int>(word.number);
    player_->setOutput(output_);
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
    if (isOneOf(item, {"input", "output"}))
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

} // namespace ov::platform
