// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <string>
#include <string_view>

// Paths cross the boundary to the plug-in with "\" as separator and keep the bytes of their
// names; a QString cannot hold every name, so bytes stay in std::string as long as possible.

namespace ov::host {

// `native` is absolute, as the system writes it.
std::string boundaryPath(std::string_view native);
// The same, ending in "\". Nothing stays nothing.
std::string boundaryDirectory(std::string_view native);

// The bytes of a path that a person chose or typed.
std::string nativeBytes(const QString& path);

// How a path of the plug-in is shown: with the system's separators, bytes that are no text
// replaced.
QString shownPath(std::string_view boundary);

} // namespace ov::host
