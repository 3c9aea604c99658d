// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/hit_consumer.h"

#include <cstdint>
#include <memory>

namespace ov::cli {

// Hands on those whose file was changed after that moment, nanoseconds as in platform::FileStamp.
// Each hit costs a call of the file system.
class NewerHits final : public PassingHits {
public:
    NewerHits(std::int64_t moment, std::unique_ptr<HitConsumer> next);

    void take(const modDictation::Dictation& hit) override;
    void endSearch(modDictation::SearchReport& report) override;

private:
    std::int64_t moment_;
    std::int64_t passed_ = 0;
};

} // namespace ov::cli
