// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/pedal/pedal_assignments.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

namespace ov {

namespace {

constexpr int hexadecimal = 16;
constexpr int decimal = 10;

// Up to the character, which is taken off too; all that is left without one.
std::string_view takeUntil(std::string_view& text, char end) {
    const std::size_t length = text.find(end);
    const std::string_view part = text.substr(0, length);
    text.remove_prefix(length == std::string_view::npos ? text.size() : length + 1);
    return part;
}

template <typename Number>
std::optional<Number> numberOf(std::string_view text, int base) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::string hexadecimalText(std::uint16_t number) {
    constexpr std::size_t digits = 4;
    std::array<char, digits> buffer{};
    const char* const end = std::to_chars(buffer.begin(), buffer.end(), number, hexadecimal).ptr;
    const std::string text(buffer.cbegin(), end);
    return std::string(digits - text.size(), '0') + text;
}

} // namespace

std::string kindText(platform::InputKind kind) {
    return hexadecimalText(kind.vendor) + ":" + hexadecimalText(kind.product);
}

PedalAssignments::PedalAssignments(std::string_view text) {
    setJumpSeconds(numberOf<std::int32_t>(takeUntil(text, ';'), decimal).value_or(usualJump));
    while (!text.empty())
        readKind(takeUntil(text, ';'));
}

void PedalAssignments::readKind(std::string_view text) {
    std::string_view name = takeUntil(text, ' ');
    const bool grabbed = name.ends_with('!');
    name.remove_suffix(grabbed ? 1 : 0);
    const auto vendor = numberOf<std::uint16_t>(takeUntil(name, ':'), hexadecimal);
    const auto product = numberOf<std::uint16_t>(name, hexadecimal);
    if (!vendor || !product)
        return;
    const platform::InputKind kind{*vendor, *product};
    if (grabbed)
        setGrabbed(kind, true);
    while (!text.empty()) {
        std::string_view pair = takeUntil(text, ' ');
        const auto control = numberOf<std::uint32_t>(takeUntil(pair, '='), decimal);
        const auto action = pedalActionOf(numberOf<std::int32_t>(pair, decimal).value_or(0));
        if (control && action)
            assign({kind, *control}, *action);
    }
}

std::string PedalAssignments::text() const {
    std::map<platform::InputKind, std::string> kinds;
    for (const platform::InputKind kind : grabbed_)
        kinds[kind] = "!";
    for (const auto& [place, action] : places_)
        kinds[place.kind] += " " + std::to_string(place.control) + "=" +
                             std::to_string(static_cast<std::int32_t>(action));
    std::string text = std::to_string(jumpSeconds_);
    for (const auto& [kind, rest] : kinds)
        text += ";" + kindText(kind) + rest;
    return text;
}

std::optional<PedalAction> PedalAssignments::actionOf(const Place& place) const {
    const auto found = places_.find(place);
    return found == places_.end() ? std::nullopt : std::optional(found->second);
}

bool PedalAssignments::isGrabbed(platform::InputKind kind) const {
    return grabbed_.contains(kind);
}

void PedalAssignments::setGrabbed(platform::InputKind kind, bool grabbed) {
    if (grabbed)
        grabbed_.insert(kind);
    else
        grabbed_.erase(kind);
}

void PedalAssignments::setJumpSeconds(std::int32_t seconds) {
    jumpSeconds_ = std::clamp(seconds, 1, longestJump);
}

platform::InputWish PedalAssignments::wish() const {
    std::set<platform::InputKind> kinds;
    for (const auto& [place, action] : places_)
        kinds.insert(place.kind);
    platform::InputWish wish;
    for (const platform::InputKind kind : kinds) {
        wish.kinds.push_back(kind);
        if (isGrabbed(kind))
            wish.grabbed.push_back(kind);
    }
    return wish;
}

} // namespace ov
