// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/dictation_list.h"

#include <cstdint>
#include <stop_token>
#include <vector>

namespace ov::modDictation {

// How long the hits play, in seconds, in the order found; 0 for one that does not say. Read on as
// many threads as the machine has processors, which it waits for. Empty when stopped.
std::vector<std::int32_t> hitLengths(const DictationList& hits, const std::stop_token& stop);

} // namespace ov::modDictation
