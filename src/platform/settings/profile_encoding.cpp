// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/settings/profile_encoding.h"

#include "platform/text.h"

namespace ov::platform {

SettingsEncoding settingsEncoding(std::string_view bytes) noexcept {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return SettingsEncoding::utf8;
    if (bytes.starts_with("\xFF\xFE"))
        return SettingsEncoding::utf16LittleEndian;
    if (bytes.starts_with("\xFE\xFF"))
        return SettingsEncoding::utf16BigEndian;
    return SettingsEncoding::plain;
}

std::size_t markSize(SettingsEncoding encoding) noexcept {
    if (isUtf16(encoding))
        return 2;
    return encoding == SettingsEncoding::utf8 ? 3 : 0;
}

std::string settingsText(std::string_view bytes) {
    const SettingsEncoding encoding = settingsEncoding(bytes);
    const std::string_view content = bytes.substr(markSize(encoding));
    if (isUtf16(encoding))
        return utf16ToUtf8(content, encoding == SettingsEncoding::utf16BigEndian);
    if (isValidUtf8(content))
        return std::string(content);
    std::string text;
    for (SettingsLines lines(bytes); lines.next();)
        text += textFromBytes(bytes.substr(lines.begin(), lines.end() - lines.begin()));
    return text;
}

SettingsLines::SettingsLines(std::string_view bytes) noexcept
    : bytes_(bytes),
      encoding_(settingsEncoding(bytes)),
      unit_(isUtf16(encoding_) ? 2 : 1),
      end_(markSize(encoding_)),
      zero_(end_),
      textEnd_(end_) {
    bytes_.remove_suffix((bytes_.size() - end_) % unit_);
}

unsigned SettingsLines::characterAt(std::size_t at) const noexcept {
    const unsigned first = static_cast<unsigned char>(bytes_[at]);
    if (unit_ == 1)
        return first;
    const unsigned second = static_cast<unsigned char>(bytes_[at + 1]);
    return encoding_ == SettingsEncoding::utf16BigEndian ? (first << 8U) | second
                                                         : (second << 8U) | first;
}

bool SettingsLines::next() noexcept {
    if (end_ >= bytes_.size())
        return false;
    constexpr std::size_t none = std::string_view::npos;
    begin_ = end_;
    zero_ = none;
    unsigned character = 0;
    std::size_t at = begin_;
    for (; at < bytes_.size(); at += unit_) {
        character = characterAt(at);
        if (character == '\r' || character == '\n')
            break;
        if (character == 0 && zero_ == none)
            zero_ = at;
    }
    textEnd_ = at;
    zero_ = zero_ == none ? at : zero_;
    if (at < bytes_.size())
        at += unit_;
    if (character == '\r' && at < bytes_.size() && characterAt(at) == '\n')
        at += unit_;
    end_ = at;
    return true;
}

std::string_view SettingsLines::bytes(bool untilZero) const noexcept {
    return bytes_.substr(begin_, (untilZero ? zero_ : textEnd_) - begin_);
}

} // namespace ov::platform
