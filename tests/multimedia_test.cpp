// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/modMultimedia.h"
#include "recording_media.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace ov::modMultimedia {
namespace {

using tests::RecordingMedia;
using Commands = std::vector<std::string>;
using Answers = std::map<std::string, RecordingMedia::Answer>;

struct Case {
    const char* name;
    Answers answers;
    std::function<std::string()> call; // numbers as text
    Commands sent;
    std::string result;
};

template <typename Query>
std::function<std::string()> number(Query query) {
    return [query] { return std::to_string(query("PBWave")); };
}

const std::vector<Case>& cases() {
    static const std::vector<Case> table = {
        {"a refused command",
         {{"hello", {261, ""}}},
         [] { return MciCommand("hello"); },
         {"hello"},
         "Not understood."},
        {"a failure without words",
         {{"hello", {9999, ""}}},
         [] { return MciCommand("hello"); },
         {"hello"},
         "media error 9999"},
        {"open",
         {},
         [] { return MciOpen("PBWave", "\\long name.WAV", "waveaudio"); },
         {"open \\LONGNA~1.WAV type waveaudio Alias PBWave"},
         ""},
        {"open what is missing",
         {{"open  type waveaudio Alias PBWave", {275, ""}}},
         [] { return MciOpen("PBWave", "\\gone.WAV", "waveaudio"); },
         {"open  type waveaudio Alias PBWave"},
         "No file."},
        {"stop refused",
         {{"stop PBWave", {261, ""}}},
         [] { return MciStop("PBWave"); },
         {"stop PBWave"},
         "Not understood."},
        {"seek", {}, [] { return MciSeek("PBWave", -7); }, {"seek PBWave to -7"}, ""},
        {"seek and play",
         {{"play PBWave", {261, ""}}},
         [] { return MciSeekAndPlay("PBWave", 1500); },
         {"seek PBWave to 1500", "play PBWave"},
         ""},
        {"no play after a refused seek",
         {{"seek PBWave to 9", {275, ""}}},
         [] { return MciSeekAndPlay("PBWave", 9); },
         {"seek PBWave to 9"},
         "No file."},
        {"play from the position to the end; the output's refusal does not count",
         {{"set PBWave output -1", {261, ""}},
          {"status PBWave length", {0, "2000"}},
          {"status PBWave position", {0, "700"}}},
         [] { return MciPlay("PBWave", -1, -1, -1); },
         {"set PBWave output -1", "status PBWave length", "status PBWave position",
          "play PBWave from 700 to 2000"},
         ""},
        {"play from the end starts over",
         {{"status PBWave length", {0, "2000"}}, {"status PBWave position", {0, "2000"}}},
         [] { return MciPlay("PBWave", 3, -1, 1000); },
         {"set PBWave output 3", "status PBWave length", "status PBWave position",
          "play PBWave from 0 to 1000"},
         ""},
        {"play a stretch; the answer is that of play",
         {{"status PBWave length", {0, "2000"}}, {"play PBWave from 5 to 10", {275, ""}}},
         [] { return MciPlay("PBWave", 0, 5, 10); },
         {"set PBWave output 0", "status PBWave length", "play PBWave from 5 to 10"},
         "No file."},
        {"play what does not answer",
         {{"status PBWave length", {261, ""}}, {"status PBWave position", {261, ""}}},
         [] { return MciPlay("PBWave", -1, -1, -1); },
         {"set PBWave output -1", "status PBWave length", "status PBWave position",
          "play PBWave from 0 to -1"},
         ""},
        {"position of what is not open",
         {{"status PBWave position", {275, "77"}}},
         number(MciGetPosition),
         {"status PBWave position"},
         "-1"},
        {"a number with a tail, rounded half to even",
         {{"status PBWave length", {0, " 12.5 ms"}}},
         number(MciGetLength),
         {"status PBWave length"},
         "12"},
        {"no number",
         {{"status PBWave speed", {0, "fast"}}},
         number(MciGetSpeed),
         {"status PBWave speed"},
         "0"},
        {"length in milliseconds",
         {{"status PBWave length", {0, "2020"}}, {"set PBWave time format frames", {261, ""}}},
         number(MciGetLengthMs),
         {"set PBWave time format ms", "status PBWave length", "set PBWave time format frames"},
         "2020"},
        {"no milliseconds, nothing more",
         {{"set PBWave time format ms", {261, ""}}},
         number(MciGetLengthMs),
         {"set PBWave time format ms"},
         "-1"},
        {"rate",
         {{"status PBWave length", {0, "2000"}}},
         number(MciGetRate),
         {"set PBWave time format ms", "status PBWave length", "set PBWave time format frames",
          "status PBWave length"},
         "1000"},
        {"rate of nothing",
         {{"status PBWave length", {0, "0"}}},
         number(MciGetRate),
         {"set PBWave time format ms", "status PBWave length", "set PBWave time format frames",
          "status PBWave length"},
         "-1"},
        {"mode of several words",
         {{"status PBWave mode", {0, "not ready"}}},
         [] { return MciGetMode("PBWave"); },
         {"status PBWave mode"},
         "not ready"},
        {"a mode that fills the field ends where its last character comes first",
         {{"status PBWave mode", {0, "playing" + std::string(120, '.') + "y"}}},
         [] { return MciGetMode("PBWave"); },
         {"status PBWave mode"},
         "pla"}};
    return table;
}

TEST(Multimedia, SendsTheseCommands) {
    for (const Case& test : cases()) {
        SCOPED_TRACE(test.name);
        RecordingMedia media;
        media.answers = test.answers;
        media.errors = {{261, "  Not understood. "}, {275, "No file."}};
        media.shortPaths = {{"\\long name.WAV", "\\LONGNA~1.WAV"}};
        EXPECT_EQ(test.call(), test.result);
        EXPECT_EQ(media.sent, test.sent);
        for (std::size_t i = 0; i < media.sent.size(); ++i) {
            EXPECT_EQ(media.fields[i].size(), 128U);
            EXPECT_EQ(media.replySizes[i], media.sent[i].starts_with("status") ? 128U : 0U);
        }
        EXPECT_TRUE(media.errorSize == 0 || media.errorSize == 128);
        EXPECT_TRUE(media.pathSize == 0 || media.pathSize == 255);
    }
}

TEST(Multimedia, CutsCommandsAt128Characters) {
    RecordingMedia media;
    const std::string ascii(130, 'x');
    std::string umlauts;
    for (int i = 0; i < 130; ++i)
        umlauts += "ü";
    MciCommand(ascii);
    MciCommand(umlauts);
    EXPECT_EQ(media.fields, (Commands{ascii.substr(0, 128), umlauts.substr(0, 256)}));
    EXPECT_EQ(MciOpen("PBWave", std::string(300, 'y'), "waveaudio"), "");
}

TEST(Multimedia, TracksOneAlias) {
    RecordingMedia media;
    media.answers = {{"status Mine length", {0, "2000"}}};
    int window = 0;
    trackedAlias() = {"Mine", &window, 0, 0};
    MciPlay("Other", -1, 1, 2);
    MciPlay("Mine", -1, 2000, 900);
    EXPECT_EQ(trackedAlias().from, 0);
    EXPECT_EQ(trackedAlias().to, 900);
    MciClose("Other");
    media.answers["close Mine"].code = 261;
    MciClose("Mine");
    EXPECT_TRUE(media.killedTimers.empty());
    media.answers.clear();
    MciClose("Mine");
    EXPECT_EQ(media.killedTimers, (std::vector<std::pair<void*, std::uint32_t>>{{&window, 999}}));
    trackedAlias() = {};
}

} // namespace
} // namespace ov::modMultimedia
