// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/device/wave_device.h"

#include "sound/media.h"
#include "sound/sound_libraries.h"

#include <array>
#include <utility>

namespace ov::sound {

namespace {

using Words = std::vector<WaveWord>;

struct TimeFormatPhrase {
    std::string_view phrase;
    TimeFormat format;
};
constexpr std::array<TimeFormatPhrase, 4> timeFormats{
    {{"time format milliseconds", TimeFormat::milliseconds},
     {"time format ms", TimeFormat::milliseconds},
     {"time format samples", TimeFormat::samples},
     {"time format bytes", TimeFormat::bytes}}};

bool needsFile(WaveVerb verb) noexcept {
    return verb >= WaveVerb::play && verb <= WaveVerb::set && verb != WaveVerb::stop;
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
    const bool ofFile = isOneOf(word, {"alignment", "bitspersample", "bytespersec", "channels",
                                       "format tag pcm", "format tag", "samplespersec"});
    return ofFile ? media_error::wrongOrder : media_error::none;
}

std::uint32_t WaveDevice::setOutput(const WaveWord& word) {
    const bool any = word.phrase == "any output";
    if (!any && (word.number < 0 || word.number >= soundOutputCount()))
        return media_error::outOfRange;
    output_ = any ? -1 : static_cast<int>(word.number);
    player_->setOutput(output_);
    return media_error::none;
}

} // namespace ov::sound
