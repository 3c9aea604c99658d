// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/field_values.h"
#include "dictation/search/dictation_list.h"
#include "platform/locale.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace ov::modDictation {

// What the rows of a list show, upper-cased as searches compare texts, a part of the list at a
// time. A part is made when it is first asked for and kept while there is room, so that who looks
// through all of them a second time is answered at once. For any number of threads.
class RowTexts {
public:
    // What it reads, as the thread knows it that shows the list.
    struct Source {
        std::shared_ptr<const DictationList> hits;
        std::vector<std::int32_t> fields; // of the columns shown
        CodeTexts codes;
        platform::Locale locale = platform::locale();
    };
    static constexpr std::size_t usualBytes = std::size_t{256} << 20U;

    explicit RowTexts(Source source, std::size_t mostBytes = usualBytes);

    // The rows of some hits that follow each other. No word goes from one cell to the next.
    struct Part {
        std::size_t first = 0; // hit, counted from 0
        std::string text;
        std::vector<std::uint32_t> ends; // of the rows, in `text`
    };
    std::size_t parts() const noexcept { return slots_.size(); }
    std::size_t hits() const noexcept { return static_cast<std::size_t>(source_.hits->size()); }
    const DictationList& list() const noexcept { return *source_.hits; }
    // The hits of a part, counted from 0: the first, and the one behind the last.
    std::pair<std::size_t, std::size_t> hitsOfPart(std::size_t index) const noexcept;
    // Sets the locale of its thread.
    std::shared_ptr<const Part> part(std::size_t index);

private:
    struct Slot {
        std::mutex making;
        std::shared_ptr<const Part> part; // guarded
    };

    std::shared_ptr<Part> make(std::size_t index) const;
    void appendRow(const Dictation& dictation, std::string& text) const;

    Source source_;
    bool showsName_;
    std::vector<Slot> slots_;
    std::atomic<std::int64_t> bytesLeft_;
};

} // namespace ov::modDictation
