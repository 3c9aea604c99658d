// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// What the terminal prints for programs. That all of it is as the schema says is looked at by
// .ci/check-json.

#include "tests/cli/cli_fixture.h"

#include <nlohmann/json.hpp>

namespace ov::cli {
namespace {

using nlohmann::json;

class MachineForms : public Cli {
protected:
    // An object for each line.
    static std::vector<json> objects(const ProgramResult& result) {
        std::vector<json> all;
        for (const std::string& line : split(result.output, '\n'))
            all.push_back(json::parse(line));
        return all;
    }
};

TEST_F(MachineForms, ValuesAreThoseOfTheName) {
    const std::tuple<std::string, std::string, json> cases[] = {
        {"@@5$HOCH", "priority", "HOCH"},
        {"@@5$2", "priority", "HOCH"},
        {"@@5$soon", "priority", "soon"},
        {"@@5$", "priority", nullptr},
        {"", "priority", nullptr},
        {"@@99$stop", "status2", "STOP"},
        {"@@17$5", "flags", 5},
        {"@@17$x", "flags", "x"},
        {"@@12$42", "number", 42},
        {"@@12$007", "number", "007"},
        {"@@12$-3", "number", -3},
        {"@@7$24.12.2003 17$05$00", "dictated", "2003-12-24T17:05:00"},
        {"@@7$24.12.2003 00$00$00", "dictated", "2003-12-24T00:00:00"},
        {"@@4$01-02-99", "due", "1999-02-01"},
        {"@@7$soon", "dictated", nullptr},
        {"@@6$01$00$05", "length", 3605},
        {"@@6$long", "length", nullptr},
        {"@@98$D", "marker", "D"},
        {"@@11$'eilig'", "subject", "\"eilig\""},
        {"@@11$M\xFCller", "subject", "Müller"}};
    std::size_t number = 100;
    for (const auto& [part, key, value] : cases)
        store_.add(std::to_string(number++) + "/2$ROH" + part + ".WAV");
    const ProgramRun german{.environment = {{"LC_ALL", "de_DE.UTF-8"}}};
    const Texts lines = {"--format", "jsonl"};
    const Texts csv = {"--format", "csv", "--raw", "--separator", "tab"};
    number = 100;
    for (const auto& [part, key, value] : cases) {
        const Texts search = {"find", store_.native(std::to_string(number++)), "--columns",
                              key + ",status"};
        for (const ProgramRun& how : {ProgramRun(), german}) {
            const json values = objects(run(plus(search, lines), how)).at(0)["values"];
            EXPECT_EQ(values.value(key, json()), value) << part << how.environment.size();
            EXPECT_EQ(values["status"], "ROH");
            const std::string cell = value.is_string() ? value.get<std::string>()
                                     : value.is_null() ? ""
                                                       : value.dump();
            const std::string quoted = holds(cell, "\"") ? R"("""eilig""")" : cell;
            EXPECT_EQ(run(plus(search, csv), how).output,
                      key + "\tstatus\r\n" + quoted + "\tROH\r\n");
        }
    }
}

TEST_F(MachineForms, PathsOfAllBytesComeBack) {
    store_.add("ward/Zo\xC3\xAB.WAV");
    std::map<std::string, std::string> expected = {{root() + "/ward/Zoë.WAV", "none"}};
    for (const char* before : {"", "M", "Mu"}) { // of every length
        store_.add(before + "\xFB\xFC.WAV"s);
        expected[root() + "/" + before + "ûü.WAV"] = tests::shellOutput(
            "printf %s '" + root() + "/" + before + "\xFB\xFC.WAV' | base64 -w0");
    }
    std::map<std::string, std::string> bytes; // by path
    for (const json& object : objects(find({"--format", "jsonl", "--columns", "path"})))
        bytes[object["path"]] = object.value("path_bytes", "none");
    EXPECT_EQ(bytes, expected);
    const auto inWard = [this](const char* columns, const Texts& form) {
        return run(plus({"find", store_.native("ward"), "--columns", columns, "--format"}, form))
            .output;
    };
    EXPECT_EQ(inWard("author,path,length", {"csv", "--raw"}),
              "author,path,path_bytes,length\r\n," + store_.native("ward/Zo\xC3\xAB.WAV") +
                  ",,\r\n");
    for (const Texts& form : {Texts{"csv"}, Texts{"csv", "--raw"}})
        EXPECT_EQ(inWard("author", form), "author\r\n\"\"\r\n")
            << "readers pass over an empty line";
    EXPECT_EQ(inWard("name,26,NAME", {"json"}), inWard("name", {"json"}))
        << "an object has each key once";
}

TEST_F(MachineForms, ShowTellsAllFields) {
    store_.add(marked).add(highPriority);
    const std::string second = store_.native(highPriority);
    const std::vector<json> shown =
        objects(run({"show", store_.native(marked), second, "--format", "jsonl"}));
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0]["raw"], json({{"status", "WAV"},
                                     {"author", "öztürk"},
                                     {"marker", "D"},
                                     {"dictated", "30-12-2025"},
                                     {"@@23$", "more"},
                                     {"@@31$", "odd"}}));
    EXPECT_EQ(shown[0]["priority"], "Normal") << "what is shown where the name says nothing";
    EXPECT_FALSE(shown[0]["values"].contains("priority"));
    EXPECT_EQ(shown[1]["values"]["subject"], "\"eilig\", heute");
    EXPECT_EQ(json::parse(run({"show", second, "--format", "json"}).output),
              json::array({shown[1]}));
    const ProgramResult none = run({"show", second + "x", root(), "--format", "json"});
    EXPECT_EQ(none.output, "[]\n") << "one array, whatever could be shown";
    EXPECT_EQ(none.exitCode, 3);
}

} // namespace
} // namespace ov::cli
