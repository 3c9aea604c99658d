// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hit_writer.h"
#include "cli/hits/hit_consumer.h"
#include "cli/hits/tally.h"
#include "cli/output.h"

#include <cstdint>
#include <optional>

namespace ov::cli {

// What is counted, and how it is printed.
struct CountForm {
    bool counts = false;                 // the number of dictations
    std::optional<Column> by;            // a line for each value of that field, with its number
    bool addsLengths = false;            // how long they play
    HitFormat format = HitFormat::table; // not paths
    char separator = ',';
    bool raw = false;
    bool escaped = false;
    Looks looks = {}; // of a table
};

// Counts hits and prints nothing until the end; docs/json.md tells the form.
class CountedHits final : public HitConsumer {
public:
    CountedHits(const CountForm& form, Output& output);

    void take(const modDictation::Dictation& hit) override;
    std::optional<std::int32_t> countsBy() const override;
    void takeMany(const modDictation::Dictation& one, std::int64_t count) override;
    void end() override;

private:
    void writeLines();
    void writeTable();
    void writeCsv();
    void writeJson();

    CountForm form_;
    Tally tally_;
    Output& output_;
};

} // namespace ov::cli
