// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers at the start of a text, as settings files, criteria and file names carry them.

namespace ov {

// Skips blanks, then reads a sign, digits, a decimal point with digits and an exponent, up to the
// first character that cannot continue the number; a text without one gives 0. The decimal sign
// is always the point. Never fails; an overflow gives an infinity.
double leadingNumber(std::string_view text) noexcept;

// leadingNumber rounded to an integer, half to even, saturated to the 32-bit range.
std::int32_t leadingInt32(std::string_view text) noexcept;

// Half to even, saturated; not-a-number gives 0.
std::int32_t roundToInt32(double value) noexcept;

// True for a text of one or more ASCII digits.
bool isAllDigits(std::string_view text) noexcept;

} // namespace ov
