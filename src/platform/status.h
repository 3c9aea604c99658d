// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <system_error>
#include <utility>

// What the engine answers when it cannot do what was asked: the one way to say so within it. At the
// boundary of the plug-in there is HostError.

namespace ov::platform {

class [[nodiscard]] Status {
public:
    enum class Kind : std::uint8_t { ok, missing, denied, full, failed };

    Status() = default; // success
    // `number` is an errno, or another one that the log knows, but not 0; `file` as the operating
    // system writes it, or empty; `text` says to a person what is wrong with it.
    Status(int number, std::string file, std::string text)
        : kind_(kindOf(number)), number_(number), file_(std::move(file)), text_(std::move(text)) {}

    bool ok() const noexcept { return kind_ == Kind::ok; }
    Kind kind() const noexcept { return kind_; }
    int number() const noexcept { return number_; }
    const std::string& file() const noexcept { return file_; }
    const std::string& text() const noexcept { return text_; }
    // "file: text".
    std::string description() const { return file_.empty() ? text_ : file_ + ": " + text_; }

private:
    static Kind kindOf(int number) noexcept {
        switch (static_cast<std::errc>(number)) {
        case std::errc::no_such_file_or_directory:
            return Kind::missing;
        case std::errc::permission_denied:
        case std::errc::operation_not_permitted:
        case std::errc::read_only_file_system:
            return Kind::denied;
        case std::errc::no_space_on_device:
        case std::errc::file_too_large:
            return Kind::full;
        default:
            return Kind::failed;
        }
    }

    Kind kind_ = Kind::ok;
    int number_ = 0;
    std::string file_;
    std::string text_;
};

} // namespace ov::platform
