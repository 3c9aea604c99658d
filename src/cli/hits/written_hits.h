// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hit_writer.h"
#include "cli/hits/hit_consumer.h"
#include "cli/output.h"

#include <memory>

namespace ov::cli {

// Prints hits as they come, in one of the forms of hit_writer.h. The output outlives it.
class WrittenHits final : public HitConsumer {
public:
    WrittenHits(std::unique_ptr<HitWriter> writer, Output& output);

    void begin() override;
    void take(const modDictation::Dictation& hit) override;
    void pause() override;
    void catchUp() override;
    void end() override;
    bool isFull() const override;

private:
    std::unique_ptr<HitWriter> writer_;
    Output& output_;
};

} // namespace ov::cli
