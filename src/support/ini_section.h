// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/modINI.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace ov {

// One section of a settings file. Without a file everything reads as its default, and writing does
// nothing.
class IniSection {
public:
    IniSection(std::string_view section, std::string file)
        : section_(section), file_(std::move(file)) {}

    const std::string& file() const { return file_; }

    std::string text(std::string_view key) const {
        return file_.empty() ? std::string() : modINI::ReadIniValueDirect(section_, key, {}, file_);
    }
    std::string path(std::string_view key) const {
        return file_.empty() ? std::string() : modINI::ReadIniPath(section_, key, {}, file_, false);
    }
    // Within these limits, which the default need not keep.
    std::int32_t number(std::string_view key, std::int32_t defaultValue, std::int32_t minimum,
                        std::int32_t maximum) const {
        return file_.empty()
                   ? defaultValue
                   : modINI::ReadIniNumber(section_, key, defaultValue, minimum, maximum, file_);
    }
    bool boolean(std::string_view key, bool defaultValue) const {
        return file_.empty() ? defaultValue
                             : modINI::ReadIniBoolean(section_, key, defaultValue, file_);
    }

    void setText(std::string_view key, std::string_view text) const {
        if (!file_.empty())
            modINI::WriteIniString(section_, key, text, file_);
    }
    void setPath(std::string_view key, std::string_view path) const {
        if (!file_.empty())
            modINI::WriteIniPath(section_, key, path, file_);
    }
    void setNumber(std::string_view key, std::int32_t number) const {
        if (!file_.empty())
            modINI::WriteIniNumber(section_, key, number, file_);
    }
    void setBoolean(std::string_view key, bool value) const {
        if (!file_.empty())
            modINI::WriteIniBoolean(section_, key, value, file_);
    }

private:
    std::string_view section_; // a constant of the caller
    std::string file_;
};

// Where the control and what it exports keep theirs, in the host's per-user file.
constexpr std::string_view controlSection = "OVSearch.ctrlOVSearch";

} // namespace ov
