// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/wave_timeline.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace ov::sound {

std::int64_t steadyNanoseconds() noexcept {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double WaveTimeline::Entry::at(std::int64_t time) const noexcept {
    if (duration <= 0)
        return to;
    const double part = static_cast<double>(time - heardAt) / static_cast<double>(duration);
    return from + (to - from) * std::clamp(part, 0.0, 1.0);
}

void WaveTimeline::push(const Entry& entry) noexcept {
    Slot& slot = slots_[next_];
    next_ = (next_ + 1) % slots_.size();
    const std::uint32_t version = slot.version.load(std::memory_order_relaxed);
    slot.version.store(version + 1, std::memory_order_seq_cst);
    slot.run.store(entry.run);
    slot.heardAt.store(entry.heardAt);
    slot.duration.store(entry.duration);
    slot.from.store(entry.from);
    slot.to.store(entry.to);
    slot.peak.store(entry.peak);
    slot.last.store(entry.last);
    slot.failed.store(entry.failed);
    slot.version.store(version + 2, std::memory_order_seq_cst);
}

std::optional<WaveTimeline::Entry> WaveTimeline::read(const Slot& slot) noexcept {
    const std::uint32_t version = slot.version.load();
    const Entry entry{slot.run.load(),  slot.heardAt.load(), slot.duration.load(),
                      slot.from.load(), slot.to.load(),      slot.peak.load(),
                      slot.last.load(), slot.failed.load(),  version};
    if (version % 2 != 0 || slot.version.load() != version || entry.run == 0)
        return std::nullopt;
    return entry;
}

template <typename Accept>
std::optional<WaveTimeline::Entry> WaveTimeline::newestThat(Accept accept) const noexcept {
    std::optional<Entry> found;
    // Not by the time: an output that asks for much at once is told to be heard earlier again.
    for (const Slot& slot : slots_) {
        const auto entry = read(slot);
        if (entry && accept(*entry) && (!found || entry->version >= found->version))
            found = entry;
    }
    return found;
}

std::optional<WaveTimeline::Entry> WaveTimeline::newest(std::uint64_t run) const noexcept {
    return newestThat([run](const Entry& entry) { return entry.run == run; });
}

std::optional<WaveTimeline::Entry> WaveTimeline::heard(std::uint64_t run,
                                                       std::int64_t time) const noexcept {
    return newestThat(
        [run, time](const Entry& entry) { return entry.run == run && entry.heardAt <= time; });
}

std::int32_t WaveTimeline::peak(std::int64_t from, std::int64_t to) const noexcept {
    std::int32_t largest = 0;
    for (const Slot& slot : slots_) {
        const auto entry = read(slot);
        if (entry && entry->heardAt < to && entry->end() > from &&
            std::abs(entry->peak) > std::abs(largest))
            largest = entry->peak;
    }
    return largest;
}

} // namespace ov::sound
