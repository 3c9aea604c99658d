// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/remembered_positions.h"

#include "platform/files.h"
#include "platform/profile_lock.h"
#include "platform/threads/errand.h"

#include <algorithm>
#include <charconv>

namespace ov {

namespace {

constexpr std::uint64_t largestFile = 1 << 20; // a thousand of the longest names take half of it

// The number in front of a blank, which go; false when there is none.
template <typename Number>
bool takeNumber(std::string_view& line, Number& number) {
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    const auto length = static_cast<std::size_t>(end - line.data());
    if (error != std::errc() || length >= line.size() || line[length] != ' ' || number < 0)
        return false;
    line.remove_prefix(length + 1);
    return true;
}

} // namespace

std::optional<RememberedPositions::Place> RememberedPositions::placeOf(std::string_view line) {
    Place place;
    if (!takeNumber(line, place.milliseconds) || !takeNumber(line, place.recording.bytes) ||
        line.empty())
        return std::nullopt;
    place.recording.name = line;
    return place;
}

// A file that is not there yet is an empty one.
platform::Status RememberedPositions::read(std::vector<Place>& places) const {
    std::string content;
    if (platform::fileKind(file()) == platform::FileKind::missing)
        return {};
    if (platform::Status status = platform::readFile(file(), content, largestFile); !status.ok())
        return status;
    for (std::string_view rest = content; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (auto place = placeOf(rest.substr(0, end)))
            places.push_back(std::move(*place));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {};
}

platform::Status RememberedPositions::write(const std::vector<Place>& places) const {
    const std::size_t first = places.size() > most ? places.size() - most : 0;
    std::string content;
    for (std::size_t i = first; i < places.size(); ++i)
        content.append(std::to_string(places[i].milliseconds))
            .append(" ")
            .append(std::to_string(places[i].recording.bytes))
            .append(" ")
            .append(places[i].recording.name)
            .append("\n");
    return platform::replaceFile(file(), content, platform::Access::ownerOnly);
}

// `change` of the places says whether they are to be written. Other windows wait meanwhile.
template <typename Change>
platform::Status RememberedPositions::change(Change change) const {
    if (directory_.empty())
        return {};
    return platform::patientStatus(file(), [self = *this, change = std::move(change)] {
        if (platform::Status status =
                platform::createDirectories(self.directory_, platform::Access::ownerOnly);
            !status.ok())
            return status;
        const platform::ProfileLock lock(platform::toNativePath(self.file()));
        if (!lock.mayGoOn())
            return platform::noAnswer(self.file());
        std::vector<Place> places;
        if (platform::Status status = self.read(places); !status.ok())
            return status;
        return change(places) ? self.write(places) : platform::Status();
    });
}

std::optional<std::int32_t> RememberedPositions::find(const Recording& recording) const {
    if (directory_.empty())
        return std::nullopt;
    const auto places = platform::patiently(file(), [self = *this] {
        std::vector<Place> all;
        if (!self.read(all).ok())
            all.clear();
        return all;
    });
    if (!places)
        return std::nullopt;
    const auto place = std::find_if(places->begin(), places->end(), [&](const Place& known) {
        return known.recording == recording;
    });
    return place == places->end() ? std::nullopt : std::optional(place->milliseconds);
}

platform::Status RememberedPositions::keep(const Recording& recording,
                                           std::int32_t milliseconds) const {
    // A line ends with the name.
    if (recording.name.empty() || recording.name.find('\n') != std::string::npos)
        return {};
    return change([recording, milliseconds](std::vector<Place>& places) {
        std::erase_if(places, [&](const Place& known) { return known.recording == recording; });
        places.push_back({recording, milliseconds});
        return true;
    });
}

platform::Status RememberedPositions::forget(const Recording& recording) const {
    return change([recording](std::vector<Place>& places) {
        return std::erase_if(places,
                             [&](const Place& known) { return known.recording == recording; }) > 0;
    });
}

platform::Status RememberedPositions::forgetAll() const {
    if (directory_.empty())
        return {};
    return platform::patientStatus(file(), [self = *this] {
        if (platform::fileKind(self.file()) == platform::FileKind::missing)
            return platform::Status();
        const platform::ProfileLock lock(platform::toNativePath(self.file()));
        return lock.mayGoOn() ? platform::removeFile(self.file()) : platform::noAnswer(self.file());
    });
}

} // namespace ov
