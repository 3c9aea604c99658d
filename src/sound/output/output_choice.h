// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/sound_libraries.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

// The output that this process plays through where a play asks for any: the desktop's usual one,
// or the one that the user has chosen by its name. From any thread.

namespace ov::sound {

class OutputChoice {
public:
    static OutputChoice& instance();

    // Empty: the usual one. What is played moves there and goes on.
    void choose(std::string_view name);
    std::string chosen() const;

    // The chosen one when it was not there, or could not be opened, and the usual one plays in its
    // place; empty otherwise.
    std::string missing() const;

    // The output that `device` stands for, -1 any, as SoundLibraries::openOutput().
    std::unique_ptr<WaveOutput> open(int rate, int channels, int device, WaveSource& source);
    // Whether another one has been chosen since an output was opened for any.
    bool isOutdated(std::uint32_t generation) const noexcept { return generation != generation_; }

private:
    std::unique_ptr<WaveOutput> openAny(int rate, int channels, WaveSource& source);
    void noteMissing(const std::string& name, std::uint32_t generation);

    std::atomic<std::uint32_t> generation_{0};
    mutable std::mutex mutex_; // guards what follows
    std::string name_;
    std::string missing_;
};

} // namespace ov::sound
