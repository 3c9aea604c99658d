// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Exported registry files, the calls that read them, and modRegistry above both.

#include "platform/settings/registry_file.h"
#include "platform/text.h"
#include "support/log.h"
#include "support/modFilePath.h"
#include "support/modRegistry.h"
#include "tests/settings_fixture.h"

#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace ov::platform {
namespace {

using namespace std::string_literals;
using namespace modRegistry;

const std::string version5 = "Windows Registry Editor Version 5.00\r\n\r\n";
const std::string testKey = R"(Software\Orvanta\WF\Test\)";
const std::string testHeader = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvanta\\WF\\Test]\r\n";

class Registry : public tests::SettingsTest {
public:
    Registry() { modFilePath::SetDirectory(modFilePath::directory_id::log, path("")); }
    ~Registry() override {
        modFilePath::reset();
        resetLog();
    }

protected:
    void use(const std::string& file) {
        write("registry.reg", file);
        reloadRegistry();
    }
    static std::string value(std::string_view name) {
        return RegistryGetValueEx(RegistryHive::localMachine, testKey, name, "(default)");
    }
    static void expectLogged(const std::vector<std::string>& parts) {
        const auto lines = recentLogLines();
        ASSERT_EQ(lines.size(), parts.size());
        for (std::size_t i = 0; i < parts.size(); ++i)
            EXPECT_NE(lines[i].find(parts[i]), std::string::npos) << lines[i];
    }
};

TEST_F(Registry, valuesInEveryEncoding) {
    // The name of a value, what it is, and the lines below the header of the key.
    const std::tuple<const char*, std::string, std::vector<std::string>> cases[] = {
        {"Ä", "ö", {R"("ä"="ö")"}},
        {"q\"\\", R"(C:\Dict\ "x")", {R"("q\"\\"="C:\\Dict\\ \"x\"")"}},
        {"a", R"(C:\Dict)", {R"("a"="C:\Dict")"}},
        {"", "", {R"(@="")"}},
        {"a ", "(default)", {R"("a"="b")"}},
        {"a",
         "b",
         {R"( "a" = "b" ; "c")", "\"a\"=\"c\"\n\"A\"=\"b\"",
          "\"a\"=\"b\"\n[-HKEY_LOCAL_MACHINE\\\\Software]",
          "[hkey_local_machine\\software\\ORVANTA\\wf\\test\\]\n\"a\"=\"b\"",
          "\"c\"=hex:01,\\\r\n  02\r\n\"a\"=\"b\""}},
        {"a", "31", {R"("a"=dword:0000001F)"}},
        {"a", "-1", {R"("a"=dword:ffffffff)"}},
        {"a", "305419896", {R"("a"=hex(4):78,56,34,12)"}},
        {"a", "513", {R"("a"=hex(4):01,02)"}},
        {"a", "%X%ä", {R"("a"=hex(2):25,00,58,00,25,00,e4,00,00,00)"}},
        {"a", "Hi", {R"("a"=hex( 1): 48 , 00,69,00)", R"("a"=hex(1):48,00,69,00,00,00,69,00)"}},
        {"a", "Hey", {"\"a\"=hex(2):48,00,\\\r\n  65,00,\\\r\n  79,00,00,00"}},
        {"a", std::string(1023, 'x'), {R"("a"=")" + std::string(1023, 'x') + '"'}},
        {"a",
         "(default)",
         {R"("a"=")" + std::string(1024, 'x') + '"', R"(;"a"="b")", "\"a\"=\"b\"\n\"a\"=-",
          "\"a\"=\"b\"\n[-HKEY_LOCAL_MACHINE\\Software\\Orvanta]",
          "[-HKEY_LOCAL_MACHINE\\Software\\Orvanta]\n\"a\"=\"b\"",
          "[HKEY_CLASSES_ROOT\\X]\n\"a\"=\"b\"", R"("a"=dword:123456789)", R"("a"="b"dword:1)",
          R"("a"=hex(7):48,00,00,00,00,00)", R"("a"=hex(b):01,00,00,00,00,00,00,00)",
          R"("a"=hex(1):48,00,1ff)", R"("a"="b)", R"("a"="b\")"}}};
    for (const auto& [name, expected, contents] : cases)
        for (const std::string& lines : contents) {
            const std::string text = version5 + testHeader + lines;
            for (const std::string& file :
                 {text, "\xEF\xBB\xBF" + text, "\xFF\xFE" + utf8ToUtf16(text, false),
                  "\xFE\xFF" + utf8ToUtf16(text, true)}) {
                use(file);
                EXPECT_EQ(value(name), expected) << lines;
            }
        }
    use("REGEDIT4\n\n" + testHeader + "\"a\"=\"\xE4\"\n\"b\"=hex(2):48,e4,00\n\"c\"=\"ä\"\n");
    EXPECT_EQ(value("a") + value("b") + value("c"), "äHää") << "bytes of the code page";
}

TEST_F(Registry, whatIsNoExportChangesNothing) {
    const std::string entry = testHeader + "\"a\"=\"b\"\n";
    for (const std::string& file : {""s, entry, "REGEDIT5\n" + entry, "x" + version5 + entry}) {
        use(file);
        EXPECT_EQ(value("a"), "(default)") << file;
    }
    EXPECT_TRUE(recentLogLines().empty());
}

TEST_F(Registry, keysOf32BitProgramsAreLookedForSecond) {
    const std::string redirected = "[HKEY_LOCAL_MACHINE\\software\\wow6432node\\";
    use(version5 + testHeader + "\"a\"=\"own\"\n" + redirected +
        "Orvanta\\WF\\Test]\n\"a\"=\"other\"\n\"b\"=\"other\"\n" + redirected +
        "Orvanta\\WF\\New]\n\"c\"=\"new\"\n" + redirected + "WOW6432Node\\x]\n");
    EXPECT_EQ(value("a"), "own");
    EXPECT_EQ(value("b"), "other");
    EXPECT_EQ(RegistryGetValueEx(RegistryHive::localMachine, R"(Software\Orvanta\WF\New)", "c", ""),
              "new");
    EXPECT_EQ(REGReadSubKeyNames(RegistryHive::localMachine, R"(Software\Orvanta\WF)"),
              (std::vector<std::string>{"Test", "New"}));
}

TEST_F(Registry, keysAreTooDeepOrDamaged) {
    std::string deepest = "[HKEY_CURRENT_USER";
    for (std::size_t depth = 0; depth < deepestRegistryKey; ++depth)
        deepest += "\\k";
    RegistryTree tree;
    importRegistryFile(version5 + "[HKEY_CURRENT_USER\\\\x]\n" + deepest + "\\k]\n" +
                           "[HKEY_CURRENT_USER\\open\n[]\n[-]\n" + deepest + "]\n",
                       tree);
    EXPECT_EQ(tree.keyCount, deepestRegistryKey);
}

TEST_F(Registry, isReadOnceForAPerUserFolderWhichHoldsTheDrivesToo) {
    use(version5 + testHeader + "\"a\"=\"1\"\n");
    EXPECT_EQ(value("a"), "1");
    write("registry.reg", version5 + testHeader + "\"a\"=\"2\"\n");
    EXPECT_EQ(value("a"), "1");
    setPerUserFolder(path(""));
    EXPECT_EQ(value("a"), "2");
    setPerUserFolder("\\elsewhere");
    EXPECT_EQ(perUserFolder(), R"(\elsewhere\)");
    EXPECT_EQ(toNativePath("D:\\x"), "/elsewhere/drives/d/x");
    const tests::Environment config("XDG_CONFIG_HOME", "/home/x/settings");
    setPerUserFolder({});
    EXPECT_EQ(toNativePath("D:\\x"), "/home/x/settings/Orvanta/drives/d/x");
}

TEST_F(Registry, shellFoldersOfTheEnvironmentAndOfTheFile) {
    const tests::Environment config("XDG_CONFIG_HOME", "/home/x/settings");
    use("");
    EXPECT_EQ(GetShellFolder("AppData"), R"(\home\x\settings\)");
    EXPECT_EQ(GetShellFolder("Common AppData"), R"(\etc\xdg\)");
    EXPECT_EQ(GetShellFolder("Desktop"), "");
    const tests::Environment relative("XDG_CONFIG_HOME", "settings");
    const tests::Environment home("HOME", "/home/y");
    reloadRegistry();
    EXPECT_EQ(GetShellFolder("AppData"), R"(\home\y\.config\)");
    {
        const tests::Environment nowhere("HOME", "y"); // then what the system knows of the user
        reloadRegistry();
        const std::string known = std::string(getpwuid(getuid())->pw_dir) + "/.config";
        EXPECT_EQ(GetShellFolder("AppData"), fromNativePath(known) + '\\');
    }
    const std::string key = "\\" + std::string(shellFoldersKey) + "]\n";
    use(version5 + "[HKEY_CURRENT_USER" + key + "\"AppData\"=\"C:\\\\Users\\\\x\"\n" +
        "[HKEY_LOCAL_MACHINE" + key + "\"Common AppData\"=-\n");
    EXPECT_EQ(GetShellFolder("AppData"), R"(C:\Users\x\)");
    EXPECT_EQ(GetShellFolder("Common AppData"), "");
}

TEST_F(Registry, subkeysInTheOrderOfTheFile) {
    use(version5 + "[HKEY_CURRENT_USER\\k\\Zeta]\n[HKEY_CURRENT_USER\\k\\alpha\\deep]\n"
                   "[HKEY_CURRENT_USER\\K\\ZETA\\x]\n");
    const auto user = RegistryHive::currentUser;
    using Names = std::vector<std::string>;
    EXPECT_EQ(REGReadSubKeyNames(user, "k"), (Names{"Zeta", "alpha"}));
    EXPECT_EQ(REGReadSubKeys(user, "k\\"), (Names{"k\\Zeta", "k\\alpha"}));
    EXPECT_EQ(REGReadSubKeyNames(user, "").back(), "k");
    EXPECT_EQ(REGReadSubKeys(user, "none"), Names{});
    EXPECT_TRUE(recentLogLines().empty());
    REGReadSubKeys(user, "\\k");
    REGReadSubKeyNames(user, "\\k");
    expectLogged(
        {"ERROR (161): REGReadSubKeys - \\k cannot", "ERROR (161): REGReadSubKeyNames - "});
}

// The log's own folder comes from the registry: reporting must not call itself.
TEST_F(Registry, shellFolderThatIsTooLongIsReportedOnce) {
    const tests::Environment config("XDG_CONFIG_HOME", folder().native());
    write("Orvanta/registry.reg", version5 + "[HKEY_CURRENT_USER\\" + std::string(shellFoldersKey) +
                                      "]\n\"AppData\"=\"" + std::string(2000, 'x') + "\"\n");
    setPerUserFolder({});
    modFilePath::reset();
    modFilePath::SetDirectory(modFilePath::directory_id::module, path(""));
    EXPECT_EQ(GetShellFolder("AppData"), "");
    expectLogged({"ERROR (234): RegistryGetValueEx - "});
}

} // namespace
} // namespace ov::platform
