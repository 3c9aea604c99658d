// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/sqlite/database.h"

// The tables of a catalogue:
//
//   stores       root, when it was updated, when an update began that is not through
//   folders      path, identity and times, place in the walk
//   dictations   id, a number for each of keptColumns()
//   names        id, the bytes of the file's name
//   texts        field, text in upper case, text, number: what numbers of texts stand for
//   due          how many dictations were removed since the texts were looked through for those
//                that nothing refers to any more
//
// The id of a dictation is that of its folder and its place there, see dictationId(): those of a
// folder lie side by side, and in the order of the listing.

namespace ov::catalogue::loaded {

// Raised when the tables are changed, or what stands in them.
constexpr std::int64_t tablesVersion = 2;

constexpr int positionBits = 28;
constexpr std::int64_t mostPositions = Catalogue::mostPositions;
static_assert(mostPositions == std::int64_t{1} << positionBits);

constexpr std::int64_t dictationId(std::int64_t folder, std::int64_t position) noexcept {
    return folder << positionBits | position;
}
constexpr std::int64_t folderOf(std::int64_t dictation) noexcept {
    return dictation >> positionBits;
}

// Those of an empty file are made. Fails for tables of another version, and for a file that has
// others.
platform::Status prepareTables(Database& database, const std::string& native, bool mayMake);

// Of the larger tables; made once there is something in them.
void makeIndexes(Database& database);

} // namespace ov::catalogue::loaded
