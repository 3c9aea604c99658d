// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/hit_consumer.h"

namespace ov::cli {

// Who asks only whether there is anything. Where one is enough, others are not missed.
class SilentHits final : public HitConsumer {
public:
    explicit SilentHits(bool oneIsEnough) : oneIsEnough_(oneIsEnough) {}

    void take(const modDictation::Dictation& /*hit*/) override {}
    void endSearch(modDictation::SearchReport& report) override {
        report.limitReached = report.limitReached && !oneIsEnough_;
    }

private:
    bool oneIsEnough_;
};

} // namespace ov::cli
