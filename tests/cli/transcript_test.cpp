// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/cli/cli_fixture.h"

// What people and programs ask and are told, in transcripts/: behind "$ " a line for the shell,
// then what it prints, "! " before errors, and the exit code where there is one.

namespace ov::cli {
namespace {

class Transcript : public Cli, public ::testing::WithParamInterface<const char*> {
protected:
    std::string told(const std::string& line) const {
        const std::string settings = settings_.folder().native();
        const std::string start = "cd '" + root() + "'; SETTINGS='" + settings +
                                  "'; ovsearch() { '" OV_SEARCH_PROGRAM
                                  "' --settings \"$SETTINGS\" \"$@\"; }; ";
        const auto [exitCode, output, errors] = tests::runProgram(
            "/bin/sh", {.arguments = {"-c", start + line}, .environment = {{"LC_ALL", "C"}}});
        std::string all = output + std::regex_replace(errors, std::regex("([^\n]*\n)"), "! $1");
        for (const auto& [place, name] : {std::pair(root(), "STORE"),
                                          {store_.folder().filename().native(), "STORE"},
                                          {settings, "SETTINGS"}})
            for (std::size_t at = 0; (at = all.find(place, at)) != std::string::npos;)
                all.replace(at, place.size(), name);
        EXPECT_FALSE(std::regex_search(all, std::regex("(^|\n)(#|[$] )"))) << "as if it was typed";
        return all + (exitCode == 0 ? "" : "[" + std::to_string(exitCode) + "]\n");
    }
};

// OV_KEEP_LOOKS=1 writes them anew; read what changed before it goes in.
TEST_P(Transcript, IsAsItWasLookedThrough) {
    addThree();
    const std::string file = OV_SOURCE_DIR "/tests/cli/transcripts/"s + GetParam() + ".txt";
    std::ifstream stream(file);
    std::string was;
    std::string now;
    for (std::string line; std::getline(stream, line);) {
        was += line + "\n";
        if (line.starts_with("$ "))
            now += line + "\n" + told(line.substr(2));
        else if (line.starts_with("#"))
            now += line + "\n";
    }
    stream.close();
    EXPECT_NE(now, "") << file;
    if (std::getenv("OV_KEEP_LOOKS") != nullptr)
        std::ofstream(file) << now;
    else
        EXPECT_EQ(now, was);
}

INSTANTIATE_TEST_SUITE_P(Of, Transcript,
                         ::testing::Values("catalogue", "criteria", "errors", "explained", "export",
                                           "machine", "usage"),
                         [](const auto& one) { return std::string(one.param); });

} // namespace
} // namespace ov::cli
