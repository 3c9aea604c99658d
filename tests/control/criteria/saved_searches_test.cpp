// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/saved_searches.h"
#include "tests/control/control_fixture.h"

namespace ov {
namespace {

class SavedSearchesTest : public ControlTest {
protected:
    // The entry of the menu, or of its menu of that name.
    void choose(const char* submenu, const char* entry) {
        press("cmdSavedSearches");
        *submenu == '\0' ? click(entry) : trigger(entry, submenu);
    }
    static std::string entries(const QMenu& menu) {
        std::string all;
        for (const QAction* action : menu.actions())
            all += entryText(*action) +
                   (action->menu() ? "{" + entries(*action->menu()) + "}" : "") + ";";
        return all;
    }
    std::string menuEntries() {
        press("cmdSavedSearches");
        std::string all = entries(popup());
        popup().close();
        return all;
    }
    void name(const char* submenu, const char* entry, const char* name) {
        withDialog([&] { choose(submenu, entry); },
                   [&](QDialog& dialog) {
                       child<QLineEdit>(dialog, "txtName").setText(QString::fromUtf8(name));
                       QTest::keyClick(&dialog, Qt::Key_Return);
                   });
    }
    std::string shown() {
        std::string all = widget<QRadioButton>("optCriteriaCompare(1)").isChecked() ? "all" : "any";
        for (int i = 0; i < criteria().topLevelItemCount(); ++i)
            all += "; " + criteria().topLevelItem(i)->text(0).toStdString();
        return all;
    }
};

TEST_F(SavedSearchesTest, AreSavedBroughtBackRenamedAndDeleted) {
    openWith("5|17|Anna|\r\n15|25|3|\r\n");
    compare(false);
    name("", "Save criteria as…", "R&D / urgent");
    EXPECT_EQ(read("Searches/R&D %2F urgent.search"),
              "name=R&D / urgent\nall=0\nauthor contains Anna\npriority is 3\n");
    compare(true);
    deleteCriteria();
    EXPECT_EQ(shown(), "all");
    choose("", "R&D / urgent");
    EXPECT_EQ(shown(), "any; \"Author\" contains Anna; \"Priority\" is High");
    key(criteria(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(), "all") << "a change as any other";
    EXPECT_EQ(setting("SearchCompareAnd"), "-1");
    key(criteria(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(shown(), "any; \"Author\" contains Anna; \"Priority\" is High");
    compare(true);
    key(criteria(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown().substr(0, 5), "any; ") << "a choice by itself, too";
    EXPECT_EQ(setting("SearchCompareAnd"), "0");

    const std::string more = "author contains Anna\npriority is 3\n; mine\ndepth=3\nfrom later\n";
    write("Searches/R&D %2F urgent.search", "name=R&D / urgent\nall=0\n" + more);
    name("Rename", "R&D / urgent", "Später 😀");
    EXPECT_EQ(read("Searches/Später 😀.search"), "name=Später 😀\nall=0\n" + more);
    EXPECT_EQ(menuEntries(), "Save criteria as…;;Später 😀;;Recent searches{};Rename{Später 😀;};"
                             "Delete{Später 😀;};");
    name("", "Save criteria as…", "Später 😀");
    EXPECT_TRUE(user->onlyText().starts_with("There is a saved search “Später 😀” already."));
    user->saysYes = true;
    choose("Delete", "Später 😀");
    EXPECT_EQ(menuEntries().substr(0, 22), "Save criteria as…;;;");
    EXPECT_FALSE(fs::exists(folder() / "Searches/Später 😀.search"));
}

TEST_F(SavedSearchesTest, OfOneNameAndOfOddOnesAreKept) {
    write("Searches/one.search", "name=Same\nauthor contains aaa\n");
    write("Searches/two.search", "name=Same\nauthor contains zzz\n");
    const SavedSearches files(path("Searches\\"));
    EXPECT_TRUE(files.rename(files.saved().at(1), "Same").ok());
    EXPECT_EQ(files.saved().size(), 2U);
    write("Searches/Recent/2147483647.search", "author contains x\n");
    openWith("5|17|Anna|\r\n");
    user->saysYes = true;
    for (int i = 0; i < 2; ++i)
        name("", "Save criteria as…", "Ur\xC2\xADgent"); // with a hyphen that is not seen
    EXPECT_EQ(read("Searches/Urgent.search"), "name=Urgent\nall=1\nauthor contains Anna\n");
    EXPECT_EQ(files.saved().size(), 3U);
    search();
    EXPECT_TRUE(fs::exists(folder() / "Searches/Recent/1.search"));
}

TEST_F(SavedSearchesTest, KeepsTheLastTenByThemselves) {
    openControl();
    user->saysYes = true;
    search();
    for (int i = 0; i < 12; ++i) {
        deleteCriteria();
        enter([&] { key(criteria(), Qt::Key_Insert); }, ("A" + std::to_string(i % 11)).c_str());
        search();
        search();
    }
    const std::string all = menuEntries();
    EXPECT_NE(all.find("Recent searches{\"Author\" contains A0;\"Author\" contains A10;"),
              std::string::npos)
        << all;
    EXPECT_EQ(all.find("A1;"), std::string::npos) << all;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder() / "Searches/Recent"),
                            fs::directory_iterator()),
              10);
}

TEST_F(SavedSearchesTest, SkipsWhatIsNoneAndShowsAnyNameSafely) {
    write("Searches/broken.search", "rubbish\n");
    write("Searches/big.search", "author is x\n");
    fs::resize_file(folder() / "Searches/big.search", 2 << 20);
    fs::create_directory(folder() / "Searches/folder.search");
    write("Searches/other.txt", "author is x\n");
    write("Searches/M\xFCller.search", "author is x\n");
    write("Searches/evil.search", "name=a\xE2\x80\xAE"
                                  "b\tc\nauthor is x\n");
    write("Searches/old.search", criterion("5|17|Anna|\r\n"));
    openControl();
    EXPECT_EQ(menuEntries().substr(0, 41), "Save criteria as…;;abc;Müller;old;;Rec");
}

TEST_F(SavedSearchesTest, KeepGroupsAndTellWhatCannotBeRead) {
    openWith("5|17|Anna|\r\n5|17|Berta|\r\n15|25|3|\r\n");
    criteria().topLevelItem(1)->setSelected(true);
    key(criteria(), Qt::Key_Right, Qt::AltModifier);
    const std::string grouped =
        "all; \"Author\" contains Anna; or: \"Author\" contains Berta; \"Priority\" is High";
    EXPECT_EQ(shown(), grouped);
    name("", "Save criteria as…", "Two");
    EXPECT_EQ(read("Searches/Two.search"),
              "name=Two\nall=1\nauthor contains Anna\n  author contains Berta\npriority is 3\n");
    search();
    key(criteria(), Qt::Key_Left, Qt::AltModifier);
    choose("Recent searches", "(\"Author\" contains Anna / \"Author\"");
    EXPECT_EQ(shown(), grouped);
    deleteCriteria();
    user->boxes.clear();
    choose("", "Two");
    EXPECT_EQ(shown(), grouped);
    EXPECT_TRUE(user->boxes.empty());

    write("Searches/Two.search", "name=Two\nauthor contains Anna\nfrom later\nmood is bad\n");
    choose("", "Two");
    EXPECT_EQ(shown(), "all; \"Author\" contains Anna");
    const std::string told = user->onlyText();
    EXPECT_TRUE(told.starts_with("Lines of the saved search that cannot be read: 2\r\n")) << told;
    EXPECT_TRUE(told.ends_with("/Two.search.")) << told;
}

TEST(SavedSearchFileName, IsOneThatAFileCanHave) {
    for (const auto& [name, file] : std::vector<std::pair<std::string, std::string>>{
             {"Dr. Müller", "Dr. Müller"},
             {"../etc/passwd", "%2E.%2Fetc%2Fpasswd"},
             {"a/b\\c%d\ne", "a%2Fb%5Cc%25d%0Ae"},
             {".hidden", "%2Ehidden"},
             {std::string(119, 'x') + "ü", std::string(119, 'x')}})
        EXPECT_EQ(savedSearchFileName(name), file);
}

TEST_F(SavedSearchesTest, NamesThatAreCutDoNotCollide) {
    const SavedSearches searches(path("new\\Searches\\"));
    const std::string longName(150, 'x');
    for (const char* end : {"1", "2", "2"}) {
        EXPECT_TRUE(searches.save(longName + end, {{}, {{5, 18, end, ""}}}).ok());
    }
    std::string names;
    for (const SavedSearch& one : searches.saved())
        names += one.name.substr(150) + one.search.criteria.at(0).Value1 + " ";
    EXPECT_EQ(names, "11 22 ");
}

TEST_F(SavedSearchesTest, AreNotMoreThanAMenuHolds) {
    fs::create_directory(folder() / "Searches");
    for (std::size_t i = 0; i <= SavedSearches::mostListed; ++i)
        write("Searches/" + std::to_string(i) + ".search",
              "name=S" + std::to_string(i) + "\nauthor contains A\n");
    openControl();
    const std::string all = menuEntries();
    std::size_t listed = 0;
    for (std::size_t i = 0; i <= SavedSearches::mostListed; ++i)
        listed += (";" + all).find(";S" + std::to_string(i) + ";") != std::string::npos ? 1U : 0U;
    EXPECT_EQ(listed, SavedSearches::mostListed) << all;
}

} // namespace
} // namespace ov
