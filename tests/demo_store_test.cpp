// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/demo_store.h"
#include "dictation/dictation_record.h"
#include "settings_fixture.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
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

    std::vector<fs::path> sounds(const char* name) const {
        std::vector<fs::path> result;
        for (const auto& entry : fs::recursive_directory_iterator(folder() / name))
            if (entry.is_regular_file())
                result.push_back(entry.path());
        return result;
    }
};

TEST_F(DemoStore, EveryFileIsSoundAsLongAsItsNameSays) {
    ASSERT_EQ(writeDemoStore(options("store", 60)).written, 60);
    int told = 0;
    for (const fs::path& path : sounds("store")) {
        SCOPED_TRACE(path);
        SF_INFO info{};
        SNDFILE* sound = sf_open(path.c_str(), SFM_READ, &info);
        ASSERT_NE(sound, nullptr);
        std::vector<short> samples(static_cast<std::size_t>(info.frames * info.channels));
        EXPECT_EQ(sf_readf_short(sound, samples.data(), info.frames), info.frames);
        EXPECT_GT(*std::max_element(samples.begin(), samples.end()), 1000) << "silence";
        sf_close(sound);
        const std::string name = path.stem();
        const auto length = modDictation::findFieldValue(name, "@@6$");
        if (!length)
            continue;
        ++told;
        const std::string seconds = std::to_string(info.frames / info.samplerate);
        EXPECT_EQ(*length, "00$00$" + std::string(2 - seconds.size(), '0') + seconds);
    }
    EXPECT_GT(told, 40);
}

TEST_F(DemoStore, RefusesAFolderWithContent) {
    fs::create_directory(folder() / "mine");
    write("mine/letter.txt", "keep");
    const DemoResult result = writeDemoStore(options("mine", 5));
    EXPECT_NE(result.status.description().find("mine/: the directory is not empty"),
              std::string::npos)
        << result.status.description();
    const DemoResult file = writeDemoStore(options("mine/letter.txt", 5));
    EXPECT_NE(file.status.description().find("letter.txt"), std::string::npos);
    EXPECT_EQ(sounds("mine").size(), 1U);
    EXPECT_EQ(read("mine/letter.txt"), "keep");
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
