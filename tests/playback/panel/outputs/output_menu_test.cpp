// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "sound/output/output_choice.h"
#include "tests/playback/panel/player_fixture.h"
#include "tests/sound/sound_fixture.h"

#include <QToolTip>

namespace ov {
namespace {

// Before a sound server with two outputs.
class Outputs : public modMultimedia::SoundTest<Player> {
protected:
    void SetUp() override {
        SoundTest::SetUp();
        if (IsSkipped())
            return;
        ASSERT_TRUE(SoundServer::plugIn("Else&where"));
        // What was open at the server before is closed then.
        waitFor([] {
            const auto names = sound::soundOutputNames();
            return std::ranges::find(names, "Else&where") != names.end();
        });
        QObject::connect(&panel_->outputs(), &OutputMenu::outputChosen,
                         [this](const std::string& name) { chosen_.push_back(name); });
        panel_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.get()));
    }
    void TearDown() override {
        SoundTest::TearDown();
        sound::OutputChoice::instance().choose({});
    }
    // By key: the button, then the letter of the entry.
    QMenu& openOutputs() {
        QTest::mousePress(&child<QToolButton>(*panel_, "cmdSearchPlayerOptions"), Qt::LeftButton);
        QTest::keyClick(&popup(), Qt::Key_O);
        EXPECT_EQ(popup().objectName(), QStringLiteral("mnuOutputs"));
        return popup();
    }
    static void closeMenus() {
        while (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
    }
    static std::string entries(const QMenu& menu) {
        std::string all;
        for (const QAction* action : menu.actions())
            all.append(all.empty() ? "" : ", ")
                .append(action->isChecked() ? "*" : "")
                .append(entryText(*action));
        return all;
    }
    static bool has(const QMenu& menu, const char* entry) {
        return entries(menu).find(entry) != std::string::npos;
    }
    // With arrow keys and Enter.
    void choose(const char* entry) {
        QMenu& menu = openOutputs();
        waitFor([&] { return has(menu, entry); });
        const auto isThere = [&] {
            return menu.activeAction() != nullptr && entryText(*menu.activeAction()) == entry;
        };
        for (int i = 0; i < menu.actions().size() && !isThere(); ++i)
            QTest::keyClick(&menu, Qt::Key_Down);
        ASSERT_TRUE(isThere()) << entries(menu);
        QTest::keyClick(&menu, Qt::Key_Return);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    static bool isHeard(const Recorder& recorder) {
        const std::vector<float> samples = recorder.samples(0, recorder.count());
        return startOfSound(samples) < samples.size();
    }

    std::vector<std::string> chosen_;
};

TEST_F(Outputs, AreAskedForWhileTheWindowLives) {
    server_->hang();
    QMenu& menu = openOutputs();
    EXPECT_EQ(entries(menu), "*Usual output, Looking for outputs\u2026");
    EXPECT_FALSE(menu.actions().last()->isEnabled());
    QTest::keyClick(&menu, Qt::Key_Home);
    server_->goOn();
    waitFor([&] { return has(menu, "Else&where"); });
    EXPECT_FALSE(has(menu, "Looking"));
    ASSERT_NE(menu.activeAction(), nullptr);
    EXPECT_EQ(entryText(*menu.activeAction()), "Usual output") << "the keyboard stays";
    closeMenus();
    ASSERT_TRUE(SoundServer::pullOut());
    openOutputs();
    EXPECT_TRUE(has(menu, "Else&where")) << "as it was told the last time";
    waitFor([&] { return !has(menu, "Else&where"); });
    closeMenus();
}

TEST_F(Outputs, AreChosenWhileItPlays) {
    std::optional<Recorder> elsewhere(std::in_place, "elsewhere");
    play("one.WAV");
    waitFor([] { return position() > 300; });
    EXPECT_FALSE(isHeard(*elsewhere));
    choose("Else&where");
    EXPECT_EQ(chosen_, std::vector<std::string>{"Else&where"});
    waitFor([&] { return isHeard(*elsewhere); });
    EXPECT_EQ(modMultimedia::MciGetMode("PBWave"), "playing");
    EXPECT_LT(position(), 90000) << "where it was";

    elsewhere.reset();
    ASSERT_TRUE(SoundServer::pullOut());
    waitFor([this] { return state().format() == u"Error"; });
    press(0);
    waitFor([] { return QToolTip::text().contains(u"so the usual one plays"); });
    EXPECT_TRUE(child<QLabel>(*panel_, "lblAnnouncement").text().contains(u"the usual one plays"));
    EXPECT_EQ(state().format(), QStringLiteral("Playing"));
    QMenu& menu = openOutputs();
    waitFor([&] { return has(menu, "(not there)"); });
    EXPECT_TRUE(has(menu, ", *Else&where (not there)")) << entries(menu);
    closeMenus();
    choose("Usual output");
    EXPECT_EQ(chosen_.back(), "");
    EXPECT_TRUE(has(openOutputs(), "*Usual output"));
    closeMenus();
}

} // namespace
} // namespace ov
