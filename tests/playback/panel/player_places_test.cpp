// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/remembered_positions.h"
#include "playback/typed_time.h"
#include "tests/playback/panel/player_fixture.h"

#include <QToolTip>

namespace ov {
namespace {

class Positions : public Player {
protected:
    Positions() { renew(); }
    // As another window, or the same one tomorrow.
    void renew() {
        makePanel();
        panel_->setRememberedPositions(RememberedPositions(data_.directory("Own")));
        choose(&PlayerChoices::remembersPositions, true);
    }
    // Plays and leaves it there.
    void leave(const char* name, int second, int button = 2) {
        play(name);
        moveTo(second);
        press(button);
    }
    QToolButton& offer() { return child<QToolButton>(*panel_, "cmdOfferedPosition"); }
    std::string offered(const char* name) {
        play(name);
        const std::string text = offer().isVisible() ? offer().text().toStdString() : std::string();
        press(2);
        return text;
    }
    std::string kept() const { return readBytes(data_.native("Own/Positions.txt")); }

    TemporaryStore data_;
};

TEST_F(Positions, AreOfferedWhenADictationIsOpenedAgain) {
    EXPECT_EQ(offered("one.WAV"), "");
    leave("one.WAV", 40);
    EXPECT_EQ(offered("two.WAV"), "");
    renew();
    play("one.WAV");
    EXPECT_EQ(offer().text(), QStringLiteral("Go on at 00:00:40"));
    EXPECT_LT(position(), 5000) << "it starts as ever";
    panel_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
    offer().setFocus();
    QTest::keyClick(&offer(), Qt::Key_Space);
    EXPECT_NEAR(position(), 40500, 900);
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    EXPECT_FALSE(offer().isVisible());
    EXPECT_TRUE(child<QPushButton>(*panel_, "cmdSearchPlayer(0)").hasFocus());

    moveTo(50);
    seek().setFocus();
    play("two.WAV"); // leaves it too
    EXPECT_FALSE(offer().isVisible());
    EXPECT_TRUE(seek().hasFocus());
    press(2);
    choose(&PlayerChoices::backUpSeconds, 3);
    play("one.WAV");
    EXPECT_EQ(offer().text(), QStringLiteral("Go on at 00:00:50"));
    offer().click();
    EXPECT_NEAR(position(), 47500, 900);
}

TEST_F(Positions, AreOfWhatWasReallyLeft) {
    leave("one.WAV", 40);
    leave("one.WAV", 3);
    EXPECT_EQ(offered("one.WAV"), "Go on at 00:00:40") << "nobody listened";
    store.addFolder("elsewhere");
    std::filesystem::copy(store.native("one.WAV"), store.native("elsewhere/one.WAV"));
    EXPECT_EQ(offered("elsewhere/one.WAV"), "Go on at 00:00:40");
    writeWave(store.native("elsewhere/two.WAV"), {}, sweep(8000, 400000));
    leave("elsewhere/two.WAV", 60); // its half
    EXPECT_EQ(offered("two.WAV"), "") << "of the same name, but another one";
    leave("one.WAV", 98);
    EXPECT_EQ(offered("one.WAV"), "") << "heard to its end";

    constexpr std::size_t bytesOfHalf = 800000;
    store.add("cut off.WAV", readBytes(store.native("one.WAV")).substr(0, bytesOfHalf));
    leave("cut off.WAV", 40);
    EXPECT_EQ(offered("cut off.WAV"), "Go on at 00:00:40");
    play("cut off.WAV");
    moveTo(49);
    waitFor([this] { return !panel_->isOpen(); });
    EXPECT_EQ(offered("cut off.WAV"), "") << "to the end of what is there";
}

TEST_F(Positions, AreForgottenWhenTheUserSaysSo) {
    std::vector<bool> told;
    QObject::connect(panel_.get(), &PlayerPanel::choicesMade,
                     [&](const PlayerChoices& made) { told.push_back(made.remembersPositions); });
    leave("one.WAV", 40);
    play("one.WAV");
    auto* choice = panel_->findChild<QAction*>(QStringLiteral("actRememberPositions"));
    ASSERT_TRUE(choice->isChecked());
    choice->trigger();
    EXPECT_FALSE(offer().isVisible());
    EXPECT_FALSE(std::filesystem::exists(data_.native("Own/Positions.txt")));
    leave("one.WAV", 40);
    EXPECT_EQ(offered("one.WAV"), "");
    choice->trigger();
    EXPECT_EQ(told, (std::vector<bool>{false, true}));
    leave("one.WAV", 30);
    EXPECT_EQ(offered("one.WAV"), "Go on at 00:00:30");

    bool isWanted = false; // any more, as another window was told
    panel_->setRememberedPositions(RememberedPositions(data_.directory("Own")),
                                   [&] { return isWanted; });
    leave("two.WAV", 40);
    EXPECT_EQ(kept().find("two.WAV"), std::string::npos);
    EXPECT_EQ(offered("one.WAV"), "");
    isWanted = true;
    leave("two.WAV", 40);
    EXPECT_NE(kept().find("two.WAV"), std::string::npos);
}

TEST_F(Positions, AreTheLastThousandAndReadWithCare) {
    const RememberedPositions positions(data_.directory("Own"));
    std::string lines = "\n-5 7 minus.WAV\nrubbish\n99999999999 7 long.WAV\n5 7\n5 7 \n";
    for (std::size_t i = 0; i < RememberedPositions::most; ++i)
        lines += std::to_string(i) + " 7 a name " + std::to_string(i) + ".WAV\n";
    data_.add("Own/Positions.txt", lines);
    EXPECT_EQ(positions.find({"a name 999.WAV", 7}), 999);
    EXPECT_EQ(positions.find({"minus.WAV", 7}), std::nullopt);
    EXPECT_TRUE(positions.keep({"two\nlines", 7}, 1).ok());
    EXPECT_TRUE(positions.keep({"a name 0.WAV", 7}, 12).ok());
    EXPECT_TRUE(positions.keep({"new.WAV", 7}, 13).ok());
    EXPECT_EQ(positions.find({"a name 0.WAV", 7}), 12);
    EXPECT_EQ(positions.find({"a name 1.WAV", 7}), std::nullopt) << "the oldest";
    const std::string now = kept();
    EXPECT_EQ(std::count(now.begin(), now.end(), '\n'), RememberedPositions::most);
    EXPECT_TRUE(now.ends_with("12 7 a name 0.WAV\n13 7 new.WAV\n"));

    data_.addFolder("Folder/Positions.txt");
    EXPECT_FALSE(RememberedPositions(data_.directory("Folder")).keep({"a", 7}, 14).ok());
}

TEST_F(Positions, AreGoneToWhenTyped) {
    auto& edit = child<TimeEdit>(*panel_, "txtGoToTime");
    panel_->askForTime();
    EXPECT_FALSE(edit.isVisible()) << "there is nothing to go through";
    panel_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
    play("one.WAV");
    seek().setFocus();
    const auto goTo = [&](const char* text, Qt::Key key = Qt::Key_Return) {
        panel_->askForTime();
        QTest::keyClicks(&edit, QString::fromLatin1(text));
        QTest::keyClick(&edit, key);
        return position() / 1000;
    };
    EXPECT_EQ(goTo("1:03"), 63);
    EXPECT_FALSE(edit.isVisible());
    EXPECT_TRUE(seek().hasFocus());
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    press(1);
    EXPECT_NEAR(goTo("+10"), 73, 1);
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "stopped") << "it was not playing";
    EXPECT_EQ(goTo("+9:00"), 99) << "not to its end, where it would be closed";
    EXPECT_EQ(goTo("-9:00"), 0);
    EXPECT_EQ(goTo("1:41"), 0);
    EXPECT_EQ(edit.selectedText(), QStringLiteral("1:41")) << "it is not that long";
    EXPECT_TRUE(QToolTip::text().contains(u"only 00:01:40"));
    EXPECT_EQ(child<QLabel>(*panel_, "lblAnnouncement").text(), QToolTip::text()) << "it is heard";
    panel_->askForTime();
    EXPECT_EQ(edit.selectedText(), QStringLiteral("1:41"));
    QTest::keyClick(&edit, Qt::Key_Escape);
    EXPECT_TRUE(seek().hasFocus());
    EXPECT_EQ(goTo("50", Qt::Key_Escape), 0);
    EXPECT_FALSE(edit.isVisible());
    goTo("soon");
    EXPECT_TRUE(edit.isVisible());
    EXPECT_EQ(edit.selectedText(), QStringLiteral("soon"));
    QToolTip::hideText();
    panel_->setFocus();
    EXPECT_FALSE(edit.isVisible());
}

TEST_F(Positions, AreCopiedAsTimeStamps) {
    const auto copied = [&] {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        panel_->copyTimeStamp();
        return QGuiApplication::clipboard()->text().toStdString();
    };
    EXPECT_EQ(copied(), "before") << "nothing plays";
    store.add("2$ROH@@14$%1%@@11$Knee.WAV", readBytes(store.native("one.WAV")));
    play("2$ROH@@14$%1%@@11$Knee.WAV");
    moveTo(61);
    press(1);
    EXPECT_EQ(copied(), "[00:01:01]");
    std::string chosen;
    QObject::connect(panel_.get(), &PlayerPanel::choicesMade,
                     [&](const PlayerChoices& made) { chosen = made.timeStampForm; });
    panel_->retranslate();
    for (QAction* choice : panel_->findChildren<QAction*>())
        if (choice->text() == u"[00:12:34] Author: subject")
            choice->trigger();
    EXPECT_EQ(chosen, "[%1%] %2%");
    EXPECT_EQ(copied(), "[00:01:01] %1%: Knee");
    for (const auto& [form, stamp] :
         {std::pair{"%2% at %1%:", "%1%: Knee at 00:01:01:"}, std::pair{"no time", "[00:01:01]"},
          std::pair{"%1%", "00:01:01"}}) {
        choose(&PlayerChoices::timeStampForm, form);
        EXPECT_EQ(copied(), stamp);
    }
}

TEST(TypedTime, Forms) {
    const std::pair<const char*, TypedTime> cases[] = {
        {"0", {0, false}},        {" 83 ", {83, false}},      {"1:23", {83, false}},
        {"90:00", {5400, false}}, {"1:02:03", {3723, false}}, {"+30", {30, true}},
        {"- 1:00", {-60, true}},  {"+0", {0, true}},          {"9999:59:59", {35999999, false}}};
    for (const auto& [text, time] : cases)
        EXPECT_EQ(readTypedTime(text), time) << text;
    for (const char* none : {"", "+", "+-1", "1:60", "1:60:00", "10000:00:00", "1:", ":30",
                             "1:2:3:4", "1m", "1234567"})
        EXPECT_EQ(readTypedTime(none), std::nullopt) << none;
}

} // namespace
} // namespace ov
