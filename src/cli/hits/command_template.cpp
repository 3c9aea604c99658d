// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/command_template.h"

#include "platform/terminal/child_process.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ov::cli {

namespace {

std::string_view lastPart(std::string_view path) {
    return path.substr(path.find_last_of('/') + 1);
}

std::string_view folderOf(std::string_view path) {
    const std::size_t end = path.find_last_of('/');
    return path.substr(0, end == 0 ? 1 : end);
}

std::string_view withoutEnding(std::string_view path) {
    const std::string_view name = lastPart(path);
    const std::size_t dot = name.find_last_of('.');
    const bool hasEnding = dot != std::string_view::npos && dot > 0;
    return path.substr(0, path.size() - (hasEnding ? name.size() - dot : 0));
}

std::string_view lastPartWithoutEnding(std::string_view path) {
    return lastPart(withoutEnding(path));
}

std::string_view whole(std::string_view path) {
    return path;
}

struct Place {
    std::string_view mark;
    std::string_view (*partOf)(std::string_view path);
};

constexpr std::array<Place, 5> places = {{{"{}", whole},
                                          {"{/}", lastPart},
                                          {"{//}", folderOf},
                                          {"{.}", withoutEnding},
                                          {"{/.}", lastPartWithoutEnding}}};

// The place that begins there.
const Place* placeAt(std::string_view text) {
    const auto found = std::ranges::find_if(
        places, [text](const Place& place) { return text.starts_with(place.mark); });
    return found != places.end() ? &*found : nullptr;
}

bool hasPlace(std::string_view word) {
    for (; !word.empty(); word.remove_prefix(1))
        if (placeAt(word) != nullptr)
            return true;
    return false;
}

std::string filled(std::string_view word, std::string_view path) {
    std::string out;
    while (!word.empty()) {
        const Place* place = placeAt(word);
        out.append(place != nullptr ? place->partOf(path) : word.substr(0, 1));
        word.remove_prefix(place != nullptr ? place->mark.size() : 1);
    }
    return out;
}

} // namespace

CommandTemplate::CommandTemplate(std::vector<std::string> words) : words_(std::move(words)) {
    if (std::ranges::none_of(words_, hasPlace))
        words_.emplace_back("{}");
}

std::vector<std::string> CommandTemplate::with(const std::string& path) const {
    return withAll({&path, 1});
}

std::vector<std::string> CommandTemplate::withAll(std::span<const std::string> paths) const {
    std::vector<std::string> arguments;
    for (const std::string& word : words_)
        if (!hasPlace(word))
            arguments.push_back(word);
        else
            for (const std::string& path : paths)
                arguments.push_back(filled(word, path));
    return arguments;
}

std::size_t CommandTemplate::roomOf(const std::string& path) const {
    std::size_t room = 0;
    for (const std::string& word : words_)
        if (hasPlace(word))
            room += platform::roomOfArgument(filled(word, path));
    return room;
}

bool CommandTemplate::namesProgram() const {
    return !words_.front().empty() && !hasPlace(words_.front());
}

} // namespace ov::cli
