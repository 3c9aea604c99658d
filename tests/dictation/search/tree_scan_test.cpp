// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_record.h"
#include "dictation/search/criterion.h"
#include "dictation/search/search.h"
#include "dictation/search/tree_scan.h"
#include "platform/text.h"
#include "support/language/modLanguage.h"
#include "tests/fake_host.h"
#include "tests/recording_interface.h"
#include "tests/settings_fixture.h"

namespace ov::modDictation {
namespace {

using Texts = std::vector<std::string>;

constexpr std::int32_t noLimit = 999999;

// Each folder is listed when the walk comes to it.
const SearchMeans notAhead{.aheadBytes = 0};

class TreeScan : public tests::SettingsTest {
protected:
    // Relative to the store, native, sorted.
    Texts search(const Texts& criteria = {}, std::int32_t maxDepth = 50,
                 std::int32_t limit = noLimit) {
        Search what{store_.directory(), {}, true, maxDepth, limit};
        for (const std::string& text : criteria)
            what.criteria.push_back(ParseCriteriaString(text));
        list_.clear();
        report_ = modDictation::search(what, list_);
        Texts paths;
        for (std::int32_t i = 1; i <= list_.size(); ++i) {
            paths.push_back(pathOf(list_[i]).substr(store_.directory().size()));
            std::replace(paths.back().begin(), paths.back().end(), '\\', '/');
        }
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    // By the function of the thread.
    std::int32_t searchBy(const Texts& criteria, bool storeFullPath = true) {
        list_.clear();
        return SearchDictations(store_.directory(), criteria, 50, list_, storeFullPath, true,
                                noLimit);
    }

    tests::TemporaryStore store_;
    DictationList list_;
    SearchReport report_;
};

std::string criterion(std::int32_t field, std::int32_t operatorId, const char* value) {
    return BuildCriteriaString(field, operatorId, value, "");
}

TEST_F(TreeScan, FindsDictationsAndNothingElse) {
    store_.add("a.WAV").add("b.wav").add("Ward/c.Wav").add("Ward/ERL/d.WAV").add(".hidden/e.wav");
    store_.add("x.wave").add("wav").add("notes.txt");
    store_.add("_old/f.WAV").add("Ward/_old/g.WAV").add("_g.WAV");
    store_.add("x.WAV/inside.WAV").addPipe("pipe.WAV").addLink("nowhere.WAV", "missing");
    store_.addLink("linked.WAV", "a.WAV").addFolder("empty");
    EXPECT_EQ(search(), (Texts{".hidden/e.wav", "Ward/ERL/d.WAV", "Ward/c.Wav", "_g.WAV", "a.WAV",
                               "b.wav", "linked.WAV", "x.WAV/inside.WAV"}));
    EXPECT_TRUE(report_.problems.empty());
}

TEST_F(TreeScan, MatchesByNameAndFolder) {
    store_.add("Ward3/2$ROH@@5$HOCH.WAV").add("Ward3/2$ROH.WAV").add("Ward4/2$@@5$2.WAV");
    EXPECT_EQ(search({criterion(15, 25, "3")}),
              (Texts{"Ward3/2$ROH@@5$HOCH.WAV", "Ward4/2$@@5$2.WAV"}));
    const Texts criteria = {criterion(15, 25, "3"), criterion(1, 17, "ward3")};
    EXPECT_EQ(search(criteria), (Texts{"Ward3/2$ROH@@5$HOCH.WAV"}));
    EXPECT_EQ(report_.matched, (std::vector<std::int64_t>{2, 2})) << "each one alone";
    EXPECT_EQ(searchBy(criteria), 1);
    EXPECT_EQ(list_[1].directory, store_.directory("Ward3"));
    EXPECT_EQ(searchBy({criteria[0]}, false), 2);
    EXPECT_EQ(list_[1].directory, "") << "bare names";
    list_.clear();
    EXPECT_EQ(SearchDictations(store_.directory(), criteria, 50, list_, true, false, 2), 2);
    EXPECT_EQ(SearchDictations(store_.directory(), criteria, 0, list_, true, false, 3), 0);
    EXPECT_EQ(search({""}).size(), 3U) << "a single empty criterion is satisfied by all";
}

TEST_F(TreeScan, LimitIsReachedByOneHitTooMany) {
    store_.add("root.WAV").addDeep(60, "d.WAV");
    for (const std::int32_t limit : {1, 60, 61}) {
        EXPECT_EQ(std::ssize(search({}, noDepthLimit, limit)), limit);
        EXPECT_EQ(report_.limitReached, limit < 61) << limit;
    }
}

TEST_F(TreeScan, FollowsLinksButNotInCircles) {
    tests::TemporaryStore outside;
    outside.add("o.WAV");
    store_.add("a/x.WAV").add("b/c/y.WAV");
    store_.addLink("a/up", "..").addLink("a/self", ".").addLink("b/c/root", store_.native(""));
    store_.addLink("out", outside.native("")).addLink("again", "a");
    // "again" is another way into "a", not a circle.
    EXPECT_EQ(search({}, noDepthLimit),
              (Texts{"a/x.WAV", "again/x.WAV", "b/c/y.WAV", "out/o.WAV"}));
}

TEST_F(TreeScan, HostileNames) {
    store_.add("2$@@14$M\xFCller.WAV").add("2$@@14$a\nb\x1B[31m.WAV");
    store_.add("2$ba\\ck.WAV").add("folder\\odd/z.WAV").add("ok/z.WAV");
    EXPECT_EQ(search().size(), 3U);
    EXPECT_EQ(report_.namesSkipped, 2);
    EXPECT_NE(read("Log/OVSearch_.log").find("backslash"), std::string::npos);
    EXPECT_EQ(search({criterion(5, 18, "MÜLLER")}), (Texts{"2$@@14$M\xFCller.WAV"}))
        << "read as Windows-1252, the path keeps its bytes";
    EXPECT_TRUE(platform::fileExists(pathOf(list_[1])));
    for (int i = 0; i < 99; ++i)
        store_.add("back\\slash" + std::to_string(i) + ".WAV");
    search();
    EXPECT_EQ(report_.namesSkipped, 101);
    EXPECT_EQ(report_.problems.size(), 100U) << "many do not fill the log";
}

TEST_F(TreeScan, FoldersThatAreNotUtf8) {
    store_.add("\xC4rzte/x.WAV").add("M\xFCller/ERL/x.WAV").add("Möller/x.WAV");
    const tests::StartedPlugIn plugIn;
    EXPECT_EQ(search({criterion(1, 17, "müller\\erl")}), Texts{"M\xFCller/ERL/x.WAV"});
    EXPECT_EQ(search({criterion(1, 17, "ö")}), Texts{"Möller/x.WAV"});
    for (const std::string& call : plugIn.host->calls)
        EXPECT_TRUE(platform::isValidUtf8(call)) << "the host gets text: " << call;
}

// What goes away in mid-search is a loss where what it lay in goes too.
TEST_F(TreeScan, FoldersThatVanish) {
    const std::tuple<const char*, const char*, const char*, std::int64_t, bool> cases[] = {
        // the folder that the walk is about to read, what goes, what comes instead, unreadable
        // folders, whether the root has vanished
        {"\\s\\a\\b\\", "s/a/b", nullptr, 0, false},
        {"\\s\\a\\b\\", "s/a", nullptr, 1, false},
        {"\\s\\a\\b\\", "s/a", "s/a/other.WAV", 1, false},
        {"\\s\\", "s", nullptr, 1, true},
        {"\\s\\a\\b\\", "s", "s/a/b/other.WAV", 1, true},
        {"\\s\\a\\b\\c\\", "s", "s/other.WAV", 1, true}};
    for (const auto& [at, gone, instead, unreadable, rootVanished] : cases) {
        SCOPED_TRACE(std::string(at) + " " + gone);
        tests::TemporaryStore store;
        store.add("s/first.WAV").add("s/a/b/x.WAV").add("s/d/x.WAV").addFolder("s/a/b/c");
        const tests::StartedPlugIn plugIn;
        plugIn.host->onCall = [&, at = at, gone = gone, instead = instead](const auto& call) {
            if (!call.ends_with(at + std::string("\")")))
                return;
            fs::rename(store.folder() / gone, store.folder() / "moved");
            if (instead != nullptr)
                store.add(instead);
        };
        list_.clear();
        report_ = modDictation::search({store.directory("s"), {}}, list_, notAhead);
        EXPECT_EQ(report_.foldersUnreadable, unreadable);
        EXPECT_EQ(report_.rootVanished, rootVanished);
        EXPECT_TRUE(rootVanished || list_.size() == 2) << "the rest is found";
    }
}

TEST_F(TreeScan, StopKeepsWhatWasFound) {
    for (int i = 0; i < 200; ++i)
        store_.add(std::to_string(i) + ".WAV");
    store_.addFolder("empty");
    for (const char* folder : {"", "empty"}) { // also where there is nothing
        std::stop_source stop;
        const tests::RecordingInterface person([&] { stop.request_stop(); });
        list_.clear();
        report_ = modDictation::search({store_.directory(folder), {}}, list_, {stop.get_token()});
        EXPECT_LT(list_.size(), 200);
        EXPECT_TRUE(report_.stopped) << folder;
    }
    EXPECT_TRUE(search().size() == 200 && !report_.stopped);
    {
        const tests::RecordingInterface person([] { requestSearchAbort(); });
        EXPECT_LT(searchBy({""}), 200);
    }
    requestSearchAbort();
    EXPECT_EQ(searchBy({""}), 0) << "a stop before the start";
    EXPECT_EQ(searchBy({""}), 200);
}

TEST_F(TreeScan, SecondSearchInsideTheFirstDoesNothing) {
    store_.add("a.WAV").add("b/c.WAV");
    std::int32_t inner = -1;
    const tests::RecordingInterface person([&] {
        DictationList other;
        inner = SearchDictations(store_.directory(), {}, 50, other, true, true, noLimit);
        EXPECT_TRUE(isSearchRunning());
    });
    EXPECT_TRUE(searchBy({""}) == 2 && inner == 0 && !isSearchRunning());
}

// What the host's progress display is told, with "@" for the store.
class Progress : public TreeScan {
public:
    Progress() { modLanguage::SetLanguage(9, 0); }
    ~Progress() override { modLanguage::reset(); }

protected:
    Texts callsOfSearch(std::int32_t maxDepth = 50, std::int32_t limit = noLimit) {
        search({}, maxDepth, limit);
        Texts calls = plugIn_.host->takeCalls();
        for (std::string& call : calls)
            if (const std::size_t at = call.find(store_.directory()); at != std::string::npos)
                call.replace(at, store_.directory().size() - 1, "@");
        return calls;
    }

    tests::StartedPlugIn plugIn_;
};

TEST_F(Progress, CountsTheFoldersOfTheRootAndNamesAll) {
    const std::string inRoot = R"(PI_ProgressText(&"@\"))";
    const std::string counting = R"(PI_ProgressInit(&0, &1, &0, &"Counting subfolders…"))";
    const std::string end = "PI_ProgressClear()";
    store_.add("x.WAV").addFolder("_old");
    EXPECT_EQ(
        callsOfSearch(),
        (Texts{inRoot, counting, R"(PI_ProgressInit(&0, &0, &0, &"Searching folders…"))", end}));
    store_.add("a/b/x.WAV");
    EXPECT_EQ(callsOfSearch(0), (Texts{inRoot, end})) << "they are too deep";
    EXPECT_EQ(callsOfSearch(50, 1), (Texts{inRoot, end})) << "the root has all that is wanted";
    EXPECT_EQ(callsOfSearch(),
              (Texts{inRoot, counting, R"(PI_ProgressInit(&0, &1, &0, &"Searching folders…"))",
                     R"(PI_ProgressText(&"@\a\"))", R"(PI_ProgressText(&"@\a\b\"))",
                     "PI_ProgressValue(&1)", end}));
    requestSearchAbort();
    searchBy({""});
    EXPECT_EQ(plugIn_.host->takeCalls(), Texts()) << "stopped before it began";
}

TEST_F(Progress, HostThatRefusesEndsTheSearch) {
    store_.add("x.WAV").add("a/x.WAV");
    for (const char* call :
         {"PI_ProgressText", "PI_ProgressInit", "PI_ProgressValue", "PI_ProgressClear"}) {
        plugIn_.host->refused = {call};
        EXPECT_THROW(searchBy({""}), HostError) << call;
        EXPECT_FALSE(isSearchRunning()) << call;
        plugIn_.host->refused.clear();
        EXPECT_EQ(search({}, 0), (Texts{"x.WAV"})) << "the next search counts from the root again";
        EXPECT_EQ(search(), (Texts{"a/x.WAV", "x.WAV"})) << call;
    }
}

} // namespace
} // namespace ov::modDictation
