// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>

// What a system call answers when it cannot do what was asked.

namespace ov::platform {

// Success, or the system's error number with a sentence for a person that names the file first.
class [[nodiscard]] Status {
public:
    Status() = default;
    Status(int number, std::string description)
        : number_(number), description_(std::move(description)) {}

    bool ok() const noexcept { return number_ == 0; }
    int number() const noexcept { return number_; }
    const std::string& description() const noexcept { return description_; }

private:
    int number_ = 0;
    std::string description_;
};

} // namespace ov::platform
