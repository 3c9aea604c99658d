// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <cstdint>

namespace ov {

// Where one learns which values of a field there are. Used from the window's thread.
class ValueSource {
public:
    virtual ~ValueSource() = default;

    // Looks for values of that field for a few milliseconds, from where it was left. False when
    // there is nothing more to be found.
    virtual bool lookOn(std::int32_t field) = 0;
    // True when there is nothing to look at until somebody else has answered.
    virtual bool isWaiting(std::int32_t /*field*/) const { return false; }
    // What has been found of that field so far: different ones, none empty, in no order.
    virtual QStringList found(std::int32_t field) const = 0;
};

} // namespace ov
