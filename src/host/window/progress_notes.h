// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace ov::host {

// What the plug-in last told of its progress. Taking note costs some ten nanoseconds and touches
// no window, since it is done up to a million times a second; the panel reads it when it paints.
class ProgressNotes {
public:
    // Called on the first note after taken().
    void setWake(std::function<void()> wake) { wake_ = std::move(wake); }

    // `steps` below 2 tells nothing of how far it is: busy.
    void init(std::int32_t steps, std::string_view caption);
    // Where it is. Without init(): busy.
    void directory(std::string_view directory);
    // The step reached. Without init() it changes nothing that is shown.
    void value(std::int32_t value);
    void clear();

    bool isActive() const { return active_; }
    bool isBusy() const { return steps_ < 2; }
    std::int32_t steps() const { return steps_; }
    std::int32_t step() const; // 0 to steps()
    const std::string& caption() const { return caption_; }
    const std::string& directory() const { return directory_; }

    // The panel shows all that is noted.
    void taken() { noted_ = false; }

private:
    void note();

    std::function<void()> wake_;
    std::string caption_;
    std::string directory_;
    std::int32_t steps_ = 0;
    std::int32_t step_ = 0;
    bool active_ = false;
    bool noted_ = false;
};

} // namespace ov::host
