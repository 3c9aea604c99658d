// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "cli/hit_writer.h"

#include "cli/looks/file_link.h"
#include "cli/shown_text.h"
#include "cli/table_writer.h"
#include "export/row_writer.h"

#include <utility>

namespace ov::cli {

namespace {

using modDictation::Dictation;

class PathsWriter final : public HitWriter {
public:
    PathsWriter(const WriterOptions& options, Output& output)
        : output_(output),
          escaped_(options.escaped && !options.zeroEnded),
          linked_(options.looks.hyperlinks && !options.zeroEnded),
          end_(options.zeroEnded ? '\0' : '\n') {}

    void write(const Dictation& dictation) override {
        const std::string path = nativePathOf(dictation);
        std::string line = escaped_ ? shownText(path) : path;
        if (linked_)
            line = fileLink(line, path);
        line.push_back(end_);
        output_.write(line);
    }

private:
    Output& output_;
    bool escaped_;
    bool linked_;
    char end_;
};

// The forms that exports have too.
class SharedWriter final : public HitWriter {
public:
    explicit SharedWriter(std::unique_ptr<exporting::RowWriter> writer)
        : writer_(std::move(writer)) {}

    void begin() override { writer_->begin(); }
    void write(const Dictation& dictation) override { writer_->write(dictation); }
    void end() override { writer_->end(); }

private:
    std::unique_ptr<exporting::RowWriter> writer_;
};

} // namespace

std::unique_ptr<HitWriter> makeHitWriter(const WriterOptions& options, Output& output) {
    const exporting::TextFilter filter = options.escaped ? shownText : nullptr;
    switch (options.format) {
    case HitFormat::csv:
        return std::make_unique<SharedWriter>(exporting::makeCsvWriter(
            options.columns, {.raw = options.raw, .separator = options.separator, .filter = filter},
            output));
    case HitFormat::json:
    case HitFormat::jsonl:
        return std::make_unique<SharedWriter>(exporting::makeJsonWriter(
            options.columns, {.lines = options.format == HitFormat::jsonl, .filter = filter},
            output));
    case HitFormat::paths:
        return std::make_unique<PathsWriter>(options, output);
    case HitFormat::table:
        break;
    }
    return makeTableWriter(options.columns, options.looks, options.marks, output);
}

} // namespace ov::cli
