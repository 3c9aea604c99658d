// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ov {

// Whether the bus at `address`, as D-Bus writes it, answers within some seconds. Qt would wait for
// ever, on the one thread that it has for all buses of the process and that the program's end
// needs.
bool busAnswers(const std::string& address);

} // namespace ov
