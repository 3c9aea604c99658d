// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/demo_store.h"
#include "dictation/dictation_record.h"
#include "platform/files.h"
#include "settings_fixture.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <map>
#include <set>
#include <sys/resource.h>
#include <vector>

namespace ov::cli {
namespace {

namespace fs = std::filesystem;

class DemoStore : public tests::SettingsTest {
protected:
    DemoOptions options(const char* name, int count) const {
        DemoOptions result;
        result.directory = path(name);
        result.count = count;
        result.today = {2026, 11, 21, 3, 30, 0};
        return result;
    }

    // Relative path and content of every file; the path alone of every folder.
    std::map<std::string, std::string> content(const char* name) const {
        std::map<std::string, std::string> result;
        for (const auto& entry : fs::recursive_directory_iterator(folder() / name)) {
            std::string& bytes = result[fs::relative(entry.path(), folder() / name).native()];
            if (!entry.is_regular_file())
                continue;
            const std::string file = platform::fromNativePath(entry.path().native());
            EXPECT_TRUE(platform::readFile(file, bytes).ok()) << file;
        }
        return result;
    }

    std::vector<fs::path> sounds(const char* name) const {
        std::vector<fs::path> result;
        for (const auto& entry : fs::recursive_directory_iterator(folder() / name))
            if (entry.is_regular_file())
                result.push_back(entry.path());
        return result;
    }
};

TEST_F(DemoStore, SameSeedSameBytes) {
    DemoOptions later = options("b", 40);
    later.today.hour = 18;
    DemoOptions otherSeed = options("c", 40);
    otherSeed.seed = 2;
    ASSERT_TRUE(writeDemoStore(options("a", 40)).status.ok());
    ASSERT_TRUE(writeDemoStore(later).status.ok());
    ASSERT_TRUE(writeDemoStore(otherSeed).status.ok());
    EXPECT_TRUE(content("a") == content("b"));
    EXPECT_FALSE(content("a") == content("c"));
}

TEST_F(DemoStore, EveryFileIsSoundAsLongAsItsNameSays) {
    ASSERT_EQ(writeDemoStore(options("store", 120)).written, 120);
    std::set<int> formats;
    int told = 0;
    for (const fs::path& path : sounds("store")) {
        SCOPED_TRACE(path);
        EXPECT_LE(path.filename().native().size(), 255U);
        SF_INFO info{};
        SNDFILE* sound = sf_open(path.c_str(), SFM_READ, &info);
        ASSERT_NE(sound, nullptr);
        std::vector<short> samples(static_cast<std::size_t>(info.frames * info.channels));
        EXPECT_EQ(sf_readf_short(sound, samples.data(), info.frames), info.frames);
        EXPECT_GT(*std::max_element(samples.begin(), samples.end()), 1000) << "silence";
        sf_close(sound);
        formats.insert(info.format & SF_FORMAT_SUBMASK);

        const std::string name = path.stem().native();
        const auto length = modDictation::findFieldValue(name, "@@6$");
        if (!length)
            continue;
        ++told;
        const std::string seconds = std::to_string(info.frames / info.samplerate);
        EXPECT_EQ(*length, "00$00$" + std::string(2 - seconds.size(), '0') + seconds);
    }
    EXPECT_GT(told, 100);
    EXPECT_EQ(formats.size(), 6U) << "every encoding";
}

// All fields but the last use the general scheme.
const std::vector<int> fields{2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                              13, 14, 16, 17, 20, 91, 92, 95, 98, 99, 23};

// The values of a field in all names of a store, still escaped.
std::string valuesOf(const std::vector<fs::path>& paths, int field) {
    std::string values;
    for (const fs::path& path : paths) {
        const std::string name = path.stem().native();
        if (const auto text = modDictation::findFieldValue(name, modDictation::fieldTag(field)))
            values.append(*text).append("\n");
    }
    return values;
}

TEST_F(DemoStore, ShowsEveryEscape) {
    ASSERT_TRUE(writeDemoStore(options("store", 40)).status.ok());
    std::string general;
    for (std::size_t i = 0; i + 1 < fields.size(); ++i)
        general += valuesOf(sounds("store"), fields[i]);
    for (const char* escape : {"~", "_", "²²", "³³", "%%", "'", "!!", "$#"})
        EXPECT_NE(general.find(escape), std::string::npos) << escape;
    const std::string second = valuesOf(sounds("store"), fields.back());
    for (const char* escape : {"²0", "²1", "²2", "²3", "²4", "²5", "²6", "²7", "²8", "²9", "²A"})
        EXPECT_NE(second.find(escape), std::string::npos) << escape;
}

TEST_F(DemoStore, UsesEveryFieldAndGivesEveryDictationAName) {
    ASSERT_TRUE(writeDemoStore(options("store", 200)).status.ok());
    const std::vector<fs::path> paths = sounds("store");
    for (const int field : fields)
        EXPECT_NE(valuesOf(paths, field), "") << field;
    std::set<fs::path> names;
    for (const fs::path& path : paths)
        EXPECT_TRUE(names.insert(path.filename()).second) << path;
}

TEST_F(DemoStore, HasFinishedEmptyAndUnsearchedFolders) {
    ASSERT_TRUE(writeDemoStore(options("store", 100)).status.ok());
    const auto entries = content("store");
    EXPECT_EQ(entries.count("Klinikum Nord/Innere Medizin/ERL"), 1U);
    EXPECT_TRUE(fs::is_empty(folder() / "store/Klinikum Nord/Neuaufnahme"));
    EXPECT_FALSE(fs::is_empty(folder() / "store/_old/2019"));
}

TEST_F(DemoStore, RefusesAFolderWithContent) {
    fs::create_directory(folder() / "mine");
    write("mine/letter.txt", "keep");
    const DemoResult result = writeDemoStore(options("mine", 5));
    EXPECT_NE(result.status.description().find("mine/: the directory is not empty"),
              std::string::npos)
        << result.status.description();
    EXPECT_EQ(content("mine").size(), 1U);

    const DemoResult file = writeDemoStore(options("mine/letter.txt", 5));
    EXPECT_NE(file.status.description().find("letter.txt"), std::string::npos);
    EXPECT_EQ(content("mine").at("letter.txt"), "keep");
}

TEST_F(DemoStore, StopsWhenAsked) {
    const DemoResult result = writeDemoStore(options("store", 50), [](int done, int total) {
        EXPECT_EQ(total, 50);
        return done < 7;
    });
    EXPECT_TRUE(result.status.ok());
    EXPECT_EQ(result.written, 7);
    EXPECT_EQ(sounds("store").size(), 7U);
}

TEST_F(DemoStore, NamesTheFileThatDidNotFit) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limited{20'000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const DemoResult result = writeDemoStore(options("store", 50));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(result.status.number(), EFBIG);
    EXPECT_NE(result.status.description().find("/store/"), std::string::npos);
    EXPECT_EQ(sounds("store").size(), static_cast<std::size_t>(result.written))
        << "an incomplete file is left";
}

} // namespace
} // namespace ov::cli
