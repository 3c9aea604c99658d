// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/control/criteria/criteria_fixture.h"

// Criteria as text, copied, cut and pasted.

namespace ov {
namespace {

class CriteriaClipboard : public CriteriaListTest {
protected:
    static std::string clipboard() { return QGuiApplication::clipboard()->text().toStdString(); }
    void paste(const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        controlKey(Qt::Key_V);
    }
};

TEST_F(CriteriaClipboard, TakesCriteriaAsTextWithTheirGroups) {
    openGrouped("A>BC>D>E");
    select({0, 1, 4});
    controlKey(Qt::Key_C);
    EXPECT_EQ(clipboard(), "author contains A\n  author contains B\nauthor contains E\n");
    select({3});
    controlKey(Qt::Key_C);
    EXPECT_EQ(clipboard(), "  author contains D\n");
    select({2, 3});
    controlKey(Qt::Key_X);
    EXPECT_EQ(line(), "A>B*E");
    controlKey(Qt::Key_V);
    EXPECT_EQ(line(), "A>BE*C>*D");
    controlKey(Qt::Key_Z);
    EXPECT_EQ(line(), "A>B*E") << "one step";
    key(criteria(), Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(line(), "A>BE*C>*D");
    QGuiApplication::clipboard()->clear();
    key(criteria(), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(line(), "A>B*E");
    EXPECT_EQ(clipboard().substr(0, 17), "author contains C");
    select({});
    controlKey(Qt::Key_C);
    EXPECT_EQ(clipboard().substr(0, 17), "author contains C") << "nothing is selected";
    select({0});
    controlKey(Qt::Key_V);
    EXPECT_EQ(line(), "A>*C>*D>BE") << "into the group";
    EXPECT_TRUE(user->boxes.empty());
    controlKey(Qt::Key_X);
    rightClick(criteria());
    click("Paste");
    EXPECT_EQ(line(), "A>B>*C>*DE") << "in their group again";
    select({4});
    paste("author contains C\nauthor contains C\n");
    EXPECT_EQ(line(), "A>B>C>DE*C") << "once; in a group it asks for something else";
    std::string many;
    for (int i = 0; i < 600; ++i)
        many += "author contains x" + std::to_string(i) + "\n";
    paste(many.c_str());
    EXPECT_EQ(criteria().topLevelItemCount(), 506);
    EXPECT_EQ(user->boxes.size(), 1U) << "a hundred were too many";
}

TEST_F(CriteriaClipboard, PastesWhatOthersWroteAndTellsTheRest) {
    open("AB");
    select({0});
    paste("; mine\nauthor contains N\n\tauthor contains A\nauthor contains B\nrubbish\nall=0\n");
    EXPECT_EQ(line(), "A*N>*A*B") << "one that is there is selected";
    EXPECT_EQ(user->onlyText(),
              "Lines of the clipboard that are no criteria and were not pasted: 2");
    EXPECT_NE(clipboard().find("rubbish"), std::string::npos);
    select({3});
    paste(criterion("5|17|A|\r\n5|17|B|").c_str());
    EXPECT_EQ(line(), "*AN>A*B");
    ASSERT_EQ(user->boxes.size(), 2U);
    paste("  \n");
    EXPECT_EQ(user->boxes.size(), 2U) << "nothing to paste";
    speak("7");
    paste((std::string(1 << 20, 'x') + "\nauthor contains Z\n").c_str());
    EXPECT_EQ(user->boxes.at(2).text, "Zeilen der Zwischenablage, die keine Suchkriterien sind und "
                                      "nicht eingefügt wurden: 2");
    EXPECT_EQ(line(), "*AN>A*B");
}

} // namespace
} // namespace ov
