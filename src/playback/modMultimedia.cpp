// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/modMultimedia.h"

#include "platform/text.h"
#include "sound/media.h"
#include "support/numbers.h"

#include <algorithm>
#include <array>
#include <span>

namespace ov::modMultimedia {

namespace {

constexpr std::size_t fieldSize = 128; // of commands, replies and error texts
constexpr std::size_t pathSize = 255;
constexpr std::uint32_t timerId = 999;

using Field = std::array<char, fieldSize>;

template <typename... Pieces>
std::string textOf(Pieces... pieces) {
    std::string text;
    (text.append(pieces), ...);
    return text;
}

bool startsCharacter(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

// The command as a field of 128 characters; a character of UTF-8 counts as one.
std::string commandField(std::string_view command) {
    std::size_t characters = 0;
    std::size_t end = 0;
    for (; end < command.size(); ++end)
        if (startsCharacter(command[end]) && ++characters > fieldSize)
            break;
    std::string field(command.substr(0, end));
    field.append(fieldSize - std::min(characters, fieldSize), ' ');
    return field;
}

std::string_view untilZero(std::span<const char> field) noexcept {
    return {field.begin(), std::find(field.begin(), field.end(), '\0')};
}

// Why our own device cannot be loaded is a longer story than its field takes.
std::string errorText(std::uint32_t code) {
    if (code == sound::media_error::noDriver)
        if (std::string reason = sound::soundLoadFailure(); !reason.empty())
            return reason;
    Field buffer{};
    sound::mediaCalls().getErrorString(code, buffer);
    const std::string text(platform::trimmed(untilZero(buffer), ' '));
    // A failure without words must not look like success.
    return text.empty() ? textOf("media error ", std::to_string(code)) : text;
}

std::string send(std::string_view command, std::span<char> reply) {
    const std::uint32_t code = sound::mediaCalls().sendString(commandField(command), reply);
    return code == sound::media_error::none ? std::string() : errorText(code);
}

std::int32_t numberOf(std::string_view command) {
    Field reply{};
    return send(command, reply).empty() ? leadingInt32(untilZero(reply)) : -1;
}

// A reply ends at the first character that equals the field's last one, which is a zero unless
// the reply fills the field.
std::string wordOf(std::string_view command) {
    Field reply{};
    if (!send(command, reply).empty())
        return "ERROR";
    return {reply.begin(), std::find(reply.begin(), reply.end(), reply.back())};
}

std::string shortPath(std::string_view path) {
    std::array<char, pathSize> buffer{};
    const std::size_t length = sound::mediaCalls().getShortPathName(path, buffer);
    return {buffer.data(), std::min(length, buffer.size())};
}

} // namespace

std::string MciCommand(std::string_view command) {
    return send(command, {});
}

std::string MciOpen(std::string_view alias, std::string_view file, std::string_view deviceType) {
    return MciCommand(textOf("open ", shortPath(file), " type ", deviceType, " Alias ", alias));
}

std::string MciClose(std::string_view alias) {
    std::string error = MciCommand(textOf("close ", alias));
    if (error.empty() && alias == trackedAlias().alias)
        sound::mediaCalls().killTimer(trackedAlias().window, timerId);
    return error;
}

std::string MciCloseAll() {
    return MciCommand("close all");
}

std::string MciPlay(std::string_view alias, std::int32_t outputDevice, std::int32_t from,
                    std::int32_t to) {
    MciCommand(textOf("set ", alias, " output ", std::to_string(outputDevice)));
    const std::int32_t length = MciGetLength(alias);
    if (from == -1)
        from = MciGetPosition(alias);
    if (to == -1)
        to = length;
    if (from == length)
        from = 0;
    if (alias == trackedAlias().alias) {
        trackedAlias().from = from;
        trackedAlias().to = to;
    }
    return MciCommand(
        textOf("play ", alias, " from ", std::to_string(from), " to ", std::to_string(to)));
}

std::string MciPause(std::string_view alias) {
    return MciCommand(textOf("pause ", alias));
}

std::string MciResume(std::string_view alias) {
    return MciCommand(textOf("resume ", alias));
}

std::string MciStop(std::string_view alias) {
    return MciCommand(textOf("stop ", alias));
}

std::string MciSeek(std::string_view alias, std::int32_t position) {
    return MciCommand(textOf("seek ", alias, " to ", std::to_string(position)));
}

std::string MciSeekAndPlay(std::string_view alias, std::int32_t position) {
    std::string error = MciSeek(alias, position);
    if (error.empty())
        MciCommand(textOf("play ", alias));
    return error;
}

std::int32_t MciGetPosition(std::string_view alias) {
    return numberOf(textOf("status ", alias, " position"));
}

std::int32_t MciGetLength(std::string_view alias) {
    return numberOf(textOf("status ", alias, " length"));
}

std::int32_t MciGetLengthMs(std::string_view alias) {
    if (!MciCommand(textOf("set ", alias, " time format ms")).empty())
        return -1;
    const std::int32_t length = MciGetLength(alias);
    MciCommand(textOf("set ", alias, " time format frames"));
    return length;
}

std::int32_t MciGetSpeed(std::string_view alias) {
    return numberOf(textOf("status ", alias, " speed"));
}

std::string MciGetMode(std::string_view alias) {
    return wordOf(textOf("status ", alias, " mode"));
}

std::int32_t MciGetRate(std::string_view alias) {
    const std::int32_t milliseconds = MciGetLengthMs(alias);
    const std::int32_t units = MciGetLength(alias);
    if (milliseconds < 1 || units < 1)
        return -1;
    return roundToInt32(units / (milliseconds / 1000.0));
}

TrackedAlias& trackedAlias() {
    thread_local TrackedAlias tracked;
    return tracked;
}

} // namespace ov::modMultimedia
