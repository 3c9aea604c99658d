// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// How a settings file, which holds text on lines, keeps a path, which may be any bytes: as it is
// when it is UTF-8 without control characters, else
//
//   "file://" "/home/x/Dikt%E4te/"    for \home\x\Dikt\xE4te\, a share begins with "//"
//   "file:///" "D:/Dikt%E4te/"        for D:\Dikt\xE4te\; a ":" of a name is "%3A"

namespace ov {

std::string settingOfPath(std::string_view path);

// Takes any text; what is not of the second form is the path. A "%" without two hexadecimal
// digits stands for itself.
std::string pathOfSetting(std::string_view setting);

} // namespace ov
