// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/list_player.h"

#include "cli/messages.h"
#include "cli/terminal_interface.h"
#include "dictation/dictation.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "platform/files.h"
#include "sound/output/output_choice.h"
#include "sound/wave_control.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace ov::cli {

namespace {

constexpr std::chrono::milliseconds refreshInterval(50);
constexpr std::int32_t skipSeconds = 5; // as in the window

// "0:01:23"
std::string timeText(std::int32_t milliseconds, int digitsOfHours = 1) {
    const int seconds = std::max(milliseconds, 0) / 1000;
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "%0*d:%02d:%02d", digitsOfHours,
                                     seconds / 3600, seconds / 60 % 60, seconds % 60);
    return {text.data(), static_cast<std::size_t>(length)};
}

// Speech spans some 50 dB, so the bar grows with the logarithm.
std::string levelBar(std::int32_t level) {
    constexpr int signs = 20;
    constexpr double range = 50; // dB
    const double loudness = 20 * std::log10(std::max(std::abs(level), 1) / 32768.0);
    const int full = std::clamp(static_cast<int>((1 + loudness / range) * signs), 0, signs);
    return "[" + std::string(static_cast<std::size_t>(full), '#') +
           std::string(static_cast<std::size_t>(signs - full), ' ') + "]";
}

// Author and subject, or the name.
std::string titleOf(const std::string& native) {
    using namespace modDictation;
    const std::string path = platform::fromNativePath(native);
    const Dictation dictation = dictationOfPath(path);
    std::string title;
    for (const std::int32_t field : {field_id::author, field_id::subject})
        if (const std::string value = shownValue(field, dictation); !value.empty())
            title.append(title.empty() ? "" : ": ").append(value);
    return title.empty() ? shownValue(field_id::name, dictation) : title;
}

} // namespace

ListPlayer::ListPlayer(std::vector<std::string> files, const ListOptions& options,
                       TerminalInterface& terminal)
    : files_(std::move(files)),
      options_(options),
      terminal_(terminal),
      hasLevel_(mixer_.Init_MixerControl() && mixer_.Init_VUMeterControl()) {
    sound::WaveControl::instance().setShape(options.shape);
}

ExitCode ListPlayer::play() {
    while (at_ < files_.size()) {
        const Then then = playOne(files_[at_]);
        if (then == Then::interrupted)
            return ExitCode::interrupted;
        if (then == Then::end)
            break;
        if (then == Then::next)
            ++at_;
        else
            at_ -= std::min<std::size_t>(at_, 1);
        // Once none of them can be played any more, there is an end.
        if (at_ == files_.size() && options_.loops && std::exchange(hasPlayed_, false))
            at_ = 0;
    }
    return hasFailed_ ? ExitCode::unreadable : ExitCode::found;
}

ListPlayer::Then ListPlayer::playOne(const std::string& file) {
    if (TerminalInterface::interrupted())
        return Then::interrupted;
    PlayedFile played;
    if (const std::string problem = played.play(file, options_.span, options_.speed);
        !problem.empty()) {
        tellFailure(file, problem);
        return Then::next;
    }
    const Then then = follow(played, files_.size() > 1 ? titleOf(file) : std::string());
    terminal_.clearProgress();
    if (played.state() == PlayedFile::State::failed)
        tellFailure(file, played.problem());
    else
        hasPlayed_ = hasPlayed_ || played.length() > 0;
    return then;
}

void ListPlayer::tellFailure(const std::string& file, const std::string& problem) {
    complain(file + ": " + problem);
    hasFailed_ = true;
}

ListPlayer::Then ListPlayer::follow(PlayedFile& played, const std::string& title) {
    using State = PlayedFile::State;
    for (State state = played.state(); state == State::playing || state == State::standing;
         state = played.state()) {
        played.goOn();
        tellMissingOutput();
        show(played, title);
        const auto typed = keys_.wait(refreshInterval);
        if (TerminalInterface::interrupted())
            return Then::interrupted;
        if (const auto then = typed ? take(*typed, played) : std::nullopt)
            return *then;
    }
    return Then::next;
}

std::optional<ListPlayer::Then> ListPlayer::take(char typed, PlayedFile& played) {
    if (time_ && typed != platform::TerminalKeys::controlC) {
        takeTime(typed, played);
        return std::nullopt;
    }
    const auto key = meanings_.take(typed);
    return key ? obey(*key, played) : std::nullopt;
}

// Enter ends it; Escape and other keys that write nothing give it up.
void ListPlayer::takeTime(char typed, PlayedFile& played) {
    if (typed >= ' ' && typed <= '~') {
        time_->push_back(typed);
        return;
    }
    if ((typed == '\x7F' || typed == '\b') && !time_->empty()) {
        time_->pop_back();
        return;
    }
    const std::string text = *std::exchange(time_, std::nullopt);
    if (!text.empty() && (typed == '\n' || typed == '\r'))
        goTo(text, played);
}

void ListPlayer::goTo(const std::string& text, PlayedFile& played) {
    const auto time = readTypedTime(text);
    if (time && played.goTo(*time))
        return;
    terminal_.clearProgress();
    complain(time ? text + " lies beyond the end, " + timeText(played.end()) : notATime(text));
}

std::optional<ListPlayer::Then> ListPlayer::obey(PlayKey key, PlayedFile& played) {
    switch (key) {
    case PlayKey::pause:
        played.pauseOrGoOn();
        break;
    case PlayKey::stop:
        played.stop();
        break;
    case PlayKey::back:
    case PlayKey::on:
        played.skip(key == PlayKey::on ? skipSeconds : -skipSeconds);
        break;
    case PlayKey::again:
        played.skip(-skipSeconds);
        if (played.state() == PlayedFile::State::standing)
            played.pauseOrGoOn();
        break;
    case PlayKey::slower:
    case PlayKey::faster:
        changeSpeed(key == PlayKey::faster ? 1 : -1, played);
        break;
    case PlayKey::mark:
        tellLoop(played.markLoop());
        break;
    case PlayKey::goTo:
        time_.emplace();
        break;
    case PlayKey::timeStamp:
        tell("[" + timeText(played.position(), 2) + "]"); // as in the window
        break;
    default:
        return leavingBy(key);
    }
    return std::nullopt;
}

std::optional<ListPlayer::Then> ListPlayer::leavingBy(PlayKey key) {
    switch (key) {
    case PlayKey::previous:
        return Then::previous;
    case PlayKey::next:
        return Then::next;
    case PlayKey::quit:
        return Then::end;
    case PlayKey::interrupt:
        return Then::interrupted;
    default:
        return std::nullopt;
    }
}

// A line of its own, for whoever reads along.
void ListPlayer::tell(const std::string& words) {
    terminal_.clearProgress();
    std::puts(words.c_str());
    std::fflush(stdout);
}

void ListPlayer::tellLoop(const PlayLoop& loop) {
    terminal_.clearProgress();
    if (loop.isWhole())
        complain("again and again: " + timeText(loop.from()) + " to " + timeText(loop.to()));
    else
        complain(loop.isMarked()     ? "again and again from " + timeText(loop.from())
                 : loop.isTooShort() ? "too short to be played again and again"
                                     : "no longer again and again");
}

// To the next one that is offered; stays for the files that follow.
void ListPlayer::changeSpeed(int steps, PlayedFile& played) {
    const auto above = std::ranges::upper_bound(playSpeeds, options_.speed);
    const auto from = std::ranges::lower_bound(playSpeeds, options_.speed);
    if (steps > 0 && above != playSpeeds.end())
        options_.speed = *above;
    else if (steps < 0 && from != playSpeeds.begin())
        options_.speed = *(from - 1);
    played.setSpeed(options_.speed);
}

std::int32_t ListPlayer::level() {
    return hasLevel_ ? mixer_.GetVUMeterValue() : 0;
}

void ListPlayer::show(const PlayedFile& played, const std::string& title) {
    std::string line;
    if (files_.size() > 1)
        line = std::to_string(at_ + 1) + " of " + std::to_string(files_.size()) + "  ";
    line +=
        timeText(played.position()) + " / " + timeText(played.length()) + "  " + levelBar(level());
    if (options_.speed != usualPlaySpeed)
        line += "  " + std::to_string(options_.speed) + " %";
    if (played.state() == PlayedFile::State::standing)
        line += "  paused";
    if (time_)
        line += "  go to " + *time_ + "_";
    terminal_.showProgress(title.empty() ? line : line + "  " + title);
}

void ListPlayer::tellMissingOutput() {
    const std::string missing = sound::OutputChoice::instance().missing();
    if (missing == missingOutput_)
        return;
    missingOutput_ = missing;
    terminal_.clearProgress();
    if (!missing.empty())
        complain("the output \"" + missing + "\" is not there; played through the usual one");
}

} // namespace ov::cli
