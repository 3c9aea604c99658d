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
    std::int32_t first, last; // the numbers that belong there
    std::map<std::int32_t, Texts> languages{};
    std::map<std::string, Texts> subLanguages{}; // by header; need not be complete
};

// Reports every line that is not exactly a comment, a header or an entry with a new number.
void readStrictly(SourceFile& file) {
    static const std::regex header(R"(\[(\d+)(\.\d+)?\])");
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
        if (std::regex_match(line, match, header)) {
            section =
                match[2].matched ? &file.subLanguages[line] : &file.languages[std::stoi(match[1])];
            EXPECT_TRUE(section->empty());
        } else if (section != nullptr && std::regex_match(line, match, entry)) {
            EXPECT_TRUE(section->emplace(std::stoi(match[1]), match[2]).second);
        } else {
            ADD_FAILURE() << "is nothing";
        }
    }
}

class LanguageFiles : public testing::Test {
protected:
    LanguageFiles() {
        for (SourceFile& file : files_)
            readStrictly(file);
    }

    // Calls check(number, text) for every text of every language.
    template <typename Check>
    void forEachText(Check check) const {
        for (const SourceFile& file : files_)
            for (const auto& [language, texts] : file.languages)
                for (const auto& [number, text] : texts) {
                    SCOPED_TRACE(std::string(file.name) + " [" + std::to_string(language) + "] " +
                                 std::to_string(number) + '=' + text);
                    check(file, number, text);
                }
    }

    SourceFile files_[2] = {{"OVSearch.drl", 1, 19999}, {"OVStd.drl", 20000, 29999}};
};

// The pieces of `text` that must stand in every language: places, line breaks, an accelerator,
// blanks at the ends.
std::multiset<std::string> piecesToKeep(const std::string& text) {
    static const std::regex piece(R"(%[^%]*%|#[^#]*#|&|^" *| *"$)");
    std::multiset<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), piece), end; at != end; ++at)
        found.insert(at->str());
    return found;
}

TEST_F(LanguageFiles, EveryLanguageHasTheSameTextsInTheRightFile) {
    forEachText([](const SourceFile& file, std::int32_t number, const std::string& text) {
        EXPECT_TRUE(number >= file.first && number <= file.last);
        for (const auto& [language, texts] : file.languages) {
            ASSERT_TRUE(texts.contains(number)) << "not in [" << language << ']';
            EXPECT_EQ(piecesToKeep(texts.at(number)), piecesToKeep(text));
        }
    });
}

TEST_F(LanguageFiles, TextsAreWellFormed) {
    static const std::regex places(R"(([^%]|%[1-9]%|%#VERSION%|%%)*)");
    static const std::regex breaks(R"(([^#]|#13#|%#VERSION%)*)");
    static const std::regex accelerator(R"([^&]*(&[A-Za-z][^&]*)?)");
    static const std::regex ends(R"(".+"|[^ \t"](.*[^ \t"])?)");
    static const std::regex typography(R"((?!.*\.\.\.)\"?[^\"']*\"?)");
    forEachText([](const SourceFile&, std::int32_t, const std::string& text) {
        for (const std::regex* rule : {&places, &breaks, &accelerator, &ends, &typography})
            EXPECT_TRUE(std::regex_match(text, *rule));
    });
}

// All numbers that the code asks for: the named ones, the ranges, and any in a call or a caption.
std::map<std::int32_t, std::string> numbersInTheCode() {
    static const std::regex named(R"(constexpr std::int32_t \w+ = (\d+);)");
    static const std::regex asked(R"rx((?:GetText\(|"#)(\d+)[,)"])rx");
    std::map<std::int32_t, std::string> numbers;
    for (const auto& entry : fs::recursive_directory_iterator(sourceDirectory / "src")) {
        const std::string extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h" && extension != ".ui")
            continue;
        const std::string code = contentOf(entry.path());
        const std::regex& pattern = entry.path().filename() == "text_ids.h" ? named : asked;
        for (std::sregex_iterator at(code.begin(), code.end(), pattern), end; at != end; ++at)
            numbers.emplace(std::stoi((*at)[1]), entry.path().filename());
    }
    const std::pair<std::int32_t, std::int32_t> ranges[] = {
        {text_id::firstFieldCaption, text_id::lastFieldCaption},
        {text_id::firstCodeText, text_id::lastCodeText},
        {text_id::firstOperator, text_id::lastOperator},
    };
    for (const auto& [first, last] : ranges)
        for (std::int32_t number = first; number <= last; ++number)
            numbers.emplace(number, "text_ids.h");
    return numbers;
}

TEST_F(LanguageFiles, HoldWhatTheCodeAsksForAndNothingElse) {
    const auto asked = numbersInTheCode();
    for (const auto& [number, where] : asked)
        EXPECT_TRUE(files_[number > files_[0].last ? 1 : 0].languages.at(9).contains(number))
            << number << " in " << where;
    forEachText([&asked](const SourceFile&, std::int32_t number, const std::string&) {
        EXPECT_TRUE(asked.contains(number));
    });
}

TEST_F(LanguageFiles, CodesAndFlagsReadDifferently) {
    for (const auto& [language, texts] : files_[1].languages) {
        std::set<std::string> seen;
        for (std::int32_t number = text_id::firstCodeText; number <= text_id::lastCodeText;
             ++number)
            EXPECT_TRUE(seen.insert(texts.at(number)).second) << number;
    }
}

// Each dialog's accelerators, and those of the control.
TEST_F(LanguageFiles, AcceleratorsOfAWindowDiffer) {
    const std::pair<std::int32_t, std::int32_t> windows[] = {
        {1000, 1099}, {1200, 1299}, {4000, 4099}, {4120, 4199}, {4200, 4299}, {4300, 4309}};
    for (const auto& [language, texts] : files_[0].languages)
        for (const auto& [first, last] : windows) {
            std::set<std::string> letters;
            for (auto at = texts.lower_bound(first); at != texts.upper_bound(last); ++at) {
                const std::size_t mark = std::min(at->second.find('&'), at->second.size());
                const std::string letter = platform::upperCase(at->second.substr(mark, 2));
                EXPECT_TRUE(letter.empty() || letters.insert(letter).second)
                    << '[' << language << "] " << at->first << '=' << at->second;
            }
        }
}

} // namespace
