// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/window/window_fixture.h"
#include "widgets/window_interface.h"

#include <QMessageBox>

namespace ov::widgets {
namespace {

using platform::MessageAnswer;

QMessageBox* openBox() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<QMessageBox*>(window); box != nullptr && box->isVisible())
            return box;
    return nullptr;
}

class Boxes : public tests::WindowTest {
protected:
    const std::shared_ptr<WindowInterface> windows_ = WindowInterface::shared();
};

TEST_F(Boxes, AreAnsweredByKeys) {
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
}

} // namespace
} // namespace ov::widgets
