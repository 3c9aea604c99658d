// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <cerrno>
#include <cstdint>
#include <string>

namespace ov::catalogue::sql {

// Of tables that are not of the version that this program knows; 0 for those that are none of ours.
inline platform::Status otherVersion(const std::string& name, std::int64_t version,
                                     std::int64_t known) {
    if (version > known)
        return {EPROTO, name,
                "is a catalogue of a newer version of OVSearch; update the program, or keep "
                "another catalogue for this one"};
    if (version > 0)
        return {EPROTO, name,
                "is a catalogue of an older version of OVSearch; remove it and update it anew"};
    return {EPROTO, name, "is the database of another program"};
}

} // namespace ov::catalogue::sql
