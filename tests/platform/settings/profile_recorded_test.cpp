// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// The profile calls against the recorded behaviour of the platform and what we add to it: which
// bytes are kept, encodings and refusals. All of it is in data/profile.tsv.

#include "platform/profile.h"
#include "platform/settings/profile_encoding.h"
#include "platform/settings/profile_scanner.h"
#include "platform/text.h"
#include "tests/settings_fixture.h"

namespace ov::platform {
namespace {

using OptionalText = std::optional<std::string>;

struct Row {
    std::string caseName, step, group, before, op, file, section, key, text, size, result, error,
        buffer, after;
};

// A field in quotes, C escapes; nothing for NULL, ABSENT and an empty field.
OptionalText unquoted(const std::string& field) {
    if (!field.starts_with('"'))
        return std::nullopt;
    std::string bytes;
    for (std::size_t i = 1; i + 1 < field.size(); ++i)
        if (field[i] != '\\') {
            bytes.push_back(field[i]);
        } else if (field[++i] == 'x') {
            bytes.push_back(static_cast<char>(std::stoi(field.substr(i + 1, 2), nullptr, 16)));
            i += 2;
        } else {
            const std::size_t letter = std::string_view("rnt").find(field[i]);
            bytes.push_back(letter < 3 ? "\r\n\t"[letter] : field[i]);
        }
    return bytes;
}

std::vector<Row> recordedRows() {
    std::vector<Row> rows;
    std::ifstream stream(OV_SOURCE_DIR "/tests/data/profile.tsv");
    for (std::string line; std::getline(stream, line);) {
        Row row;
        std::istringstream fields(line);
        for (std::string* field :
             {&row.caseName, &row.step, &row.group, &row.before, &row.op, &row.file, &row.section,
              &row.key, &row.text, &row.size, &row.result, &row.error, &row.buffer, &row.after})
            std::getline(fields, *field, '\t');
        if (!line.starts_with('#') && row.caseName != "case")
            rows.push_back(std::move(row));
    }
    return rows;
}

// What the recording keeps of a file: no blank lines, no blanks around names and values, and
// nothing behind a header.
std::string comparable(const std::string& bytes) {
    std::string lines;
    const std::string content = settingsText(bytes);
    for (SettingsLines at(content); at.next();) {
        const ProfileLine line = parseProfileLine(at.bytes(false));
        if (line.kind == ProfileLine::Kind::header)
            lines.append("[").append(line.name).append("]\n");
        else if (line.hasValue && !line.name.starts_with(';'))
            lines.append(line.name).append("=").append(line.value).append("\n");
        else if (line.kind == ProfileLine::Kind::entry)
            lines.append(withoutBlanks(at.bytes(false))).append("\n");
    }
    return lines;
}

// The Windows directory is the folder, the current directory one below it.
class RecordedProfile : public tests::SettingsTest {
public:
    RecordedProfile() : oldDirectory_(fs::current_path()) {
        fs::create_directory(folder() / "current");
        fs::current_path(folder() / "current");
    }
    ~RecordedProfile() override { fs::current_path(oldDirectory_); }

protected:
    void run(const Row& row, const std::string& stored) {
        // The recording's own file lies elsewhere; other names mean the same here.
        const std::string name = row.file == "F" ? path("F") : *unquoted('"' + row.file + '"');
        if (row.op == "X")
            write(stored, *unquoted(row.text));
        else if (row.op == "W")
            EXPECT_EQ(writePrivateProfileString(unquoted(row.section), unquoted(row.key),
                                                unquoted(row.text), name),
                      row.result != "0");
        else
            compareReading(row, name);
    }

private:
    static void compareReading(const Row& row, const std::string& name) {
        constexpr char untouched = '\xFE'; // no byte of UTF-8
        std::string found(std::stoul(row.size), untouched);
        OptionalText fallback = unquoted(row.text);
        if (fallback)
            fallback = textFromBytes(*fallback);
        const std::size_t length = getPrivateProfileString(unquoted(row.section), unquoted(row.key),
                                                           fallback, found, name);
        found.erase(found.find_last_not_of(untouched) + 1);
        EXPECT_EQ(toWindows1252(found), unquoted(row.buffer));
        EXPECT_EQ(toWindows1252(found.substr(0, length))->size(), std::stoul(row.result));
    }

    fs::path oldDirectory_;
};

TEST_F(RecordedProfile, readsAndWritesAlike) {
    const std::vector<Row> rows = recordedRows();
    ASSERT_EQ(rows.size(), 257U);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.caseName + "/" + row.step);
        if (row.step == "1") {
            fs::remove(folder() / "F");
            if (const OptionalText content = unquoted(row.before))
                write("F", *content);
        }
        const std::string stored =
            row.file.starts_with("./") ? "current/" + row.file.substr(2) : row.file;
        const bool existed = fs::is_regular_file(folder() / stored);
        const std::string old = read(stored);
        run(row, stored);
        if (row.after != "=") {
            const std::string after = *unquoted(row.after);
            EXPECT_EQ(comparable(read(stored)), comparable(after));
            EXPECT_EQ(row.group == "bytes" ? read(stored) : after, after);
            continue;
        }
        EXPECT_EQ(read(stored), old);
        EXPECT_EQ(fs::is_regular_file(folder() / stored), existed);
    }
}

} // namespace
} // namespace ov::platform
