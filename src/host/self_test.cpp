// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/self_test.h"

#include "host/window/main_window.h"

#include <QApplication>
#include <QMessageBox>
#include <chrono>
#include <utility>

namespace ov::host {

namespace {

constexpr std::chrono::seconds patience{30};
// The window system has placed the window and everything is painted.
constexpr std::chrono::milliseconds settled{400};

// What a message box in front says, which nobody is there to answer.
QString question() {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    return box != nullptr ? box->text() : QStringLiteral("it asks nothing");
}

} // namespace

SelfTest::SelfTest(MainWindow& window, QString screenshot)
    : window_(window), screenshot_(std::move(screenshot)) {
    connect(&window_, &MainWindow::failed, this, &SelfTest::note);
    connect(&window_, &MainWindow::failed, this, &SelfTest::finish);
    connect(&window_, &MainWindow::controlReady, this, &SelfTest::finish);
    connect(&deadline_, &QTimer::timeout, this, [this] {
        note(QStringLiteral("the plug-in's control did not become ready; %1").arg(question()));
        savePicture();
        QCoreApplication::exit(); // also out of a message box that the plug-in asks
    });
    deadline_.setSingleShot(true);
    deadline_.start(patience);
}

void SelfTest::note(const QString& failure) {
    if (failure_.isEmpty())
        failure_ = failure;
}

// Called in the middle of the load; the rest happens when that is done.
void SelfTest::finish() {
    if (std::exchange(finishing_, true))
        return;
    QTimer::singleShot(screenshot_.isEmpty() ? std::chrono::milliseconds(0) : settled, this,
                       [this] {
                           savePicture();
                           deadline_.stop();
                           window_.close();
                       });
}

void SelfTest::savePicture() {
    if (!screenshot_.isEmpty() && !window_.grab().save(screenshot_))
        note(QStringLiteral("%1: the picture cannot be written").arg(screenshot_));
}

} // namespace ov::host
