// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("CUPS_SERVER", "/nowhere"); // nothing comes out of a printer of the house,
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere"); // nor is one looked for
    qunsetenv("DBUS_SESSION_BUS_ADDRESS"); // nor does a player of the house see ours
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
