// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace ov {

// A host call that failed. The one exception that crosses the boundary between host and plug-in,
// in both directions; neither side lets any other out.
class HostError : public std::exception {
public:
    HostError(std::int32_t number, std::string description)
        : number_(number), description_(std::move(description)) {}

    std::int32_t number() const noexcept { return number_; }
    const std::string& description() const noexcept { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    std::int32_t number_;
    std::string description_;
};

} // namespace ov
