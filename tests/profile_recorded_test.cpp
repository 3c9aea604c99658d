// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls against the recorded behaviour of the platform, data/profile.tsv.

#include "platform/profile.h"
#include "platform/profile_encoding.h"
#include "platform/profile_scanner.h"
#include "platform/text.h"
#include "settings_fixture.h"

#include <map>
#include <set>
#include <sstream>
#include <vector>

namespace ov::platform {
namespace {

namespace fs = std::filesystem;
using OptionalText = std::optional<std::string>;

const std::set<std::string> excluded = {
    "r023/2", // the recording loses a character of a quoted value in a buffer of its size
    "r065",   // whole numbers are read by ReadIniNumber, there is no such call
    "w044",   // a line end in a value is refused
    "w045",
    "w063", // a key that would start a section is refused
};

// Lists that are cut: the recording writes one zero behind them, the platform and we two.
const std::set<std::string> cutLists = {"r091/1", "r091/2",  "r091/3", "r091/4",
                                        "r091/5", "r091/10", "r091/11"};

struct Row {
    std::string caseName, name; // "r023" and "r023/2"
    std::string op, file;
    OptionalText before; // the file before the first row; nothing when there was none
    OptionalText section, key, text, buffer;
    std::size_t size = 0, result = 0;
    std::string after; // in quotes, or "=" for a file left alone
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

std::size_t numberOf(const std::string& field) {
    return field.empty() ? 0 : std::stoul(field);
}

Row parseRow(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');)
        fields.push_back(field);
    fields.resize(14);
    return {.caseName = fields[0],
            .name = fields[0] + "/" + fields[1],
            .op = fields[4],
            .file = unescaped(fields[5]),
            .before = inQuotes(fields[3]),
            .section = inQuotes(fields[6]),
            .key = inQuotes(fields[7]),
            .text = inQuotes(fields[8]),
            .buffer = inQuotes(fields[12]),
            .size = numberOf(fields[9]),
            .result = numberOf(fields[10]),
            .after = fields[13]};
}

const std::map<std::string, std::vector<Row>>& recordedCases() {
    static const auto cases = [] {
        std::map<std::string, std::vector<Row>> read;
        std::ifstream file(fs::path(OV_SOURCE_DIR) / "tests" / "data" / "profile.tsv");
        if (!file)
            throw std::runtime_error("profile.tsv is missing");
        for (std::string line; std::getline(file, line);)
            if (!line.starts_with('#') && !line.starts_with("case\t")) {
                Row row = parseRow(line);
                read[row.caseName].push_back(std::move(row));
            }
        return read;
    }();
    return cases;
}

// What the recording keeps of a file: no blank lines, no blanks around names and values, and
// nothing behind a header.
std::string comparable(const std::string& bytes) {
    std::string lines;
    std::istringstream text(settingsText(bytes));
    for (std::string part; std::getline(text, part);) {
        std::istringstream pieces(part);
        for (std::string piece; std::getline(pieces, piece, '\r');) {
            const ProfileLine line = parseProfileLine(piece);
            if (line.kind == ProfileLine::Kind::header)
                lines.append("[").append(line.name).append("]\n");
            else if (line.hasValue && !line.name.starts_with(';'))
                lines.append(line.name).append("=").append(line.value).append("\n");
            else if (line.kind == ProfileLine::Kind::entry)
                lines.append(withoutBlanks(piece)).append("\n");
        }
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

protected:
    static std::string storedAs(const Row& row) {
        return row.file.starts_with("./") ? "current/" + row.file.substr(2) : row.file;
    }

    void run(const Row& row) const {
        // The recording's own file lies elsewhere; other names mean the same here.
        const std::string file = row.file == "F" ? path("F") : row.file;
        if (row.op == "X")
            write(storedAs(row), *row.text);
        else if (row.op == "W")
            EXPECT_EQ(writePrivateProfileString(row.section, row.key, row.text, file),
                      row.result != 0);
        else
            compareReading(row, file);
    }

private:
    static void compareReading(const Row& row, const std::string& file) {
        constexpr char untouched = '\xFE'; // no byte of UTF-8
        std::string buffer(row.size, untouched);
        const OptionalText fallback = row.text ? textFromBytes(*row.text) : row.text;
        const std::size_t length =
            getPrivateProfileString(row.section, row.key, fallback, buffer, file);
        buffer.erase(buffer.find_last_not_of(untouched) + 1);
        EXPECT_EQ(toWindows1252(buffer),
                  *row.buffer + std::string(cutLists.contains(row.name) ? 1 : 0, '\0'));
        EXPECT_EQ(toWindows1252(buffer.substr(0, length))->size(), row.result);
    }

    fs::path oldDirectory_;
};

TEST_P(RecordedProfile, readsAndWritesAlike) {
    const std::vector<Row>& rows = recordedCases().at(GetParam());
    if (const OptionalText& content = rows.front().before)
        write("F", *content);
    for (const Row& row : rows) {
        if (excluded.contains(row.caseName) || excluded.contains(row.name))
            continue;
        SCOPED_TRACE(row.name);
        const fs::path file = folder() / storedAs(row);
        const std::string before = read(storedAs(row));
        const bool existed = fs::is_regular_file(file);
        run(row);
        const std::string after = read(storedAs(row));
        const std::string expected = inQuotes(row.after).value_or(before);
        if (row.after == "=") {
            EXPECT_EQ(after, expected);
            EXPECT_EQ(fs::is_regular_file(file), existed);
        } else {
            EXPECT_EQ(comparable(after), comparable(expected));
        }
    }
}

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& [name, rows] : recordedCases())
        names.push_back(name);
    return names;
}

INSTANTIATE_TEST_SUITE_P(Case, RecordedProfile, ::testing::ValuesIn(caseNames()),
                         [](const auto& tested) { return tested.param; });

} // namespace
} // namespace ov::platform
