// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modFilePath.h"
#include "support/modWFRoutines.h"
#include "tests/settings_fixture.h"

#include <thread>

namespace ov::modWFRoutines {
namespace {

// The folder is the control's own directory too. Both stores hold settings, so that a read from
// the wrong one shows.
class WorkflowSettings : public tests::SettingsTest {
public:
    WorkflowSettings() {
        modFilePath::SetDirectory(modFilePath::directory_id::module, path(""));
        write("registry.reg",
              "REGEDIT4\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Orvanta\\WF\\OV2000]\n"
              "\"Name\"=\"registry\"\n\"Count\"=dword:5\n\"NetBasePath\"=\"N:\\\\reg\"\n"
              "\"UserProfile\"=dword:1\n");
        write("Orvanta.ini", "[OV2000]\nName=\"ini\"\nNetBasePath=\"N:\\ini\"\nUserProfile=0\n");
        reset();
    }
    ~WorkflowSettings() override {
        modFilePath::reset();
        reset();
    }
};

TEST_F(WorkflowSettings, comeFromTheRegistry) {
    fs::create_directory(folder() / "reg.ov"); // no marker
    EXPECT_FALSE(storage().wfInitialised);
    EXPECT_EQ(WFGetValue("OV2000", "Name", "-"), "registry");
    EXPECT_EQ(WFGetValue("OV2000", "Missing", "-"), "-");
    EXPECT_EQ(WFGetPath("OV2000", "NetBasePath", "", true), "N:\\reg\\");
    EXPECT_EQ(WFGetPath("OV2000", "NetBasePath", "", false), "");
    EXPECT_EQ(WFGetPath("OV2000", "Missing", path(""), false), path(""));
    EXPECT_TRUE(storage().wfInitialised);
    EXPECT_TRUE(storage().wfUserProfile);
}

// Decided once per thread.
TEST_F(WorkflowSettings, comeFromTheIniFileBesideAMarker) {
    write("reg.ov", "");
    EXPECT_EQ(WFGetValue("OV2000", "Name", "-"), "\"ini\"") << "the strict reader keeps quotes";
    fs::remove(folder() / "reg.ov");
    EXPECT_EQ(WFGetPath("OV2000", "NetBasePath", "", true), "N:\\ini\\");
    EXPECT_FALSE(storage().wfUserProfile);
    std::string elsewhere;
    std::thread([this, &elsewhere] {
        modFilePath::SetDirectory(modFilePath::directory_id::module, path(""));
        platform::setPerUserFolder(path(""));
        elsewhere = WFGetValue("OV2000", "Name", "-");
    }).join();
    EXPECT_EQ(elsewhere, "registry");
}

} // namespace
} // namespace ov::modWFRoutines
