// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/commands/catalogue_command.h"
#include "cli/terminal_interface.h"
#include "tests/catalogue/postgres_server.h"
#include "tests/cli/cli_fixture.h"

namespace ov::cli {

namespace {

class CatalogueCommand : public Cli {
protected:
    CatalogueCommand() { addThree(); }

    ProgramResult catalogue(const Texts& arguments) const {
        return run(plus(plus({"catalogue"}, arguments), {"--to", file()}));
    }
    ProgramResult update() const { return catalogue({"update", root()}); }
    ProgramResult findIn(const Texts& options) const {
        return find(plus({"--catalogue", file()}, options));
    }
    std::string file() const { return place_.empty() ? settings_.native("catalogue.db") : place_; }

    std::string place_; // in place of the file
};

} // namespace

TEST_F(CatalogueCommand, AnswersAsTheStoreDoes) {
    EXPECT_EQ(update().exitCode, 0);
    const std::vector<Texts> searches = {{"--format", "paths"},
                                         {"prio:high", "author:müller"},
                                         {"author:nobody"},
                                         {"--count"},
                                         {"--count-by", "author"},
                                         {"--count-by", "dictated", "--sum", "length"},
                                         {"--count", "--limit", "2"},
                                         {"--sort", "author", "--limit", "1"},
                                         {"--max-depth", "1", "--strict"},
                                         {"--quiet", "author:zeh"}};
    for (const Texts& options : searches) {
        const ProgramResult walked = find(options);
        const ProgramResult asked = findIn(options);
        EXPECT_EQ(asked.output, walked.output) << joined(options);
        EXPECT_EQ(asked.exitCode, walked.exitCode) << joined(options);
        EXPECT_EQ(holds(asked.errors, "as of 20"), options.front() != "--quiet") << asked.errors;
    }
}

// In a file, and on a server.
TEST_F(CatalogueCommand, TellsChecksAndForgets) {
    tests::PostgresServer& server = tests::PostgresServer::get();
    for (const std::string& place : {std::string(), server.place(server.newDatabase())}) {
        place_ = place;
        EXPECT_EQ(catalogue({"status"}).exitCode, 3);
        EXPECT_EQ(update().exitCode, 0);
        for (const Texts& options :
             {Texts{"prio:high", "author:müller"}, Texts{"--count-by", "author"}})
            EXPECT_EQ(findIn(options).output, find(options).output);
        EXPECT_PRED2(holds, catalogue({"status"}).output,
                     root() + "/: 3 dictations in 3 folders, as of 20");
        EXPECT_EQ(catalogue({"check", root()}).exitCode, 0);
        store_.add("ward/new.WAV");
        const ProgramResult checked = catalogue({"check", root()});
        EXPECT_EQ(checked.exitCode, 1);
        EXPECT_PRED2(holds, checked.errors, "ward/: holds other dictations or folders");
        EXPECT_PRED2(holds, update().output, "2 dictations written");
        EXPECT_EQ(catalogue({"check", root()}).exitCode, 0);
        EXPECT_EQ(catalogue({"forget", root()}).exitCode, 0);
        EXPECT_EQ(catalogue({"status"}).exitCode, 1);
        EXPECT_EQ(findIn({}).exitCode, 3);
        fs::remove(store_.native("ward/new.WAV"));
    }
    expectRefused({"find", "--catalogue", "postgresql://u:hush@h/db", root()}, 3,
                  "leave the password out of the address");
}

TEST_F(CatalogueCommand, AnswersWithoutTheStore) {
    update();
    const ProgramResult before = findIn({});
    fs::rename(root(), root() + "-aside");
    EXPECT_EQ(findIn({}).output, before.output);
    EXPECT_EQ(update().exitCode, 3);
    EXPECT_EQ(catalogue({"check", root()}).exitCode, 3);
    fs::rename(root() + "-aside", root());
    EXPECT_EQ(findIn({"author:zeh"}).exitCode, 0);
    const ProgramRun seen{.onTerminal = true};
    EXPECT_PRED2(holds, run({"catalogue", "update", root(), "--to", file()}, seen).output,
                 "\r1 folder, 0 dictations written\x1B[K\r");
}

// Until it is told to end; what it has seen by then is there.
TEST_F(CatalogueCommand, FollowsTheStore) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const std::string name = std::to_string(signal) + "/later.WAV";
        const ProgramRun how{.steps = {{"in " + root(), [&] { store_.add(name); }}},
                             .interruptAt = "1 dictation written",
                             .interruptBy = signal};
        EXPECT_EQ(run({"catalogue", "update", root(), "--watch", "--to", file()}, how).exitCode,
                  -signal);
        EXPECT_PRED2(holds, findIn({"--format", "paths"}).output, name);
    }
}

TEST_F(CatalogueCommand, IsAmongTheUsersDataUnlessNamed) {
    EXPECT_EQ(run({"catalogue", "update", root()}).exitCode, 0);
    EXPECT_TRUE(fs::exists(settings_.native("catalogue.db")));
    EXPECT_EQ(find({"--catalogue", "own", "author:zeh"}).exitCode, 0);
}

// What the catalogue was asked then has no answer, and says nothing about the store.
TEST_F(CatalogueCommand, TellsNothingOnceItIsInterrupted) {
    update();
    store_.add("ward/new.WAV");
    std::signal(SIGINT, SIG_DFL); // whatever the tests were started with
    TerminalInterface terminal;
    std::raise(SIGINT);
    testing::internal::CaptureStdout();
    for (const CatalogueOptions& options :
         {CatalogueOptions{CatalogueAction::check, root(), file()},
          {CatalogueAction::status, "", file()}})
        EXPECT_EQ(runCatalogue(options, terminal), ExitCode::interrupted);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

} // namespace ov::cli
