// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/mixer.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

// The mixer of a system without one that every desktop has: one device with the volume and the
// peak meter of what this process plays. From any thread.

namespace ov::sound {

class WaveMixer : public MixerCalls {
public:
    std::uint32_t getNumDevs() override;
    std::uint32_t open(MixerHandle& handle, std::uint32_t device, std::uint32_t callback,
                       std::uint32_t instance, std::uint32_t flags) override;
    // Takes the number of a device for its handle, too.
    std::uint32_t getDevCaps(MixerHandle handle, MixerCaps& caps, std::uint32_t size) override;
    std::uint32_t getLineInfo(MixerHandle handle, MixerLine& line, std::uint32_t flags) override;
    std::uint32_t getLineControls(MixerHandle handle, MixerLineControls& controls,
                                  std::uint32_t flags) override;
    std::uint32_t getControlDetails(MixerHandle handle, MixerControlDetails& details,
                                    std::uint32_t flags) override;
    std::uint32_t setControlDetails(MixerHandle handle, MixerControlDetails& details,
                                    std::uint32_t flags) override;
    std::uint32_t close(MixerHandle handle) override;

    MemoryHandle globalAlloc(std::uint32_t flags, std::uint32_t bytes) override;
    std::byte* globalLock(MemoryHandle block) override;
    void globalFree(MemoryHandle block) override;

private:
    std::byte* blockOf(MemoryHandle block, std::size_t bytes);
    std::uint32_t checkDetails(MixerHandle handle, const MixerControlDetails& details);

    std::mutex mutex_; // guards what follows
    std::map<MemoryHandle, std::vector<std::byte>> blocks_;
    MemoryHandle lastBlock_ = 0;
};

} // namespace ov::sound
