// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "bench/sound/recording.h"
#include "tests/temporary_store.h"
#include "tests/wave_files.h"

namespace ov::bench {

// Writes two hours of that kind, the minute again and again, opens and plays them here and there,
// and prints what that takes.
void measureFormat(const char* name, const tests::WaveKind& kind, const Samples& minute,
                   const tests::TemporaryStore& store);

} // namespace ov::bench
