// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/process_locale.h"

#include <clocale>
#include <cstdlib>
#include <ctime>

namespace ov::platform {

std::string environmentLocale(const char* category) {
    for (const char* variable : {"LC_ALL", category, "LANG"})
        if (const char* name = std::getenv(variable); name != nullptr && *name != '\0')
            return name;
    return "C";
}

Locale processLocale() {
    Locale result = localeNamed(environmentLocale("LC_TIME"));
    const Locale numeric = localeNamed(environmentLocale("LC_NUMERIC"));
    result.decimalSign = numeric.decimalSign;
    result.groupSign = numeric.groupSign;
    return result;
}

DateTime localTime(std::int64_t nanoseconds) {
    const std::time_t seconds = nanoseconds / 1'000'000'000;
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

DateTime now() {
    return localTime(std::int64_t{std::time(nullptr)} * 1'000'000'000);
}

void useMessagesOfEnvironment() noexcept {
    for (const int category : {LC_CTYPE, LC_MESSAGES}) // their characters and their words
        std::setlocale(category, "");
}

} // namespace ov::platform
