// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/ctrlOVSearch.h"
#include "dictation/criterion.h"
#include "dictation/field_table.h"
#include "platform/locale.h"
#include "support/modFilePath.h"
#include "support/modLanguage.h"
#include "support/modUtil.h"
#include "tests/fake_host.h"
#include "tests/recording_interface.h"
#include "tests/settings_fixture.h"
#include "tests/temporary_store.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ov::tests {

// A host with a store, settings and the English language, and no control yet.
class WindowTest : public SettingsTest {
public:
    WindowTest() {
        platform::setLocale(platform::Locale{platform::DateOrder::dayMonthYear, '.', true, false,
                                             "AM", "PM", ',', 1});
        host().answers = {{"PI_GetLanguage", "9"},
                          {"PI_GetLocalINIFile", path("local.ini")},
                          {"PI_GetDirectory(204)", store.directory()},
                          {"PI_GetDirectory(32)", path("")}};
        modLanguage::SetLanguage(9, 0);
        modLanguage::LoadLanguageFile();
        modDictation::BuildSearchFieldTable();
    }
    ~WindowTest() override {
        control_ = nullptr;
        modDictation::resetSearchFieldTable();
        modUtil::reset();
        modLanguage::reset();
        platform::setLocale(std::nullopt);
    }
    WindowTest(const WindowTest&) = delete;
    WindowTest& operator=(const WindowTest&) = delete;

    FakeHost& host() { return *plugIn_.host; }

    // Shows a new control to the user and answers its boxes from `user`.
    void openControl() {
        control_ = makeControl(nullptr);
        control_->IFormExtension_Init(plugIn_.connector, host());
        window().resize(900, 700);
        window().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
        user = std::make_unique<RecordingInterface>([] { QCoreApplication::processEvents(); });
    }
    void closeControl() {
        user = nullptr;
        control_ = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QWidget& window() { return *static_cast<QWidget*>(control_->IFormExtension_Window()); }

    template <typename Widget>
    Widget& widget(const char* name) {
        auto* found = window().findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr)
            throw std::runtime_error(std::string("no widget ") + name);
        return *found;
    }

    // Tells the control as the host would.
    void action(std::string_view parameter) { host().events.action(2, parameter); }

    TemporaryStore store;
    std::unique_ptr<RecordingInterface> user;

protected:
    StartedPlugIn plugIn_;
    std::shared_ptr<IFormExtension> control_;
};

template <typename Widget>
Widget& child(QWidget& window, const char* name) {
    auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr)
        throw std::runtime_error(std::string("no widget ") + name);
    return *found;
}

// Runs `open`, which shows a modal dialog, and drives that dialog with `drive`.
inline void withDialog(const std::function<void()>& open,
                       const std::function<void(QDialog&)>& drive) {
    bool met = false;
    QTimer::singleShot(0, [&] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            met = true;
            drive(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        }
    });
    open();
    EXPECT_TRUE(met) << "no dialog came up";
}

// Chooses the entry that carries `id`, as a click on it would.
inline void choose(QComboBox& list, int id) {
    list.setCurrentIndex(list.findData(id));
}

// A criteria string with "|" for its separator, as tests read better.
inline std::string bars(std::string text) {
    std::replace(text.begin(), text.end(), modDictation::criteriaSeparator, '|');
    return text;
}
inline std::string criterion(std::string text) {
    std::replace(text.begin(), text.end(), '|', modDictation::criteriaSeparator);
    return text;
}

} // namespace ov::tests
