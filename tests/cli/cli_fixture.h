// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/run_program.h"
#include "tests/temporary_store.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace ov::cli {

using namespace std::string_literals;
using tests::holds;
using tests::ProgramResult;
using tests::ProgramRun;
using tests::TemporaryStore;
using Texts = std::vector<std::string>;

constexpr const char* highPriority =
    "2$ROH@@5$HOCH@@6$00$01$30@@7$21-11-2026 10$00$00@@14$Müller@@11$'eilig', heute.WAV";
constexpr const char* sentByMail = "2$MAI@@5$NORMAL@@6$00$00$20@@7$01-02-2026@@14$Zeh.wav";
constexpr const char* marked =
    "2$WAV@@14$öztürk@@98$D@@7$30-12-2025@@23$more@@23$again@@@31$odd@@023$zero.WAV";

inline Texts split(const std::string& text, char separator) {
    Texts parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

inline Texts plus(Texts texts, const Texts& more) {
    texts.insert(texts.end(), more.begin(), more.end());
    return texts;
}

inline std::string joined(const Texts& texts) {
    std::string all;
    for (const std::string& text : texts)
        all.append(all.empty() ? "" : " ").append(text);
    return all;
}

class Cli : public ::testing::Test {
protected:
    // A folder has one file each, so that the order found is known.
    void addThree() {
        store_.add(highPriority).add(std::string("ward/") + sentByMail);
        store_.add(std::string("ward/ERL/") + marked);
        store_.add(std::string("_old/") + highPriority).add("ward/ERL/notes.txt");
    }

    ProgramResult run(const Texts& arguments, ProgramRun how = {}) const {
        how.arguments = plus({"--settings", settings_.folder().native()}, arguments);
        how.environment.insert({"LC_ALL", "C"});
        return tests::runProgram(OV_SEARCH_PROGRAM, how);
    }
    // Searches the store.
    ProgramResult find(const Texts& options, const ProgramRun& how = {}) const {
        return run(plus(plus({"find"}, options), {root()}), how);
    }
    // Paths in the store, sorted.
    Texts foundFiles(const Texts& options = {}, const ProgramRun& how = {}) const {
        Texts files = split(find(plus(options, {"--format", "paths", "-0"}), how).output, '\0');
        for (std::string& file : files)
            file = file.substr(std::min(root().size() + 1, file.size()));
        std::sort(files.begin(), files.end());
        return files;
    }
    // "Müller Zeh", in the order printed.
    static std::string authors(const ProgramResult& result) {
        Texts lines = split(std::regex_replace(result.output, std::regex("\r"), ""), '\n');
        lines.erase(lines.begin(), lines.begin() + (lines.empty() ? 0 : 1));
        return joined(lines);
    }
    std::string authors(const Texts& options) const {
        return authors(find(plus({"--columns", "author", "--format", "csv"}, options)));
    }

    void expectRefused(const Texts& arguments, int exitCode, const std::string& message,
                       const ProgramRun& how = {}) const {
        const ProgramResult result = run(arguments, how);
        EXPECT_EQ(result.exitCode, exitCode) << joined(arguments);
        EXPECT_PRED2(holds, result.errors, message);
        EXPECT_EQ(result.output, "");
    }

    std::string root() const { return store_.folder().native(); }

    TemporaryStore store_;
    TemporaryStore settings_;
};

} // namespace ov::cli
