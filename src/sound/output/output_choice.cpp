// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/output/output_choice.h"

#include <utility>

namespace ov::sound {

namespace {

// One that was opened because any would do.
class AnyOutput final : public WaveOutput {
public:
    AnyOutput(std::unique_ptr<WaveOutput> output, std::uint32_t generation)
        : output_(std::move(output)), generation_(generation) {}

    bool lost() const noexcept override { return output_->lost(); }
    bool isOutdated() const noexcept override {
        return OutputChoice::instance().isOutdated(generation_);
    }

private:
    std::unique_ptr<WaveOutput> output_;
    std::uint32_t generation_;
};

} // namespace

// Never destroyed: one who asks a sound service that hangs comes back after the program's end.
OutputChoice& OutputChoice::instance() {
    static auto& theChoice = *new OutputChoice;
    return theChoice;
}

void OutputChoice::choose(std::string_view name) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (name_ == name)
        return;
    name_ = name;
    missing_.clear();
    ++generation_;
}

std::string OutputChoice::chosen() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return name_;
}

std::string OutputChoice::missing() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return missing_;
}

void OutputChoice::noteMissing(const std::string& name, std::uint32_t generation) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (generation == generation_)
        missing_ = name;
}

std::unique_ptr<WaveOutput> OutputChoice::open(int rate, int channels, int device,
                                               WaveSource& source) {
    return device < 0 ? openAny(rate, channels, source)
                      : soundLibraries().openOutput(rate, channels, {.number = device}, source);
}

std::unique_ptr<WaveOutput> OutputChoice::openAny(int rate, int channels, WaveSource& source) {
    std::unique_lock<std::mutex> lock(mutex_);
    const std::uint32_t generation = generation_;
    const std::string name = name_;
    lock.unlock();
    const SoundLibraries& libraries = soundLibraries();
    auto output =
        name.empty() ? nullptr : libraries.openOutput(rate, channels, {.name = name}, source);
    noteMissing(output ? std::string() : name, generation);
    if (!output)
        output = libraries.openOutput(rate, channels, {}, source);
    return output ? std::make_unique<AnyOutput>(std::move(output), generation) : nullptr;
}

} // namespace ov::sound
