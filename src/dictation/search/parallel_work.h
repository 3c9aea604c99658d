// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>

namespace ov::modDictation {

// One piece of a work, of a few milliseconds.
using PieceWork = std::function<void(std::size_t piece)>;

// Does pieces 0 to `pieces` - 1, in any order, on up to `threads` threads, each of which makes a
// PieceWork of its own. Nothing that is kept per thread is set there. The calling thread lets
// window messages be handled meanwhile, and returns when all is done. What a piece throws ends the
// work and is thrown on; so is what the window messages throw, once no piece runs any more.
void workInParallel(std::size_t pieces, unsigned threads,
                    const std::function<PieceWork()>& makeWork);

// Does all of it on one thread, as a piece is done.
void workAside(const std::function<void()>& work);

} // namespace ov::modDictation
