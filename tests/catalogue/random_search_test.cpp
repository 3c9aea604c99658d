// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/field_values.h"
#include "dictation/search/matching.h"
#include "tests/catalogue/postgres_fixture.h"
#include "tests/catalogue/random_searches.h"

#include <map>

namespace ov::catalogue {

namespace {

// How many hits have each value, as a person reads it.
using Counts = std::map<std::string, std::int64_t>;

class RandomSearch : public AtHome {
protected:
    RandomSearch() {
        static const Texts folders = {"",       "Ward 1/", "Ward 1/ERL/", "Müller_%/",
                                      "a/b/c/", "\xFC/",   "it's/",       "_old/"};
        for (int i = 0; i < 400; ++i)
            store.add(
                folders[static_cast<std::size_t>(random.below(static_cast<int>(folders.size())))] +
                random.name(i));
        EXPECT_TRUE(update(store.directory()).status.ok());
        catalogue = open(Access::ask);
        modDictation::search(allOf(store.directory()), all);
    }

    static Counts counted(Catalogue& catalogue, const Search& what, std::int32_t field) {
        Counts counts;
        platform::Status status;
        SearchReport report;
        const auto known = storeOf(catalogue, what.root, status);
        if (known)
            status = countHits(
                catalogue, *known, what, field,
                [&](const modDictation::Dictation& one, std::int64_t count) {
                    counts[key(field, one)] += count;
                    return true;
                },
                report);
        EXPECT_TRUE(status.ok()) << status.description();
        return counts;
    }
    // As the walk does, over what it finds without criteria.
    Texts matching(const Search& what, Counts& counts, std::int32_t field) const {
        Texts paths;
        modDictation::PreparedCriteria criteria(what.criteria, platform::now());
        std::string buffer;
        for (std::int32_t i = 1; i <= all.size(); ++i) {
            const modDictation::Dictation one = all[i];
            if (!modDictation::MatchDictation(one.directory,
                                              modDictation::dictationName(one.name, buffer),
                                              criteria, what.all))
                continue;
            paths.push_back(pathOf(one));
            ++counts[key(field, one)];
        }
        return paths;
    }
    void expectAsMatching(const Search& what) const {
        SearchReport report;
        Counts counts;
        ASSERT_EQ(asked(*catalogue, what, report), matching(what, counts, 0)) << told(what);
    }
    // Dates are counted by day.
    static std::string key(std::int32_t field, const modDictation::Dictation& one) {
        const std::string shown = modDictation::shownValue(field, one);
        const auto typed = modDictation::typedValue(field, one);
        const auto* date = typed ? std::get_if<modDictation::DateSerial>(&*typed) : nullptr;
        return date != nullptr ? std::to_string(date->day) : shown;
    }

    const std::uint32_t seed = std::random_device()();
    Random random{seed};
    std::unique_ptr<Catalogue> catalogue;
    modDictation::DictationList all; // as the walk finds them
};

// Whatever the country of the server.
INSTANTIATE_TEST_SUITE_P(
    In, RandomSearch,
    ::testing::Values(Home{"AFile"}, Home{"C", [] { return placeOnServer("LOCALE 'C'"); }},
                      Home{"CUtf8", [] { return placeOnServer("LOCALE 'C.UTF-8'"); }},
                      Home{"German",
                           [] {
                               return placeOnServer("LOCALE_PROVIDER icu ICU_LOCALE 'de-DE'"
                                                    " LOCALE 'C.UTF-8'");
                           }}),
    ::testing::PrintToStringParamName());

} // namespace

TEST_P(RandomSearch, AnswersAsTheWalkDoes) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    int withHits = 0;
    for (int i = 0; i < 100; ++i) {
        const Search what =
            random.search(random.rarely() ? store.directory("Ward 1") : store.directory());
        SearchReport report;
        const Texts found = asked(*catalogue, what, report);
        ASSERT_EQ(found, walked(what)) << told(what);
        withHits += found.empty() ? 0 : 1;
    }
    EXPECT_GT(withHits, 10);
}

TEST_P(RandomSearch, MatchesAndCountsAsTheCriteriaSay) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    int withHits = 0;
    for (int i = isOnServer() ? 1000 : 0; i < 1500; ++i) {
        Search what = random.search(store.directory());
        what.depth = -1;
        what.limit = 999999;
        const std::int32_t field = random.between(0, modDictation::searchFieldCount - 1);
        SearchReport report;
        Counts counts;
        const Texts expected = matching(what, counts, field);
        ASSERT_EQ(asked(*catalogue, what, report), expected) << told(what);
        ASSERT_EQ(counted(*catalogue, what, field), counts) << told(what) << "\nby " << field;
        withHits += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(withHits, 30);
}

// Every criterion by itself: what the tables say of it has to be all that the matcher says.
TEST_P(RandomSearch, AnswersForEachFieldOperatorAndText) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Search what = allOf(store.directory());
    for (int i = isOnServer() ? 7 * 27 * 33 : 0; i < 8 * 27 * 33; ++i) {
        what.criteria = {{i % 27, 1 + i / 27 % 33, random.asked(), random.asked()}};
        ASSERT_NO_FATAL_FAILURE(expectAsMatching(what));
    }
    namespace id = modDictation::field_id;
    namespace op = modDictation::operator_id;
    for (const std::string& text : values)
        for (const auto field : {id::folder, id::author, id::number})
            for (const auto operatorId : {op::contains, op::containsNot, op::is}) {
                what.criteria = {{field, operatorId, text, ""}};
                ASSERT_NO_FATAL_FAILURE(expectAsMatching(what));
            }
}

TEST_P(RandomSearch, TellsWhatIsLeftOut) {
    store.add("back\\slash.WAV").addFolder("fol\\der");
    EXPECT_TRUE(update(store.directory()).status.ok());
    const auto later = open(Access::ask);
    Search what = allOf(store.directory());
    for (const int depth : {-1, 0, 1}) {
        what.depth = depth;
        SearchReport report;
        EXPECT_EQ(asked(*later, what, report), walked(what));
        modDictation::DictationList hits;
        const SearchReport walk = modDictation::search(what, hits);
        // A folder below the depth that no path can name counts as one or as the other.
        EXPECT_EQ(report.namesSkipped + report.foldersTooDeep,
                  walk.namesSkipped + walk.foldersTooDeep);
    }
    SearchReport report;
    what.root = store.directory("nowhere");
    EXPECT_PRED2([](const Texts& said, const char* text) { return said.front().ends_with(text); },
                 asked(*later, what, report), "is not in the catalogue");
}

} // namespace ov::catalogue
