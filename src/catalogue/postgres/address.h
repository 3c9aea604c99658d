// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ov::catalogue::loaded {

// A server and a database of it, with how it is to be spoken to.
struct Address {
    std::vector<std::pair<std::string, std::string>> options; // as libpq takes them
    std::string name;                                         // for people, without secrets
};

// Of "postgresql://..." or "service=NAME". What is not said there comes from the usual places: the
// PG... variables, the service file, the password file. Nothing for what is no address, and for
// one with a password, which others could read where it was typed; `status` says so.
//
// Unless the address, the service or the environment says otherwise, the connection is encrypted or
// there is none.
std::optional<Address> addressOf(const std::string& place, platform::Status& status);

} // namespace ov::catalogue::loaded
