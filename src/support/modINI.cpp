// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modINI.h"

#include "platform/files.h"
#include "platform/locale.h"
#include "platform/profile.h"
#include "platform/settings/profile_encoding.h"
#include "platform/text.h"
#include "support/modFilePath.h"
#include "support/numbers.h"
#include "support/path_setting.h"
#include "support/patient_files.h"
#include "support/unsaved.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

namespace ov::modINI {

namespace {

constexpr std::size_t pathBufferSize = 4096;
constexpr std::size_t valueBufferSize = 256;

template <std::size_t Size>
std::string readText(std::string_view section, std::string_view key, std::string_view fallback,
                     std::string_view file) {
    std::array<char, Size> buffer{};
    const std::size_t length =
        platform::getPrivateProfileString(section, key, fallback, buffer, file);
    return {buffer.data(), length};
}

bool booleanOf(std::string_view content, std::string_view section, std::string_view key,
               bool fallback) {
    std::array<char, valueBufferSize> buffer{};
    const std::size_t length =
        platform::stringOfProfile(content, section, key, TextFromBoolean(fallback), buffer);
    return BooleanFromText({buffer.data(), length});
}

// Hexadecimal digits as a signed 32-bit number.
std::optional<double> hexadecimalValue(std::string_view digits) noexcept {
    std::uint32_t number = 0;
    const auto [stop, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    if (error == std::errc::result_out_of_range)
        return std::numeric_limits<std::int32_t>::max();
    if (error != std::errc{})
        return std::nullopt;
    return static_cast<std::int32_t>(number);
}

std::size_t digitsAt(std::string_view text, std::size_t at) noexcept {
    return std::min(text.find_first_not_of("0123456789", at), text.size()) - at;
}

// Takes `sign` out from between groups of three digits; "1.5" has none.
void removeGroupSigns(std::string& number, std::string_view sign) {
    const std::size_t first = number.find_first_of("123456789");
    if (sign.empty() || first == std::string::npos || digitsAt(number, first) > 3)
        return;
    std::size_t end = first + digitsAt(number, first);
    while (number.compare(end, sign.size(), sign) == 0 &&
           digitsAt(number, end + sign.size()) == 3) {
        number.erase(end, sign.size());
        end += 3;
    }
}

// The keyboard's character for a typographic sign.
std::string_view typedSign(std::string_view sign) noexcept {
    if (sign == "\u00A0" || sign == "\u202F")
        return " ";
    return sign == "\u2019" ? "'" : sign;
}

bool startsWithNumber(std::string_view text) noexcept {
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    if (text.starts_with('.'))
        text.remove_prefix(1);
    return isAllDigits(text.substr(0, 1));
}

std::optional<double> numericValue(std::string_view text) {
    text = platform::trimmed(text);
    if (text.starts_with("&H") || text.starts_with("&h"))
        return hexadecimalValue(text.substr(2));
    std::string number(text);
    const std::string& groupSign = platform::locale().groupSign;
    for (const std::string_view sign : {std::string_view(groupSign), typedSign(groupSign)})
        removeGroupSigns(number, sign);
    if (const std::size_t sign = number.find(platform::locale().decimalSign);
        sign != std::string::npos)
        number[sign] = '.';
    if (!startsWithNumber(number))
        return std::nullopt;
    return leadingNumber(number);
}

Error unwritten(std::string_view section, std::string_view key, std::string_view file) {
    std::string description = platform::toNativePath(platform::profilePath(file));
    description.append(": [").append(section).append("] ").append(key).append(" cannot be written");
    return {0, std::move(description)};
}

bool writeAndFlush(std::string_view section, std::string_view key, std::string_view value,
                   std::string_view file) {
    const bool written = platform::writePrivateProfileString(section, key, value, file);
    if (!written)
        reportUnsaved(platform::profilePath(file), unwritten(section, key, file), "WriteIniString");
    // Where the platform keeps settings files in memory this also writes them to disk.
    platform::writePrivateProfileString("0", std::nullopt, std::nullopt, file);
    return written;
}

// The value of a line "key=value"; nothing when the line is for another key.
std::optional<std::string_view> valueOfKey(std::string_view line, std::string_view upperKey) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || equals == 0 ||
        platform::upperCase(line.substr(0, equals)) != upperKey)
        return std::nullopt;
    return line.substr(equals + 1);
}

} // namespace

std::string ReadIniPath(std::string_view section, std::string_view key,
                        std::string_view defaultValue, std::string_view file, bool allowMissing) {
    return PathFromText(pathOfSetting(readText<pathBufferSize>(section, key, defaultValue, file)),
                        allowMissing);
}

std::int32_t ReadIniNumber(std::string_view section, std::string_view key,
                           std::int32_t defaultValue, std::int32_t minimum, std::int32_t maximum,
                           std::string_view file) {
    const auto value = numericValue(readText<valueBufferSize>(section, key, "", file));
    if (!value)
        return defaultValue;
    const std::int32_t number = roundToInt32(*value);
    if (minimum == maximum)
        return number;
    // Not std::clamp: the limits may stand the wrong way round.
    return number >= maximum ? maximum : std::max(number, minimum);
}

bool ReadIniBoolean(std::string_view section, std::string_view key, bool defaultValue,
                    std::string_view file) {
    return booleanOf(platform::profileContent(file), section, key, defaultValue);
}

std::vector<bool> ReadIniBooleans(std::string_view section, std::span<const std::string> keys,
                                  bool defaultValue, std::string_view file) {
    const std::string content = platform::profileContent(file);
    std::vector<bool> values;
    for (const std::string& key : keys)
        values.push_back(booleanOf(content, section, key, defaultValue));
    return values;
}

bool WriteIniString(std::string_view section, std::string_view key, std::string_view value,
                    std::string_view file) {
    return writeAndFlush(section, key, value, file);
}

bool WriteIniNumber(std::string_view section, std::string_view key, std::int32_t number,
                    std::string_view file) {
    return writeAndFlush(section, key, std::to_string(number), file);
}

bool WriteIniPath(std::string_view section, std::string_view key, std::string_view path,
                  std::string_view file) {
    const std::string setting = settingOfPath(path);
    if (setting.size() < pathBufferSize)
        return writeAndFlush(section, key, setting, file);
    reportUnsaved(platform::profilePath(file), unwritten(section, key, file), "WriteIniPath");
    return false;
}

bool WriteIniBoolean(std::string_view section, std::string_view key, bool value,
                     std::string_view file) {
    return writeAndFlush(section, key, TextFromBoolean(value), file);
}

std::string ReadIniValueDirect(std::string_view section, std::string_view key,
                               std::string_view defaultValue, std::string_view file) {
    std::string content;
    if (!patient::readFile(platform::profilePath(file), content, platform::profileSizeLimit).ok())
        return std::string(defaultValue);
    const std::string text = platform::settingsText(content);
    const std::string header = "[" + platform::upperCase(section) + "]";
    const std::string upperKey = platform::upperCase(key);
    bool inSection = false;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view line = platform::trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.starts_with('['))
            inSection = platform::upperCase(line) == header;
        else if (inSection)
            if (const auto value = valueOfKey(line, upperKey))
                return std::string(*value);
    }
    return std::string(defaultValue);
}

bool BooleanFromText(std::string_view text) {
    return numericValue(text).value_or(0) != 0;
}

std::string_view TextFromBoolean(bool value) noexcept {
    return value ? "-1" : "0";
}

std::string PathFromText(std::string_view text, bool allowMissing) {
    if (!allowMissing && !patient::directoryExists(text))
        return {};
    return modFilePath::AddBackslash(text);
}

} // namespace ov::modINI
