// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dialogs/details_dialog.h"
#include "dialogs/frmCriteria.h"
#include "dialogs/frmExportOptionsPrint.h"
#include "dialogs/frmSearchName.h"
#include "dialogs/frmSearchResultColumns.h"
#include "tests/wave_files.h"
#include "tests/window/window_fixture.h"
#include "widgets/help/shortcuts.h"

#include <QMetaEnum>

// What the windows say and how their parts behave, beside what somebody has looked through
// (looks.txt). OV_KEEP_LOOKS=1 writes that file anew; read what changed before it goes in.

namespace ov {
namespace {

constexpr const char* keptLooks = OV_SOURCE_DIR "/tests/window/looks.txt";
constexpr const char* lookedThroughIn = "6.4."; // others name some values otherwise

// Not sizes, places and colours, which are the desktop's.
constexpr const char* shownProperties =
    "windowTitle title text placeholderText toolTip whatsThis accessibleName accessibleDescription "
    "focusPolicy contextMenuPolicy mouseTracking textFormat alignment wordWrap indent checkable "
    "checked "
    "default autoDefault flat autoRaise popupMode readOnly maxLength clearButtonEnabled editable "
    "insertPolicy maxVisibleItems minimum maximum singleStep pageStep value suffix displayFormat "
    "calendarPopup orientation textVisible tracking selectionMode selectionBehavior editTriggers "
    "dragEnabled dragDropMode alternatingRowColors showGrid tabKeyNavigation sortingEnabled "
    "rootIsDecorated itemsExpandable uniformItemSizes textElideMode stretchLastSection "
    "highlightSections showSortIndicator modal acceptDrops";

const std::set<std::string> usual{"AlignLeading|AlignVCenter",
                                  "AutoText",
                                  "DefaultContextMenu",
                                  "InsertAtBottom",
                                  "NoDragDrop",
                                  "NoFocus"};

std::string oneLine(QString words) {
    return words.replace(u'\n', QLatin1String("\\n")).toStdString();
}

// Empty for what is as good as unset, and what a clock shows.
std::string valueOf(const QObject& object, const QMetaProperty& property) {
    const QVariant value = property.read(&object);
    if (object.inherits("QDateTimeEdit") && property.name() == QByteArray("text"))
        return {};
    if (!property.isEnumType()) {
        for (const QVariant& unset : {QVariant(false), QVariant(0), QVariant(-1)})
            if (value == unset)
                return {};
        return oneLine(value.toString());
    }
    const QMetaEnum names = property.enumerator();
    return property.isFlagType() ? names.valueToKeys(value.toInt()).toStdString()
                                 : std::string(names.valueToKey(value.toInt()));
}

std::string entriesOf(const QWidget& widget) {
    std::string all;
    if (const auto* list = qobject_cast<const QComboBox*>(&widget))
        for (int i = 0; i < list->count(); ++i)
            all += " | " + oneLine(list->itemText(i));
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
        view != nullptr && view->model() != nullptr && !view->inherits("QHeaderView"))
        for (int column = 0; column < view->model()->columnCount(); ++column)
            all += " | " + oneLine(view->model()->headerData(column, Qt::Horizontal).toString());
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label && label->buddy())
        all += " > " + label->buddy()->objectName().toStdString();
    for (const QAction* action : widget.actions())
        all += " | " + oneLine(action->text() + u' ' + action->shortcut().toString());
    return all;
}

bool isOurs(const QWidget& widget) {
    const bool says = widget.inherits("QLabel") || widget.inherits("QAbstractButton");
    return widget.inherits("QHeaderView") || widget.inherits("QGroupBox") ||
           (widget.objectName().isEmpty() ? says && !widget.property("text").toString().isEmpty()
                                          : !widget.objectName().startsWith(QLatin1String("qt_")));
}

void describe(const QWidget& widget, const QWidget& root, std::string& all) {
    if (isOurs(widget)) {
        all += widget.objectName().toStdString() + ": " + widget.metaObject()->className() +
               (widget.isVisibleTo(&root) ? "" : " hidden") +
               (widget.isEnabledTo(&root) ? "" : " disabled") +
               (root.focusWidget() == &widget ? " focused" : "") +
               (widget.windowFlags().testFlag(Qt::WindowContextHelpButtonHint) ? " ?" : "") +
               entriesOf(widget) + "\n";
        for (const QByteArray& name : QByteArray(shownProperties).split(' '))
            if (const int index = widget.metaObject()->indexOfProperty(name.constData());
                index >= 0)
                if (const auto value = valueOf(widget, widget.metaObject()->property(index));
                    !value.empty() && !usual.contains(value))
                    all += "  " + name.toStdString() + " " + value + "\n";
    }
    for (const QObject* below : widget.children())
        if (const auto* one = qobject_cast<const QWidget*>(below))
            if (!one->isWindow() || one->inherits("QMenu"))
                describe(*one, root, all);
}

class Looks : public WindowTest {
protected:
    std::string ofAllWindows() {
        frmCriteria editor;
        frmSearchResultColumns columns;
        frmExportOptionsPrint print;
        frmSearchName name(nullptr);
        DetailsDialog details("\\a\\2$ROH.WAV", nullptr);
        const std::initializer_list<QDialog*> dialogs{&editor, &columns, &print, &name, &details};
        for (QDialog* dialog : dialogs)
            dialog->show();
        widgets::showShortcuts(window());
        std::vector<QWidget*> windows{&window(), &widget<QDialog>("frmShortcuts")};
        windows.insert(windows.end(), dialogs.begin(), dialogs.end());
        std::string all;
        for (const char* language : {"9", "7"}) {
            speak(language);
            for (QWidget* one : windows) {
                if (QEvent change(QEvent::LanguageChange); language == std::string("7"))
                    QCoreApplication::sendEvent(one, &change);
                one->grab(); // what is read of an empty list is told as it is drawn
                all += std::string("== ") + language + "\n";
                describe(*one, *one, all);
            }
        }
        return all;
    }
};

TEST_F(Looks, AreAsTheyWereLookedThrough) {
    if (!QByteArray(qVersion()).startsWith(lookedThroughIn))
        GTEST_SKIP() << "they were looked through in Qt " << lookedThroughIn;
    openControl();
    const std::string now = ofAllWindows();
    if (std::getenv("OV_KEEP_LOOKS") != nullptr)
        std::ofstream(keptLooks, std::ios::binary) << now;
    std::istringstream is(now);
    std::istringstream was(readBytes(keptLooks));
    std::string line;
    std::string before;
    for (int number = 1; std::getline(is, line) && std::getline(was, before); ++number)
        ASSERT_EQ(line, before) << "line " << number;
    EXPECT_EQ(now, readBytes(keptLooks)) << "of another length";
}

} // namespace
} // namespace ov
