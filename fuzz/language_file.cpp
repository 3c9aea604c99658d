// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any bytes as a language file: every text of it found and its places filled.

#include "support/language/language_file.h"

#include "fuzz/fuzzing.h"
#include "platform/text.h"
#include "support/language/text_expansion.h"

#include <array>
#include <string>

using ov::fuzzing::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = ov::LanguageFile::parse(ov::fuzzing::textOf(data, size));
    const std::array<std::string_view, 2> arguments{"D:\\%2%\\", ""};
    for (const std::int32_t language : {0, 7, 9, 12})
        for (const std::int32_t number : {0, 1, 2, 22, 1000, 4320, 20002}) {
            const auto text = file.find(number, language, 2);
            if (!text)
                continue;
            require(ov::platform::isValidUtf8(*text));
            // Once with everything, once with nothing to fill the places from.
            ov::expandText(*text, {arguments, [](std::int32_t) { return std::string("%1%"); },
                                   [] { return std::string("1.00.000"); }});
            ov::expandText(*text, {});
        }
    return 0;
}
