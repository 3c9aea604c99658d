// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/control_fixture.h"

// What the control says where there is nothing to list yet, or nothing was found.

namespace ov {
namespace {

class FirstScreen : public ControlTest {
protected:
    // What stands in the empty list; nothing while it has rows.
    std::string hint() {
        const auto& label = widget<QLabel>("lblListHint");
        return label.isVisible() ? label.text().toStdString() : "";
    }
};

TEST_F(FirstScreen, SaysThatNoFolderIsChosenYet) {
    host().answers["PI_GetDirectory(204)"] = "";
    openControl();
    EXPECT_TRUE(hint().starts_with("No dictation folder has been chosen yet."));
    EXPECT_FALSE(button("cmdListAll").isVisible());
    search();
    EXPECT_EQ(user->onlyText(), hint());
    host().answers["PI_GetDirectory(204)"] = store.directory();
    action("dir_netdictationtree"); // in letters of any case
    EXPECT_TRUE(hint().ends_with("or list all dictations."));
}

TEST_F(FirstScreen, ListsAllWithoutAQuestion) {
    store.add("2$WAV.WAV");
    openControl();
    results().setFocus();
    key(results(), Qt::Key_Tab);
    ASSERT_EQ(window().focusWidget(), &button("cmdListAll"));
    key(button("cmdListAll"), Qt::Key_Space);
    EXPECT_TRUE(user->boxes.empty());
    EXPECT_EQ(model().rowCount(), 1);
    EXPECT_EQ(hint(), "");
    EXPECT_EQ(window().focusWidget(), &results());
    fs::remove(store.native("2$WAV.WAV"));
    user->saysYes = true;
    search();
    EXPECT_TRUE(hint().starts_with("There are no dictations in")) << hint();
    host().answers["PI_GetDirectory(204)"] = store.directory("other");
    action("DIR_NETDICTATIONTREE");
    EXPECT_TRUE(button("cmdListAll").isVisible()) << "nothing is known of that folder";
}

TEST_F(FirstScreen, TellsWhichCriterionEmptiedTheList) {
    store.add("2$WAV@@14$Anna.WAV").add("2$WAV@@14$Berta.WAV");
    const std::tuple<std::string, bool, std::string> cases[] = {
        {"5|17|Yve|\n5|17|Zoe|\n", true,
         "No dictation meets even one of these criteria:\n\"Author\" contains Yve\n\"Author\" "
         "contains Zoe"},
        {"5|17|Anna|\n5|17|Berta|\n", true,
         "Each criterion is met by some dictations, but none meets all of them together."},
        {"5|17|Yve|\n5|17|Zoe|\n", false, "No dictation meets any of the criteria."}};
    for (const auto& [criteria, all, expected] : cases) {
        openWith(criteria);
        EXPECT_EQ(hint(), "The dictations that a search finds are listed here.");
        compare(all);
        search();
        EXPECT_EQ(hint(), expected);
    }
    for (const char* author : {"Anna", "Berta"})
        fs::remove(store.native(std::string("2$WAV@@14$") + author + ".WAV"));
    search();
    EXPECT_TRUE(hint().starts_with("There are no dictations in the folder /")) << hint();
}

} // namespace
} // namespace ov
