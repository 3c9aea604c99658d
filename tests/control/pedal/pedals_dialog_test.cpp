// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/pedal/frmPedals.h"
#include "tests/control/control_fixture.h"
#include "tests/playback/panel/pedal/pedals_fixture.h"

namespace ov {
namespace {

class PedalsDialog : public ControlTest {
protected:
    PedalsDialog() {
        pedals.inputs.plugIn("event3", {"Pedal", FakePedals::kind, {{EV_KEY, {KEY_A, KEY_B}}}});
    }

    void open(const std::function<void(QDialog&)>& drive) {
        withDialog(
            [this] {
                QTest::mousePress(&widget<QToolButton>("cmdSearchPlayerOptions"), Qt::LeftButton);
                click("Foot pedals");
            },
            drive, "frmPedals");
    }
    static QListWidget& devices(QDialog& dialog) {
        return child<QListWidget>(dialog, "lstPedalDevices");
    }
    static QTreeWidget& actions(QDialog& dialog) {
        return child<QTreeWidget>(dialog, "lstPedalActions");
    }
    static std::string pedalsOf(QDialog& dialog, int row) {
        return actions(dialog).topLevelItem(row)->text(1).toStdString();
    }
    static void waitForText(QDialog& dialog, const char* label, const char* text) {
        const auto shown = [&] { return child<QLabel>(dialog, label).text().toStdString(); };
        EXPECT_TRUE(QTest::qWaitFor([&] { return shown().starts_with(text); }, 20000)) << shown();
    }
    // What is told of the last press.
    static void waitForReceived(QDialog& dialog, const char* text) {
        waitForText(dialog, "lblPedalReceived", text);
    }
    static void waitForDevices(QDialog& dialog, const std::string& text) {
        const auto all = [&] {
            std::string names;
            for (int i = 0; i < devices(dialog).count(); ++i)
                names += devices(dialog).item(i)->text().toStdString() + ";";
            return names;
        };
        EXPECT_TRUE(QTest::qWaitFor([&] { return all() == text; }, 20000)) << all();
    }
    std::string kept() {
        return modINI::ReadIniValueDirect("OVSearch.ctrlOVSearch", "PlayerPedals", {},
                                          path("local.ini"));
    }

    FakePedals pedals;
};

TEST_F(PedalsDialog, AssignsWhatIsPressed) {
    openControl();
    open([this](QDialog& dialog) {
        waitForDevices(dialog, "Pedal (1234:abcd);");
        waitForReceived(dialog, "Nothing has been received");
        EXPECT_EQ(tabOrder(dialog), "lstPedalActions cmdAssignPedal spnPedalJump lstPedalDevices "
                                    "cmdOK cmdCancel ");
        EXPECT_TRUE(child<QLabel>(dialog, "lblPedalAdvice").text().isEmpty());
        clickOn(dialog, "cmdAssignPedal");
        waitForReceived(dialog, "Press it now, for: Play while held");
        QTest::keyClick(&dialog, Qt::Key_Return); // what the pedal types before it is heard
        pedals.tread(KEY_A);
        waitForReceived(dialog, "A is now: Play while held");
        QTest::keyClick(&actions(dialog), Qt::Key_Return); // and after that
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(pedalsOf(dialog, 0), "A (Pedal)");
        // The keyboard is free again.
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                QTest::keyClick(&actions(dialog), Qt::Key_Down);
                return actions(dialog).currentIndex().row() == 1;
            },
            20000));

        QTest::keyClick(&actions(dialog), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "Enter assigns, and does not press OK";
        waitForReceived(dialog, "Press it now, for: Wind back");
        pedals.tread(KEY_B);
        waitForReceived(dialog, "B is now: Wind back while held");
        devices(dialog).item(0)->setCheckState(Qt::Checked);
        child<QSpinBox>(dialog, "spnPedalJump").setValue(9);
        clickOn(dialog, "cmdOK");
    });
    EXPECT_EQ(kept(), "9;1234:abcd! 30=1 48=3");
    EXPECT_EQ(pedals.desk->assignments().text(), kept());
    EXPECT_TRUE(QTest::qWaitFor([this] { return pedals.inputs.isGrabbed("event3"); }, 20000));
    pedals.desk->setAssignments({});
    openControl();
    EXPECT_EQ(pedals.desk->assignments().text(), "9;1234:abcd! 30=1 48=3") << "the next time, too";
}

TEST_F(PedalsDialog, LeavesThingsAsTheyWere) {
    write("local.ini", "[OVSearch.ctrlOVSearch]\nPlayerPedals=9;1234:abcd 30=1\n");
    openControl();
    write("local.ini",
          "[OVSearch.ctrlOVSearch]\nPlayerPedals=9;1234:abcd 30=1 48=3\n"); // elsewhere
    open([this](QDialog& dialog) {
        pedals.inputs.plugIn("event4", {"Left", FakePedals::kind, {{EV_KEY, {KEY_C}}}});
        waitForDevices(dialog, "Pedal (1234:abcd);Left (1234:abcd);");
        devices(dialog).item(1)->setCheckState(Qt::Checked);
        EXPECT_EQ(devices(dialog).item(0)->checkState(), Qt::Checked) << "they are of one kind";
        pedals.inputs.pullOut("event4");
        waitForDevices(dialog, "Pedal (1234:abcd);");
        EXPECT_EQ(pedalsOf(dialog, 0), "A (Pedal)");
        EXPECT_EQ(pedalsOf(dialog, 1), "B (Pedal)");
        clickOn(dialog, "cmdAssignPedal");
        waitForReceived(dialog, "Press it now");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible()) << "Esc gives up what was asked for only";
        waitForReceived(dialog, "Nothing has been received");
        pedals.tread(KEY_B);
        waitForReceived(dialog, "Received: B (Pedal), for: Wind back");
        EXPECT_EQ(pedalsOf(dialog, 0), "A (Pedal)");
        clickOn(dialog, "cmdRemovePedal");
        EXPECT_EQ(pedalsOf(dialog, 0), "");
        EXPECT_EQ(dialog.focusWidget(), &actions(dialog));
        pedals.inputs.pullOut("event3");
        waitForText(dialog, "lblPedalAdvice", "No pedal was found");
        speakGerman(dialog);
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Fußpedale"));
        EXPECT_TRUE(isTidy(dialog));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(kept(), "9;1234:abcd 30=1 48=3");
    EXPECT_EQ(pedals.desk->assignments().text(), "9;1234:abcd 30=1");
}

// What a system tells whose devices are as a test wants them.
class ToldDevices final : public platform::InputDevices {
public:
    static inline platform::InputSituation situation;
    static inline platform::Status refusal;

    explicit ToldDevices(platform::InputListener& listener) : listener_(listener) {}
    void wish(platform::InputWish) override { listener_.situationChanged(situation); }

    static std::unique_ptr<platform::InputDevices>
    watch(platform::InputListener& listener, const std::string&, platform::Status& status) {
        status = refusal;
        return refusal.ok() ? std::make_unique<ToldDevices>(listener) : nullptr;
    }

private:
    platform::InputListener& listener_;
};

TEST_F(PedalsDialog, TellsWhyNothingIsReceivedAndWhatToDo) {
    static constexpr platform::InputModule module{
        ToldDevices::watch, [](std::uint32_t control) { return std::to_string(control); }};
    platform::installInputModule(&module);
    const platform::Status denied(EACCES, "event7", "Permission denied");
    const platform::Status busy(EBUSY, "Pedal", "Device or resource busy");
    const std::tuple<platform::InputSituation, platform::Status, const char*, const char*> cases[] =
        {{{},
          {ENOENT, "libOVSearchInput.so", "no such file"},
          "",
          "Nothing can be received: libOVSearchInput.so: no such file. Pedals need"},
         {{{}, {ENOENT, "/dev/input/", "No such file"}},
          {},
          "",
          "Nothing can be received: /dev/input/: No such file"},
         {{{{{1, 2}, "Keys", denied}, {{1, 3}, "Pedal", {}}}, {}},
          {},
          "Keys (0001:0002): may not be read;Pedal (0001:0003);",
          "Some devices may not be read."},
         {{{{{1, 2}, "Pedal", busy}, {{1, 3}, "Twin", {}}, {{1, 3}, "Twin", {}}}, {}},
          {},
          "Pedal (0001:0002): another program has it for itself;Twin (0001:0003);",
          ""}};
    openControl();
    for (const auto& [situation, refusal, names, advice] : cases) {
        SCOPED_TRACE(names);
        ToldDevices::situation = situation;
        ToldDevices::refusal = refusal;
        open([names = names, advice = advice](QDialog& dialog) {
            waitForText(dialog, "lblPedalAdvice", advice);
            waitForDevices(dialog, names);
        });
    }
}

} // namespace
} // namespace ov
