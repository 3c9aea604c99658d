// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/ctrlOVSearch.h"
#include "dictation/field_table.h"
#include "dictation/search/criterion.h"
#include "platform/locale.h"
#include "support/language/modLanguage.h"
#include "support/modFilePath.h"
#include "support/modUtil.h"
#include "tests/fake_host.h"
#include "tests/recording_interface.h"
#include "tests/settings_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

namespace ov::tests {

template <typename Widget>
Widget& child(QWidget& window, const char* name) {
    auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
    if (found == nullptr)
        throw std::runtime_error(std::string("no widget ") + name);
    return *found;
}
inline void clickOn(QWidget& window, const char* button) {
    child<QAbstractButton>(window, button).click();
}
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
    FakeHost& host() { return *plugIn_.host; }

    // Shows a new control, in place of the one before, and answers its boxes from `user`.
    void openControl() {
        closeControl();
        plugIn_.caller = nullptr; // the control calls in its own name
        control_ = makeControl(nullptr);
        control_->IFormExtension_Init(plugIn_.connector, host());
        window().resize(900, 700);
        window().show();
        window().activateWindow(); // where no window manager does
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
        user = std::make_unique<RecordingInterface>([] { QCoreApplication::processEvents(); });
    }
    void closeControl() {
        user = nullptr;
        control_ = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Commands run from the event loop.
    void press(const char* name) {
        QTest::mouseClick(&widget<QPushButton>(name), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    void search() { press("cmdSearchOptions(0)"); }
    void searchAll() {
        user->saysYes = true;
        search();
        user->saysYes = false;
    }
    void openAndSearch() {
        openControl();
        searchAll();
    }
    QTableView& results() { return widget<QTableView>("lvSearchResult"); }
    // Does `act` inside the first call to the host that begins so while `run` is at work.
    void inCall(const std::string& beginning, const std::function<void()>& run,
                const std::function<void()>& act) {
        bool reached = false;
        host().onCall = [&](const std::string& call) {
            if (reached || !call.starts_with(beginning))
                return;
            reached = true;
            act();
        };
        run();
        host().onCall = nullptr;
        EXPECT_TRUE(reached) << beginning;
    }
    // The same while a search walks.
    void inSearch(const std::function<void()>& run, const std::function<void()>& act) {
        inCall("PI_ProgressText", run, act);
    }
    // Clicks the head of the column that stands there.
    void clickHeader(int column) {
        QHeaderView* header = results().horizontalHeader();
        results().scrollTo(results().model()->index(0, column));
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 8, 8});
        QCoreApplication::processEvents();
    }
    static void rightClick(QWidget& on) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, on.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&on, &event);
    }
    static QMenu& popup() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr)
            throw std::runtime_error("no menu is open");
        return *menu;
    }
    // Without the mark of its key.
    static std::string entryText(const QAction& action) {
        QString text = action.text().replace(QLatin1String("&&"), QLatin1String("\x01"));
        return text.remove(u'&').replace(u'\x01', u'&').toStdString();
    }
    // Clicks the entry of the open menu that has this in its text.
    static void click(const char* entry) {
        QMenu& menu = popup();
        for (QAction* action : menu.actions())
            if (entryText(*action).find(entry) != std::string::npos) {
                menu.setActiveAction(action);
                if (action->menu() == nullptr)
                    QTest::mouseClick(&menu, Qt::LeftButton, {},
                                      menu.actionGeometry(action).center());
                QCoreApplication::processEvents();
                return;
            }
        FAIL() << entry;
    }
    // Triggers an entry below the one of that name in the open menu, or below any.
    static void trigger(const char* entry, const char* above = nullptr) {
        for (const QAction* action : popup().actions())
            if (action->menu() && (above == nullptr || entryText(*action) == above))
                for (QAction* below : action->menu()->actions())
                    if (entryText(*below).find(entry) != std::string::npos)
                        below->trigger();
        popup().close();
        QCoreApplication::processEvents();
    }
    static void key(QWidget& on, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&on, key, modifiers);
        QCoreApplication::processEvents();
    }
    QWidget& window() { return *static_cast<QWidget*>(control_->IFormExtension_Window()); }

    template <typename Widget>
    Widget& widget(const char* name) {
        return child<Widget>(window(), name);
    }

    // Tells the control as the host would.
    void action(std::string_view parameter) { host().events.action(2, parameter); }
    void speak(const char* language) {
        host().answers["PI_GetLanguage"] = language;
        action("language");
    }

    TemporaryStore store;
    std::unique_ptr<RecordingInterface> user;

protected:
    StartedPlugIn plugIn_;
    std::shared_ptr<IFormExtension> control_;
};

// Runs `open`, which shows a modal dialog, and drives that dialog with `drive`. With a name, other
// dialogs that come before are let pass.
inline void withDialog(const std::function<void()>& open,
                       const std::function<void(QDialog&)>& drive, const char* name = nullptr) {
    QTimer look;
    look.callOnTimeout([&] {
        const QPointer<QDialog> dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || (name != nullptr && dialog->objectName() != QLatin1String(name)))
            return;
        look.stop();
        drive(*dialog);
        if (dialog && dialog->isVisible())
            dialog->reject();
    });
    look.start(0);
    open();
    QCoreApplication::processEvents();
    EXPECT_FALSE(look.isActive()) << "no dialog came up";
}

// The widgets that Tab goes to, from the one that has the focus until it comes round.
inline std::string tabOrder(QWidget& window) {
    std::string names;
    const QWidget* first = window.focusWidget();
    constexpr int most = 30;
    for (int i = 0; i < most && (i == 0 || window.focusWidget() != first); ++i) {
        const std::string name = window.focusWidget()->objectName().toStdString() + " ";
        if (!names.ends_with(name)) // parts of a date
            names += name;
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    return names;
}

// Title and texts of a window as they are read, "label>widget" where the label's key leads to one.
inline std::string readable(const QWidget& window) {
    QString all = window.windowTitle();
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool hasText = label != nullptr || qobject_cast<const QAbstractButton*>(widget) ||
                             qobject_cast<const QGroupBox*>(widget);
        const QString text =
            widget->property("text").toString() + widget->property("title").toString();
        if (!hasText || !widget->isVisible() || text.isEmpty())
            continue;
        all += u'|' + text;
        if (label != nullptr && label->buddy() != nullptr)
            all += u'>' + label->buddy()->objectName();
    }
    return all.toStdString();
}

// Switches a window to German, as the control does with its dialogs.
inline void speakGerman(QWidget& window) {
    modLanguage::SetLanguage(7, 0);
    modDictation::BuildSearchFieldTable();
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&window, &change);
}

// Fits the smallest screen, without the frame, and nothing lies over something else.
inline bool isTidy(const QWidget& window) {
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (const QWidget* one : widgets)
        for (const QWidget* other : widgets)
            if (one < other && one->parent() == other->parent() && one->isVisible() &&
                other->isVisible() && one->geometry().intersects(other->geometry())) {
                ADD_FAILURE() << one->objectName().toStdString() << " and "
                              << other->objectName().toStdString();
                return false;
            }
    return window.minimumSizeHint().width() <= 640 && window.minimumSizeHint().height() <= 450;
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

namespace ov {
using namespace tests;
} // namespace ov
