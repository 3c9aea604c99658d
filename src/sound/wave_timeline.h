// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>

// What was handed to the sound output, and when it is heard. Written by the output's thread, read
// by any; neither ever waits. Remembers the last two seconds or so.

namespace ov::sound {

// Nanoseconds of a clock that only goes forward.
std::int64_t steadyNanoseconds() noexcept;

class WaveTimeline {
public:
    struct Entry {
        std::uint64_t run = 0;     // which play it belongs to; 0 is none
        std::int64_t heardAt = 0;  // when its first frame is heard
        std::int64_t duration = 0; // nanoseconds
        double from = 0;           // frames of the file
        double to = 0;
        std::int32_t peak = 0;     // the sample of largest magnitude, -32768 to 32767
        bool last = false;         // nothing of this run follows
        bool failed = false;       // because the file cannot be read on
        std::uint32_t version = 0; // of its slot, set by push(); slots are used in turn

        // The frame that is heard then.
        double at(std::int64_t time) const noexcept;
        std::int64_t end() const noexcept { return heardAt + duration; }
    };

    // By one thread at a time.
    void push(const Entry& entry) noexcept;

    // The newest entry of the run; with a time, the newest that has begun by then. Runs may be
    // used again only after a second.
    std::optional<Entry> newest(std::uint64_t run) const noexcept;
    std::optional<Entry> heard(std::uint64_t run, std::int64_t time) const noexcept;

    // The peak of largest magnitude of what is heard between these times; 0 for silence.
    std::int32_t peak(std::int64_t from, std::int64_t to) const noexcept;

private:
    // Its fields are consistent when the version is even and the same before and after reading.
    struct Slot {
        std::atomic<std::uint32_t> version{0};
        std::atomic<std::uint64_t> run{0};
        std::atomic<std::int64_t> heardAt{0};
        std::atomic<std::int64_t> duration{0};
        std::atomic<double> from{0};
        std::atomic<double> to{0};
        std::atomic<std::int32_t> peak{0};
        std::atomic<bool> last{false};
        std::atomic<bool> failed{false};
    };
    static std::optional<Entry> read(const Slot& slot) noexcept;
    template <typename Accept>
    std::optional<Entry> newestThat(Accept accept) const noexcept;

    std::array<Slot, 64> slots_;
    std::size_t next_ = 0;
};

} // namespace ov::sound
