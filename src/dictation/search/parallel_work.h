// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>

namespace ov::modDictation {

// One part of a work, of a few milliseconds.
using PartWork = std::function<void(std::size_t part)>;

// Does parts 0 to `parts` - 1, in any order, on up to `threads` threads, each of which makes a
// PartWork of its own. Nothing that is kept per thread is set there. The calling thread lets
// window messages be handled meanwhile, and returns when all is done. What a part throws ends the
// work and is thrown on; so is what the window messages throw, once no part runs any more.
void workInParallel(std::size_t parts, unsigned threads, const std::function<PartWork()>& makeWork);

// Does all of it on one thread, as a part is done.
void workAside(const std::function<void()>& work);

} // namespace ov::modDictation
