// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/details_dialog.h"
#include "dialogs/frmCriteria.h"
#include "dialogs/frmExportOptionsPrint.h"
#include "dialogs/frmSearchResultColumns.h"
#include "tests/window/window_fixture.h"
#include "widgets/help/guide_window.h"
#include "widgets/help/shortcuts.h"

#include <QAccessible>
#include <QRegularExpression>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QWhatsThis>

namespace ov {
namespace {

class Help : public WindowTest {
protected:
    // The heading at the upper edge of the guide's window that `owner` has open.
    static std::string headingShown(QWidget& owner) {
        auto& page = child<QTextBrowser>(child<QDialog>(owner, "frmGuide"), "");
        const QString shown = page.cursorForPosition({4, 4}).block().text();
        EXPECT_EQ(page.textCursor().block().text(), shown) << "a screen reader reads on from there";
        return shown.toStdString();
    }
};

std::set<std::string> keysInTheCode() {
    std::set<std::string> all;
    for (const widgets::KeyText& keyText : widgets::keyTexts())
        for (const QKeySequence& key : widgets::keysOf(keyText))
            all.insert(key.toString().toStdString());
    return all;
}

// The first column of the table in the chapter about the window.
std::set<std::string> keysInTheGuide() {
    const QString chapter = widgets::guideText()
                                .section(QStringLiteral("## In the window"), 1)
                                .section(QStringLiteral("\n## "), 0, 0);
    static const QRegularExpression row(QStringLiteral("^\\| ([^|]+) \\|"),
                                        QRegularExpression::MultilineOption);
    std::set<std::string> all;
    auto rows = row.globalMatch(chapter);
    rows.next(); // the heading
    while (rows.hasNext())
        for (QString key : rows.next().captured(1).split(QStringLiteral(", ")))
            all.insert(
                key.replace(QStringLiteral("Enter"), QStringLiteral("Return")).toStdString());
    return all;
}

TEST_F(Help, TellsAllKeysInTheGuideAndInTheirWindow) {
    EXPECT_EQ(keysInTheCode(), keysInTheGuide());
    openControl();
    for (const QShortcut* shortcut : window().findChildren<QShortcut*>())
        EXPECT_TRUE(keysInTheCode().contains(shortcut->key().toString().toStdString()))
            << shortcut->key().toString().toStdString();
    key(results(), Qt::Key_Slash, Qt::ControlModifier);
    auto& list = widget<QTreeWidget>("lstShortcuts");
    std::size_t entries = 0;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        entries += static_cast<std::size_t>(list.topLevelItem(i)->childCount());
    EXPECT_EQ(entries, widgets::keyTexts().size());
    const QTreeWidgetItem& first = *list.topLevelItem(0)->child(0);
    EXPECT_EQ(first.text(0) + first.text(1),
              QStringLiteral("F5, Ctrl+FFind the dictations that meet the criteria"));
    for (const QTreeWidgetItem* entry :
         list.findItems(QStringLiteral("…"), Qt::MatchEndsWith | Qt::MatchRecursive, 1))
        ADD_FAILURE() << entry->text(1).toStdString() << " names a button, not what it does";
    EXPECT_EQ(list.window()->windowTitle(), QStringLiteral("Keyboard shortcuts"));
    EXPECT_EQ(list.accessibleName(), list.window()->windowTitle());
    list.setCurrentItem(list.topLevelItem(0));
    QTest::keyClick(&list, Qt::Key_Left);
    EXPECT_TRUE(list.topLevelItem(0)->isExpanded()) << "nothing folds away";
    QTest::keyClick(&list, Qt::Key_Escape);
    EXPECT_FALSE(list.isVisible());
}

TEST_F(Help, OpensTheGuideWhereItSpeaksOfWhatHasTheKeyboard) {
    openControl();
    for (const auto& [name, heading] : {std::pair("lvSearchCriteria", "Criteria"),
                                        {"lvSearchResult", "In the window"},
                                        {"cmdSearchOptions(2)", "In the window"}}) {
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        widget<QWidget>(name).setFocus();
        key(widget<QWidget>(name), Qt::Key_F1);
        EXPECT_EQ(headingShown(window()), heading) << name;
        window().activateWindow();
        widgets::showGuide(window(), QStringLiteral("What a store is")); // the same window again
        EXPECT_TRUE(QTest::qWaitForWindowActive(&widget<QDialog>("frmGuide")));
        EXPECT_EQ(headingShown(window()), "What a store is");
        EXPECT_FALSE(widget<QDialog>("frmGuide").windowTitle().isEmpty());
        key(widget<QDialog>("frmGuide"), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    frmExportOptionsPrint print;
    frmCriteria editor;
    for (const auto& [dialog, heading] :
         {std::pair<QDialog&, const char*>(print, "Lists on paper and in files"),
          {editor, "Criteria"}}) {
        dialog.show();
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        key(dialog, Qt::Key_F1);
        EXPECT_EQ(headingShown(dialog), heading);
    }
    control_ = nullptr; // the host lets go while the guide is open
}

TEST_F(Help, WindowsFollowLinksAndTheLanguage) {
    openControl();
    const auto press = [this](Qt::Key what, Qt::KeyboardModifiers with) {
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        key(results(), what, with);
    };
    press(Qt::Key_F1, {});
    auto& page = child<QTextBrowser>(widget<QDialog>("frmGuide"), "");
    static const QRegularExpression links(QStringLiteral("\\]\\((#[^)]+)\\)"));
    for (auto all = links.globalMatch(widgets::guideText()); all.hasNext();) {
        const std::string before = headingShown(window());
        const QString link = all.next().captured(1);
        Q_EMIT page.anchorClicked(QUrl(link));
        EXPECT_NE(headingShown(window()), before) << link.toStdString();
    }
    for (const char* link : {"criteria.md#criteria", "#none"}) {
        Q_EMIT page.anchorClicked(QUrl(QLatin1String(link)));
        EXPECT_EQ(headingShown(window()), "Criteria") << link;
    }
    EXPECT_LE(page.document()->idealWidth(), page.viewport()->width()) << "pictures fit";
    EXPECT_GT(page.document()->idealWidth(), page.viewport()->width() * 0.9);
    press(Qt::Key_Slash, Qt::ControlModifier);
    press(Qt::Key_Slash, Qt::ControlModifier);
    const QPointer<QTreeWidget> list = &widget<QTreeWidget>("lstShortcuts");
    EXPECT_EQ(window().findChildren<QDialog*>(QStringLiteral("frmShortcuts")).size(), 1);
    EXPECT_EQ(list->size(), list->window()->size());
    const int groups = list->topLevelItemCount();
    speak("7");
    EXPECT_EQ(list->headerItem()->text(0), QStringLiteral("Tasten"));
    EXPECT_EQ(list->topLevelItemCount(), groups);
    if (list->width() < list->screen()->availableSize().width()) {
        EXPECT_GE(list->columnWidth(1), static_cast<QAbstractItemView&>(*list).sizeHintForColumn(1))
            << "no text is cut";
    }
    EXPECT_EQ(list->accessibleName(), list->window()->windowTitle());
    EXPECT_EQ(page.window()->windowTitle(), QStringLiteral("OVSearch-Handbuch (englisch)"));
    EXPECT_EQ(page.accessibleName(), page.window()->windowTitle());
    list->window()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(list, nullptr);
}

TEST_F(Help, ExplainsWhatHasTheKeyboard) {
    openControl();
    const auto bubble = [] {
        for (QWidget* one : QApplication::topLevelWidgets())
            if (one->inherits("QWhatsThat") && one->isVisible())
                return one;
        return static_cast<QWidget*>(nullptr);
    };
    QImage of[2];
    for (const int button : {0, 2}) {
        auto& focused =
            widget<QPushButton>(("cmdSearchOptions(" + std::to_string(button) + ")").c_str());
        focused.setFocus();
        EXPECT_EQ(bubble(), nullptr);
        key(focused, Qt::Key_F1, Qt::ShiftModifier);
        ASSERT_NE(bubble(), nullptr);
        of[button / 2] = bubble()->grab().toImage();
        QWhatsThis::hideText();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_NE(of[0], of[1]) << "each its own words";
    window().setWhatsThis(QStringLiteral("All of it"));
    QApplication::focusWidget()->setWhatsThis({});
    key(*QApplication::focusWidget(), Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_NE(bubble(), nullptr) << "the words of what it is in";
    QWhatsThis::hideText();
}

// Tab goes to it, and it is no part of another control.
bool isForTheUser(const QWidget& control) {
    return control.isVisible() && (control.focusPolicy() & Qt::TabFocus) != 0 &&
           control.focusProxy() == nullptr &&
           !control.objectName().startsWith(QLatin1String("qt_")) &&
           !control.inherits("QHeaderView") && !control.inherits("QSplitter");
}

// Each that Tab goes to has a name for those who hear it, and says what it is for.
TEST_F(Help, NamesAndExplainsEveryControl) {
    openControl();
    frmCriteria editor;
    frmSearchResultColumns columns;
    frmExportOptionsPrint print;
    DetailsDialog details("\\a\\2$ROH.WAV", nullptr);
    for (QDialog* dialog : std::initializer_list<QDialog*>{&editor, &columns, &print, &details})
        dialog->show();
    EXPECT_TRUE(child<QPushButton>(details, "cmdClose").isDefault());
    for (const QWidget* root :
         std::initializer_list<QWidget*>{&window(), &editor, &columns, &print, &details})
        for (QWidget* control : root->findChildren<QWidget*>())
            if (isForTheUser(*control)) {
                const QString name =
                    QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
                EXPECT_TRUE(!name.isEmpty() && !control->accessibleName().endsWith(u':'))
                    << control->objectName().toStdString() << " is called " << name.toStdString();
                EXPECT_FALSE(control->whatsThis().isEmpty())
                    << control->objectName().toStdString() << " has no line in explanations.cpp";
            }
    QWidget* choice = widget<QRadioButton>("optCriteriaCompare(0)").parentWidget();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(choice)->role(), QAccessible::Grouping);
}

} // namespace
} // namespace ov
