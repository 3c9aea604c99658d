// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/language/modLanguage.h"

#include "support/language/english_texts.h"
#include "support/language/language_file.h"
#include "support/language/language_id.h"
#include "support/language/resource_gateway.h"
#include "support/language/text_expansion.h"
#include "support/language/text_ids.h"
#include "support/modUtil.h"
#include "support/numbers.h"
#include "support/version.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

namespace ov::modLanguage {

namespace {

constexpr std::string_view hostStandardFile = "OVStd.drl";
constexpr std::string_view defaultControlFile = "OVSearch.drl";

constexpr std::int32_t firstHostText = 20000;
constexpr std::int32_t lastText = 29999;

using Arguments = std::span<const std::string_view>;

struct State {
    std::int32_t language = 0;
    std::int32_t subLanguage = 0;
    std::string controlFile; // empty: not loaded
    bool toldOfStandardTexts = false;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

std::string versionText() {
    std::array<char, 48> number{};
    const int length = std::snprintf(number.data(), number.size(), " %d.%02d.%03d", version::major,
                                     version::minor, version::revision);
    return GetResText(text_id::versionWord, state().controlFile)
        .append(number.data(), static_cast<std::size_t>(length));
}

const LanguageFile& builtInTexts() {
    static const LanguageFile texts = LanguageFile::parse(englishStandardTexts);
    return texts;
}

// A file that lacks one of our own texts is no reason for a button without a caption.
std::string standardText(std::int32_t number) {
    std::string text = GetResText(number, hostStandardFile);
    return text.empty()
               ? std::string(builtInTexts().find(number, language_id::english, 0).value_or(""))
               : text;
}

void tellOfMissingStandardTexts() {
    const std::vector<std::int32_t> numbers = builtInTexts().numbers(language_id::english);
    const bool complete = std::none_of(numbers.begin(), numbers.end(), [](std::int32_t number) {
        return GetResText(number, hostStandardFile).empty();
    });
    const modUtil::Message message(text_id::standardTextsMissing, {std::string(hostStandardFile)});
    if (!complete && !message.text().empty() && !std::exchange(state().toldOfStandardTexts, true))
        modUtil::Tell(message, platform::MessageIcon::exclamation);
}

std::string textWith(std::int32_t number, std::optional<Arguments> arguments) {
    if (number < 1 || number > lastText)
        return {};
    const std::string_view controlFile = state().controlFile;
    const std::string text =
        number >= firstHostText ? standardText(number) : GetResText(number, controlFile);
    return expandText(
        text, {.arguments = arguments,
               .text = [controlFile](std::int32_t other) { return GetResText(other, controlFile); },
               .version = versionText});
}

} // namespace

void SetLanguage(std::int32_t language, std::int32_t subLanguage) {
    state().language = language;
    state().subLanguage = subLanguage;
}

std::int32_t Language() {
    return state().language;
}

std::int32_t SubLanguage() {
    return state().subLanguage;
}

bool LoadLanguageFile() {
    std::string& file = state().controlFile;
    if (file.empty())
        file = defaultControlFile;
    resource_gateway::forgetFiles();
    std::array<char, resourceBufferSize> buffer{};
    if (resource_gateway::GetResString(file, text_id::languageName, buffer, 0, 1) == -1)
        return false;
    tellOfMissingStandardTexts();
    return true;
}

void ShowLanguageLoadFailure() {
    const std::string& file = state().controlFile;
    const bool inGerman = Language() == 0 || Language() == language_id::german;
    modUtil::ShowMessage(inGerman ? "Sprachen-Datei (" + file + ") konnte nicht geladen werden."
                                  : "Could not load language file (" + file + ").",
                         platform::MessageIcon::exclamation);
}

std::string GetResText(std::int32_t number, std::string_view fileName) {
    if (fileName.empty() || number <= 0)
        return {};
    std::array<char, resourceBufferSize> buffer{};
    const std::int32_t length =
        resource_gateway::GetResString(fileName, number, buffer, Language(), SubLanguage());
    return length >= 1 ? std::string(buffer.data(), static_cast<std::size_t>(length))
                       : std::string();
}

std::string GetText(std::int32_t number) {
    return textWith(number, std::nullopt);
}

std::string GetText(std::int32_t number, std::span<const std::string> arguments) {
    const std::vector<std::string_view> views(arguments.begin(), arguments.end());
    return textWith(number, views);
}

std::string GetText(std::int32_t number, std::initializer_list<std::string_view> arguments) {
    return textWith(number, Arguments(arguments.begin(), arguments.size()));
}

std::int32_t ParseTextRef(std::string_view text) {
    return text.size() >= 2 && text.front() == '#' ? leadingInt32(text.substr(1)) : 0;
}

std::string TranslateRef(std::string_view text) {
    const std::int32_t number = ParseTextRef(text);
    return number >= 1 ? GetText(number) : std::string(text);
}

void reset() {
    state() = {};
}

} // namespace ov::modLanguage
