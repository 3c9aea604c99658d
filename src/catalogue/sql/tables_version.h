// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status.h"

#include <cerrno>
#include <cstdint>
#include <string>

namespace ov::catalogue::sql {

// Of tables that are not of the version that this program knows; 0 for those that are none of ours.
// `older`: what is to be done with such ones.
inline platform::Status otherVersion(const std::string& name, std::int64_t version,
                                     std::int64_t known,
                                     const char* older = "remove it and update it anew") {
    if (version > known)
        return {EPROTO, name,
                "is a catalogue of a newer version of OVSearch; update the program, or keep "
                "another catalogue for this one"};
    if (version > 0)
        return {EPROTO, name,
                std::string("is a catalogue of an older version of OVSearch; ") + older};
    return {EPROTO, name, "is the database of another program"};
}

} // namespace ov::catalogue::sql
