// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls against the recorded behaviour of the platform, data/profile.tsv.

#include "platform/profile.h"
#include "platform/profile_encoding.h"
#include "platform/text.h"
#include "settings_fixture.h"

#include <map>
#include <sstream>
#include <vector>

namespace ov::platform {
namespace {

namespace fs = std::filesystem;
using OptionalText = std::optional<std::string>;

// Rows that are not compared, by "case/step", a whole case without step.
const std::map<std::string, std::string> excluded = {
    {"r023/2", "the recording loses a character of a quoted value in a buffer of its size"},
    {"r065", "whole numbers are read by ReadIniNumber, there is no such call"},
    {"w044", "a line end in a value is refused"},
    {"w045", "a line end in a value is refused"},
    {"w063", "a key that would start a section is refused"},
};

// Lists that are cut: the recording writes one zero behind them, the platform and we two.
const std::string cutLists = " r091/1 r091/2 r091/3 r091/4 r091/5 r091/10 r091/11 ";

struct Row {
    std::string caseName, step, op, file, after;
    OptionalText section, key, text, buffer, initial;
    std::size_t size = 0;
    int result = 0;
    std::string name() const { return caseName + "/" + step; }
};

std::string unescaped(const std::string& text) {
    static const std::map<char, char> letters = {
        {'r', '\r'}, {'n', '\n'}, {'t', '\t'}, {'\\', '\\'}, {'"', '"'}};
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result.push_back(text[i]);
        } else if (text[++i] == 'x') {
            result.push_back(static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16)));
            i += 2;
        } else {
            result.push_back(letters.at(text[i]));
        }
    }
    return result;
}

// A field in quotes; nothing for NULL, ABSENT and an empty field.
OptionalText inQuotes(const std::string& field) {
    if (!field.starts_with('"'))
        return std::nullopt;
    return unescaped(field.substr(1, field.size() - 2));
}

OptionalText textOf(const OptionalText& bytes) {
    return bytes ? OptionalText(textFromBytes(*bytes)) : std::nullopt;
}

Row parseRow(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');)
        fields.push_back(field);
    fields.resize(14);
    Row row{fields[0], fields[1], fields[4], unescaped(fields[5]), fields[13], {}, {}, {}, {}, {}};
    row.initial = inQuotes(fields[3]);
    row.section = textOf(inQuotes(fields[6]));
    row.key = textOf(inQuotes(fields[7]));
    row.text = row.op == "X" ? inQuotes(fields[8]) : textOf(inQuotes(fields[8]));
    row.size = fields[9].empty() ? 0 : std::stoul(fields[9]);
    row.result = std::stoi(fields[10]);
    row.buffer = inQuotes(fields[12]);
    return row;
}

std::map<std::string, std::vector<Row>> readCases() {
    std::map<std::string, std::vector<Row>> cases;
    std::ifstream file(fs::path(OV_SOURCE_DIR) / "tests" / "data" / "profile.tsv");
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with('#') && !line.starts_with("case\t")) {
            Row row = parseRow(line);
            if (!excluded.contains(row.caseName))
                cases[row.caseName].push_back(std::move(row));
        }
    return cases;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\v\f");
    return first == std::string::npos
               ? ""
               : text.substr(first, text.find_last_not_of(" \t\v\f") - first + 1);
}

// What the recording keeps of a line: it drops the blanks around names and values and whatever
// stands behind a header.
std::string normalised(const std::string& line) {
    const std::size_t close = line.rfind(']');
    if (line.starts_with('[') && close != std::string::npos)
        return "[" + trimmed(line.substr(1, close - 1)) + "]";
    const std::size_t equals = line.find('=');
    if (line.starts_with(';') || equals == std::string::npos)
        return line;
    return trimmed(line.substr(0, equals)) + "=" + trimmed(line.substr(equals + 1));
}

// The lines that are not blank, one below the other.
std::string comparable(const std::string& bytes) {
    std::string lines;
    std::string text = settingsText(bytes) + "\n";
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        if (const std::string line = trimmed(text.substr(0, end)); !line.empty())
            lines += normalised(line) + "\n";
        text.erase(0, end + 1);
    }
    return lines;
}

class RecordedProfile : public tests::SettingsTest,
                        public ::testing::WithParamInterface<std::string> {
public:
    // The Windows directory is the folder, the current directory one below it.
    RecordedProfile() : oldDirectory_(fs::current_path()) {
        fs::create_directory(folder() / "current");
        fs::current_path(folder() / "current");
    }
    ~RecordedProfile() override { fs::current_path(oldDirectory_); }
    RecordedProfile(const RecordedProfile&) = delete;
    RecordedProfile& operator=(const RecordedProfile&) = delete;

protected:
    // The recording's own file lies elsewhere; other names mean the same here.
    std::string nameOf(const Row& row) const { return row.file == "F" ? path("F") : row.file; }
    static std::string storedAs(const Row& row) {
        return row.file.starts_with("./") ? "current/" + row.file.substr(2) : row.file;
    }

    void run(const Row& row) {
        if (row.op == "X")
            write(storedAs(row), *row.text);
        else if (row.op == "W")
            EXPECT_EQ(writePrivateProfileString(row.section, row.key, row.text, nameOf(row)),
                      row.result != 0);
        else
            compareReading(row);
    }

    void compareReading(const Row& row) const {
        constexpr char untouched = '\xFE'; // no byte of UTF-8
        std::string buffer(row.size, untouched);
        const std::size_t length =
            getPrivateProfileString(row.section, row.key, row.text, buffer, nameOf(row));
        buffer.erase(buffer.find_last_not_of(untouched) + 1);
        std::string expected = *row.buffer;
        if (cutLists.find(" " + row.name() + " ") != std::string::npos)
            expected.push_back('\0');
        EXPECT_EQ(toWindows1252(buffer), expected);
        EXPECT_EQ(toWindows1252(buffer.substr(0, length))->size(),
                  static_cast<std::size_t>(row.result));
    }

private:
    fs::path oldDirectory_;
};

TEST_P(RecordedProfile, readsAndWritesAlike) {
    const auto cases = readCases();
    const std::vector<Row>& rows = cases.at(GetParam());
    const bool isNew = !rows.front().initial;
    if (!isNew)
        write("F", *rows.front().initial);
    for (const Row& row : rows) {
        SCOPED_TRACE("step " + row.step);
        const std::string before = read(storedAs(row));
        const bool existed = fs::is_regular_file(folder() / storedAs(row));
        if (!excluded.contains(row.name()))
            run(row);
        const std::string after = read(storedAs(row));
        if (row.after == "=") {
            EXPECT_EQ(after, before);
            EXPECT_EQ(fs::is_regular_file(folder() / storedAs(row)), existed);
        } else if (isNew) {
            EXPECT_EQ(comparable(after), comparable(*inQuotes(row.after)));
            EXPECT_EQ(settingsText(after), settingsText(*inQuotes(row.after)));
        } else {
            EXPECT_EQ(comparable(after), comparable(*inQuotes(row.after)));
        }
    }
}

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& [name, rows] : readCases())
        names.push_back(name);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Case, RecordedProfile, ::testing::ValuesIn(caseNames()),
                         [](const auto& tested) { return tested.param; });

TEST(RecordedProfileData, everyExclusionIsARecordedRow) {
    std::ifstream file(fs::path(OV_SOURCE_DIR) / "tests" / "data" / "profile.tsv");
    std::string names;
    std::size_t rows = 0;
    for (std::string line; std::getline(file, line);)
        if (!line.starts_with('#') && !line.starts_with("case\t")) {
            const Row row = parseRow(line);
            names += " " + row.caseName + " " + row.name();
            ++rows;
        }
    EXPECT_EQ(rows, 242U);
    for (const auto& [name, reason] : excluded)
        EXPECT_NE((names + " ").find(" " + name + " "), std::string::npos) << name;
}

} // namespace
} // namespace ov::platform
