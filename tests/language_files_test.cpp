// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The language files of the tree, read by rules stricter than those of the program, and compared
// with each other and with what the code asks for.

#include "platform/text.h"
#include "support/language_file.h"
#include "support/text_ids.h"

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

std::string unquoted(const std::string& text) {
    return text.front() == '"' ? text.substr(1, text.size() - 2) : text;
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
            Texts& texts =
                match[2].matched ? file.subLanguages[line] : file.languages[std::stoi(match[1])];
            EXPECT_TRUE(texts.empty());
            section = &texts;
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

    std::set<std::int32_t> numbers() const {
        std::set<std::int32_t> all;
        for (const SourceFile& file : files_)
            for (const auto& [language, texts] : file.languages)
                for (const auto& [number, text] : texts)
                    all.insert(number);
        return all;
    }

    SourceFile files_[2] = {{"OVSearch.drl", 1, 19999}, {"OVStd.drl", 20000, 29999}};
};

std::multiset<std::string> allMatches(const std::string& text, const char* pattern) {
    const std::regex regex(pattern);
    std::multiset<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), regex), end; at != end; ++at)
        found.insert(at->str());
    return found;
}

TEST_F(LanguageFiles, EveryLanguageHasTheSameNumbersInTheRightFile) {
    for (const SourceFile& file : files_) {
        SCOPED_TRACE(file.name);
        ASSERT_TRUE(file.languages.contains(7));
        ASSERT_TRUE(file.languages.contains(9));
        for (const auto& [language, texts] : file.languages) {
            for (const auto& [number, text] : texts) {
                EXPECT_TRUE(number >= file.first && number <= file.last) << number;
                EXPECT_TRUE(file.languages.at(9).contains(number)) << number << " not in [9]";
            }
            for (const auto& [number, text] : file.languages.at(9))
                EXPECT_TRUE(texts.contains(number)) << number << " not in [" << language << "]";
        }
    }
}

// What a translator could lose: a place, an accelerator, a line break, the blanks at the ends.
TEST_F(LanguageFiles, EveryLanguageHasTheSamePlacesInAText) {
    for (const SourceFile& file : files_)
        for (const auto& [number, german] : file.languages.at(7)) {
            SCOPED_TRACE(number);
            const auto found = file.languages.at(9).find(number);
            ASSERT_NE(found, file.languages.at(9).end());
            const std::string& english = found->second;
            EXPECT_EQ(allMatches(german, "%[^%]*%"), allMatches(english, "%[^%]*%"));
            EXPECT_EQ(allMatches(german, "#[^#]*#"), allMatches(english, "#[^#]*#"));
            EXPECT_EQ(std::ranges::count(german, '&'), std::ranges::count(english, '&'));
            EXPECT_EQ(allMatches(german, "^\" *| *\"$"), allMatches(english, "^\" *| *\"$"));
        }
}

TEST_F(LanguageFiles, TextsAreWellFormed) {
    static const std::regex places(R"(([^%]|%[1-9]%|%#VERSION%|%%)*)");
    static const std::regex breaks(R"(([^#]|#13#|%#VERSION%)*)");
    static const std::regex accelerator(R"([^&]*(&[A-Za-z][^&]*)?)");
    static const std::regex ends(R"(".+"|[^ \t"](.*[^ \t"])?)");
    for (const SourceFile& file : files_)
        for (const auto& [language, texts] : file.languages)
            for (const auto& [number, text] : texts)
                for (const std::regex* rule : {&places, &breaks, &accelerator, &ends})
                    EXPECT_TRUE(std::regex_match(text, *rule))
                        << '[' << language << "] " << number << '=' << text;
}

// The program reads the same texts, the quotes aside.
TEST_F(LanguageFiles, ProgramReadsThem) {
    for (const SourceFile& file : files_) {
        const LanguageFile read =
            LanguageFile::parse(contentOf(sourceDirectory / "languages" / file.name));
        for (const auto& [language, texts] : file.languages)
            for (const auto& [number, text] : texts)
                EXPECT_EQ(read.find(number, language, 0), unquoted(text));
    }
}

// Wherever a file ends too early, only the text of its last line can be wrong.
TEST_F(LanguageFiles, CutFilesLoseNoOtherText) {
    const SourceFile& file = files_[1];
    const std::string content = contentOf(sourceDirectory / "languages" / file.name);
    for (std::size_t size = 0; size < content.size(); size += 89) {
        const LanguageFile cut = LanguageFile::parse(std::string_view(content).substr(0, size));
        const auto isWrong = [&cut](const auto& entry) {
            const auto found = cut.find(entry.first, 9, 0);
            return found && *found != unquoted(entry.second);
        };
        EXPECT_LE(std::ranges::count_if(file.languages.at(9), isWrong), 1) << size << " bytes";
    }
}

// All numbers that the code asks for: the named ones, and any that stand in a call or a caption.
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
    return numbers;
}

TEST_F(LanguageFiles, EveryNumberThatTheCodeAsksForIsThere) {
    const std::set<std::int32_t> there = numbers();
    const auto asked = numbersInTheCode();
    EXPECT_TRUE(asked.contains(text_id::title)) << "the code was not read";
    for (const auto& [number, file] : asked)
        EXPECT_TRUE(there.contains(number)) << number << " in " << file;

    const std::pair<std::int32_t, std::int32_t> ranges[] = {
        {text_id::firstFieldCaption, text_id::lastFieldCaption},
        {text_id::firstCodeText, text_id::lastCodeText},
        {text_id::firstOperator, text_id::lastOperator},
    };
    for (const auto& [first, last] : ranges)
        for (std::int32_t number = first; number <= last; ++number)
            EXPECT_TRUE(there.contains(number)) << number;
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
            for (auto at = texts.lower_bound(first); at != texts.upper_bound(last); ++at)
                for (const std::string& letter : allMatches(at->second, "&."))
                    EXPECT_TRUE(letters.insert(platform::upperCase(letter)).second)
                        << '[' << language << "] " << at->first << '=' << at->second;
        }
}

} // namespace
