// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The language files of the tree, read by rules stricter than those of the program, and compared
// with each other and with what the code asks for.

#include "platform/text.h"
#include "support/language/text_ids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

using namespace ov;
namespace fs = std::filesystem;

using Texts = std::map<std::int32_t, std::string>; // as written, with their quotes

const fs::path sourceDirectory = OV_SOURCE_DIR;

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct SourceFile {
    const char* name;
    std::int32_t first, last;                 // the numbers that belong there
    std::map<std::string, Texts> languages{}; // by header
};

// Reports every line that is not exactly a comment, a header or an entry with a new number. What
// is under the header of a sub-language need not be complete, and is left out.
void readStrictly(SourceFile& file) {
    static const std::regex entry(R"(([1-9]\d{0,4})=(.+))");
    std::istringstream lines(contentOf(sourceDirectory / "languages" / file.name));
    Texts* section = nullptr;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        SCOPED_TRACE(std::string(file.name) + ", line " + std::to_string(number) + ": " + line);
        EXPECT_TRUE(platform::isValidUtf8(line));
        std::smatch match;
        if (line.empty() || line.front() == ';')
            continue;
        if (std::regex_match(line, std::regex(R"(\[\d+(\.\d+)?\])")))
            EXPECT_TRUE((section = &file.languages[line])->empty());
        else if (section != nullptr && std::regex_match(line, match, entry))
            EXPECT_TRUE(section->emplace(std::stoi(match[1]), match[2]).second);
        else
            ADD_FAILURE() << "is nothing";
    }
    std::erase_if(file.languages,
                  [](const auto& one) { return one.first.find('.') != std::string::npos; });
}

class LanguageFiles : public testing::Test {
protected:
    LanguageFiles() {
        for (SourceFile& file : files_)
            readStrictly(file);
    }

    // Calls check(file, language, number, text) for every text of every language.
    template <typename Check>
    void forEachText(Check check) const {
        for (const SourceFile& file : files_)
            for (const auto& [language, texts] : file.languages)
                for (const auto& [number, text] : texts) {
                    SCOPED_TRACE(file.name + language + std::to_string(number) + '=' + text);
                    check(file, language, number, text);
                }
    }

    SourceFile files_[2] = {{"OVSearch.drl", 1, 19999}, {"OVStd.drl", 20000, 29999}};
};

// The pieces of `text` that must stand in every language: places, line breaks, an accelerator,
// blanks at the ends.
std::multiset<std::string> piecesToKeep(const std::string& text) {
    static const std::regex piece(R"(%[^%]*%|#[^#]*#|&|^" *| *"$)");
    return {std::sregex_token_iterator(text.begin(), text.end(), piece), {}};
}

TEST_F(LanguageFiles, EveryLanguageHasTheSameTextsInTheRightFile) {
    forEachText([](const SourceFile& file, const auto&, std::int32_t number, const auto& text) {
        EXPECT_TRUE(number >= file.first && number <= file.last);
        for (const auto& [language, texts] : file.languages) {
            ASSERT_TRUE(texts.contains(number)) << "not in " << language;
            EXPECT_EQ(piecesToKeep(texts.at(number)), piecesToKeep(text));
        }
    });
}

TEST_F(LanguageFiles, TextsAreWellFormed) {
    static const std::regex rules[] = {
        std::regex(R"(([^%]|%[1-9]%|%#VERSION%|%%)*)"), std::regex(R"(([^#]|#13#|%#VERSION%)*)"),
        std::regex(R"([^&]*(&[A-Za-z][^&]*)?)"), std::regex(R"(".+"|[^ \t"](.*[^ \t"])?)"),
        std::regex(R"((?!.*\.\.\.)\"?[^\"']*\"?)")};
    // What is said in other words everywhere else, or sounds of something else.
    static const std::map<std::string, std::regex> unusual = {
        {"[7]", std::regex("[^ ]…|Ordner|gibt es schon|Tabulator |eingeteilt")},
        {"[9]", std::regex(" …|exists already|[Bb]ack.up|Not Ready")}};
    forEachText([](const SourceFile&, const auto& language, std::int32_t, const auto& text) {
        for (const std::regex& rule : rules)
            EXPECT_TRUE(std::regex_match(text, rule));
        EXPECT_FALSE(std::regex_search(text, unusual.at(language)));
    });
}

// All numbers that the code asks for: the named ones, the ranges, and any in a call or a caption.
std::map<std::int32_t, std::string> numbersInTheCode() {
    static const std::regex named(R"(constexpr std::int32_t \w+ = (\d+);)");
    static const std::regex asked(R"rx((?:GetText\(|"#)(\d+)[,)"])rx");
    std::map<std::int32_t, std::string> numbers;
    for (const auto& entry : fs::recursive_directory_iterator(sourceDirectory / "src")) {
        const std::string name = entry.path().filename();
        if (!std::regex_search(name, std::regex(R"(\.(cpp|h|ui)$)")))
            continue;
        const std::string code = contentOf(entry.path());
        const std::regex& pattern = name == "text_ids.h" ? named : asked;
        for (std::sregex_iterator at(code.begin(), code.end(), pattern), end; at != end; ++at)
            numbers.emplace(std::stoi((*at)[1]), name);
    }
    for (const auto& [first, last] :
         {std::pair(text_id::firstFieldCaption, text_id::lastFieldCaption),
          {text_id::firstCodeText, text_id::lastCodeText},
          {text_id::firstOperator, text_id::lastOperator}})
        for (std::int32_t number = first; number <= last; ++number)
            numbers.emplace(number, "text_ids.h");
    return numbers;
}

TEST_F(LanguageFiles, HoldWhatTheCodeAsksForAndNothingElse) {
    const auto asked = numbersInTheCode();
    for (const auto& [number, where] : asked)
        EXPECT_TRUE(files_[number > files_[0].last ? 1 : 0].languages.at("[9]").contains(number))
            << number << " in " << where;
    forEachText([&asked](const auto&, const auto&, std::int32_t number, const auto&) {
        EXPECT_TRUE(asked.contains(number));
    });
}

TEST_F(LanguageFiles, CodesReadDifferentlyAndSoDoAcceleratorsOfAWindow) {
    for (const auto& [language, texts] : files_[1].languages) {
        std::set<std::string> seen;
        for (auto number = text_id::firstCodeText; number <= text_id::lastCodeText; ++number)
            EXPECT_TRUE(seen.insert(texts.at(number)).second) << number;
    }
    const std::pair<std::int32_t, std::int32_t> windows[] = {
        {1000, 1099}, {1200, 1299}, {4000, 4099}, {4120, 4199}, {4200, 4299}, {4300, 4309}};
    for (const auto& [language, texts] : files_[0].languages)
        for (const auto& [first, last] : windows) {
            std::set<std::string> letters;
            for (auto at = texts.lower_bound(first); at != texts.upper_bound(last); ++at) {
                const std::size_t mark = std::min(at->second.find('&'), at->second.size());
                const std::string letter = platform::upperCase(at->second.substr(mark, 2));
                EXPECT_TRUE(letter.empty() || letters.insert(letter).second)
                    << language << at->first << '=' << at->second;
            }
        }
}

} // namespace
