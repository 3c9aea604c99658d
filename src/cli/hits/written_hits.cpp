// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/written_hits.h"

#include <utility>

namespace ov::cli {

WrittenHits::WrittenHits(std::unique_ptr<HitWriter> writer, Output& output)
    : writer_(std::move(writer)), output_(output) {}

void WrittenHits::begin() {
    writer_->begin();
}

void WrittenHits::take(const modDictation::Dictation& hit) {
    writer_->write(hit);
}

void WrittenHits::pause() {
    output_.flush();
}

void WrittenHits::catchUp() {
    writer_->catchUp();
    output_.flush();
}

void WrittenHits::end() {
    writer_->end();
    output_.flush();
}

bool WrittenHits::isFull() const {
    return output_.failed();
}

} // namespace ov::cli
