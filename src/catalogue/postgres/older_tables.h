// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/postgres/connection.h"

// Tables of an older version, in the transaction that makes new ones. What can be read from the
// disk goes; which stores there are, their wards and who sees these stay.

namespace ov::catalogue::loaded {

// Before the new ones are made. Fails while a store is being updated.
void putOlderTablesAside(Connection& connection);
// After that.
void takeOverOlderTables(Connection& connection);

} // namespace ov::catalogue::loaded
