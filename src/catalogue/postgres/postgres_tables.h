// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/postgres/connection.h"

#include <cstddef>
#include <cstdint>
#include <string>

// The tables of a catalogue, in the schema "ovsearch":
//
//   about         the version of the tables
//   stores        root, when it was updated, when an update began that is not through, how
//                 many dictations were removed since the texts were looked through, who updates it
//   wards         directories that some may see and others not; each store is one
//   ward_readers  which role sees which ward
//   folders       path, identity and times, place in the walk; the innermost ward
//   dictations    folder, position there, ward, a number for each of keptColumns(), the file's name
//   texts         ward, field, text in upper case, text, number: what numbers of texts stand for
//
// Whoever is not the owner sees rows of wards that ward_readers gives him, and nothing of others: a
// ward has its texts for itself. Who is who is in data/catalogue-roles.sql.

namespace ov::catalogue::loaded {

// Raised when the tables are changed, or what stands in them.
constexpr std::int64_t serverTablesVersion = 4;

// Ends it; undoes it where something failed, which lasts.
void endTransaction(Connection& connection);

// Of the path of a folder; an index takes no more than 2.7 kB.
constexpr std::size_t mostIndexedBytes = 1000;

// What a connection begins with.
std::string setUpOf(bool isForUpdate);

// Those that are missing are made. Fails for tables of another version.
platform::Status prepareServerTables(Connection& connection, bool mayMake);

// Of the larger tables; made once there is something in them.
void makeServerIndexes(Connection& connection);

} // namespace ov::catalogue::loaded
