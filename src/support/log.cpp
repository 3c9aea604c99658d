// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/log.h"

#include "platform/files.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/modFilePath.h"
#include "support/modUtil.h"
#include "support/patient_files.h"

#include <array>
#include <cstdio>

namespace ov {

namespace {

// "DATE" would give one file per day. One file is what administrators collect.
constexpr std::string_view LogFileNaming; // NOLINT(readability-identifier-naming): a given name

// The number that runtime errors carry for "path not found".
constexpr int pathNotFound = 76;

struct State {
    std::array<std::string, recentLogLineCount> recent;
    std::size_t position = 0; // 1 to recentLogLineCount once a line was written
};

State& state() {
    thread_local State threadState;
    return threadState;
}

std::string defaultFileName(const platform::DateTime& now) {
    std::string name = "OVSearch_";
    if (platform::upperCase(LogFileNaming) == "DATE") {
        std::array<char, 32> date{};
        const int length =
            std::snprintf(date.data(), date.size(), "%04d%02d%02d", now.year, now.month, now.day);
        name.append(date.data(), static_cast<std::size_t>(length));
    }
    return name + ".log";
}

std::string onOneLine(std::string_view message) {
    std::string line;
    line.reserve(message.size());
    for (const char c : message) {
        if (c == '\r')
            line += "\\r";
        else if (c == '\n')
            line += "\\n";
        else if ((static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7F) {
            std::array<char, 8> escape{};
            static_cast<void>(std::snprintf(escape.data(), escape.size(), "\\x%02X",
                                            static_cast<unsigned>(static_cast<unsigned char>(c))));
            line += escape.data();
        } else
            line.push_back(c);
    }
    return line;
}

void remember(std::string line) {
    State& current = state();
    current.position = current.position >= recentLogLineCount ? 1 : current.position + 1;
    current.recent[current.position - 1] = std::move(line);
}

platform::Status writeLine(const std::string& file, const std::string& line, bool deleteFirst) {
    if (deleteFirst && patient::fileExists(file))
        if (platform::Status removed = patient::removeFile(file); !removed.ok())
            return removed;
    return patient::appendToFile(file, line + "\r\n", platform::Access::ownerOnly);
}

void showFailure(const platform::Status& failure, const std::string& file) {
    modUtil::Tell("ERROR (" + std::to_string(failure.number()) + "): WriteErrorLog - " +
                  failure.description() + "\r\n\r\n(Log file: " + platform::toNativePath(file) +
                  ")");
}

} // namespace

bool WriteLog(std::string_view message, std::string_view fileName, bool deleteFirst) {
    const platform::DateTime now = platform::now();
    std::string line = platform::formatShortDate(now) + " " + platform::formatLongTime(now) +
                       " - " + onOneLine(message);
    const bool created = !modFilePath::GetDirectory(modFilePath::directory_id::log, true).empty();
    const std::string directory = modFilePath::GetDirectory(modFilePath::directory_id::log);
    const std::string file =
        directory + (fileName.empty() ? defaultFileName(now) : std::string(fileName));
    const platform::Status written =
        created ? writeLine(file, line, deleteFirst)
                : platform::Status(pathNotFound, platform::toNativePath(directory),
                                   "cannot be created");
    if (written.ok())
        remember(std::move(line));
    else
        showFailure(written, file);
    return written.ok();
}

bool WriteErrorLog(const Error& error, std::string_view procedureName, bool showMessage,
                   std::string_view description, std::string_view fileName, bool deleteFirst) {
    std::string text = "ERROR (" + std::to_string(error.number) + "): ";
    if (!procedureName.empty())
        text.append(procedureName).append(" - ");
    if (description.empty())
        description = error.description;
    text += description.empty() ? "<Unknown>" : description;
    const bool written = WriteLog(text, fileName, deleteFirst);
    if (showMessage)
        modUtil::ShowMessage(text, platform::MessageIcon::exclamation);
    return written;
}

std::vector<std::string> recentLogLines() {
    const State& current = state();
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < recentLogLineCount; ++i) {
        const std::string& line = current.recent[(current.position + i) % recentLogLineCount];
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

void resetLog() {
    state() = {};
}

} // namespace ov
