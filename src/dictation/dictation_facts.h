// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "plugin/plugin_library.h"

#include <string_view>
#include <vector>

namespace ov::modDictation {

// What is known of the dictation in the file `path`, without empty fields, in the order of the
// result list's columns. Needs the list of search fields.
std::vector<DictationFact> describeDictation(std::string_view path);

} // namespace ov::modDictation
