// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/window/window_fixture.h"
#include "widgets/window_interface.h"

#include <QMessageBox>

namespace ov::widgets {
namespace {

using platform::MessageAnswer;

QList<QMessageBox*> openBoxes() {
    QList<QMessageBox*> open;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<QMessageBox*>(window); box != nullptr && box->isVisible())
            open << box;
    return open;
}

QMessageBox* openBox() {
    return openBoxes().value(0);
}

class Boxes : public tests::WindowTest {
public:
    ~Boxes() override {
        windows_->closeBoxes(nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

protected:
    const std::shared_ptr<WindowInterface> windows_ = WindowInterface::shared();
};

TEST_F(Boxes, AreAnsweredByKeys) {
    EXPECT_EQ(WindowInterface::shared(), windows_) << "one for all controls";
    platform::MessageBox box;
    box.text = "Really?";
    box.buttons = platform::MessageButtons::yesNo;
    for (const MessageAnswer byDefault : {MessageAnswer::yes, MessageAnswer::no})
        for (const Qt::Key pressed : {Qt::Key_Return, Qt::Key_Escape}) {
            box.defaultAnswer = byDefault;
            QTimer::singleShot(0, [pressed] { QTest::keyClick(openBox(), pressed); });
            EXPECT_EQ(windows_->showMessage(box),
                      pressed == Qt::Key_Return ? byDefault : MessageAnswer::no);
        }
}

TEST_F(Boxes, AskInTheLanguageThatIsChosenMeanwhile) {
    platform::MessageBox box;
    box.text = "Really?";
    box.buttons = platform::MessageButtons::yesNo;
    QStringList asked;
    QTimer::singleShot(0, [&] {
        QMessageBox& shown = *openBox();
        speakGerman(shown);
        for (const QAbstractButton* button : shown.buttons())
            asked << button->text();
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    windows_->showMessage(box);
    EXPECT_EQ(asked, QStringList({QStringLiteral("&Ja"), QStringLiteral("&Nein")}));
}

TEST(LastWindow, GivesWayToWhoWasThereBefore) {
    const tests::RecordingInterface before;
    {
        const auto windows = WindowInterface::shared();
        EXPECT_EQ(&platform::userInterface(), windows.get());
    }
    EXPECT_EQ(&platform::userInterface(), &before);
}

TEST_F(Boxes, GoOnceTheyAreRead) {
    platform::MessageBox box;
    box.text = "Read this.";
    windows_->tell(box);
    const QPointer<QMessageBox> notice = openBox();
    ASSERT_FALSE(notice.isNull());
    windows_->tell(box);
    QTest::keyClick(notice, Qt::Key_Return);
    EXPECT_EQ(openBox(), nullptr) << "only once";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(notice.isNull());
    windows_->changeLanguage(nullptr);
    windows_->tell(box);
    EXPECT_FALSE(openBox()->testAttribute(Qt::WA_QuitOnClose)) << "the program goes on";
    box.text = "And this.";
    windows_->tell(box);
    EXPECT_EQ(openBoxes().size(), 2);
}

TEST_F(Boxes, SayWhatTheyAreInEachLanguage) {
    QWidget owner;
    platform::MessageBox box;
    box.title = "A file";
    box.text = "<b>.WAV\r\nis gone.";
    box.icon = platform::MessageIcon::exclamation;
    box.translate = [](platform::MessageBox& words) { words.text = "Weg."; };
    for (QWidget* parent : {&owner, static_cast<QWidget*>(nullptr)}) {
        box.owner = parent;
        windows_->tell(box);
        QMessageBox& shown = *openBox();
        EXPECT_EQ(shown.parentWidget(), parent);
        EXPECT_EQ(shown.windowFlags().testFlag(Qt::WindowStaysOnTopHint), parent == nullptr);
        EXPECT_EQ(shown.windowTitle(), QStringLiteral("A file"));
        EXPECT_EQ(shown.text(), QStringLiteral("<b>.WAV\nis gone."));
        EXPECT_EQ(shown.textFormat(), Qt::PlainText);
        EXPECT_EQ(shown.icon(), QMessageBox::Warning);
        windows_->changeLanguage(&owner);
        EXPECT_EQ(shown.text(), QStringLiteral("<b>.WAV\nis gone.")) << "of another one";
        windows_->changeLanguage(nullptr);
        EXPECT_EQ(shown.text(), QStringLiteral("Weg."));
        windows_->closeBoxes(&owner);
        EXPECT_TRUE(shown.isVisible()) << "another one's";
        windows_->closeBoxes(nullptr);
        EXPECT_EQ(openBox(), nullptr);
    }
}

} // namespace
} // namespace ov::widgets
