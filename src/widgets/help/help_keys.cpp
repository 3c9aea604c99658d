// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/help/help_keys.h"

#include "widgets/help/guide_window.h"
#include "widgets/help/shortcuts.h"

#include <QApplication>
#include <QShortcut>
#include <QVariant>
#include <QWhatsThis>
#include <QWidget>

namespace ov::widgets {

namespace {

constexpr const char* chapterProperty = "ovChapter";

QString chapterOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget())
        if (const QVariant chapter = widget->property(chapterProperty); chapter.isValid())
            return chapter.toString();
    return QLatin1String(chapter::window);
}

void explainFocus() {
    QWidget* widget = QApplication::focusWidget();
    while (widget != nullptr && widget->whatsThis().isEmpty())
        widget = widget->parentWidget();
    if (widget != nullptr)
        QWhatsThis::showText(widget->mapToGlobal(widget->rect().center()), widget->whatsThis(),
                             widget);
}

} // namespace

void addHelpKeys(QWidget& root) {
    const auto add = [&root](const QKeySequence& key, auto slot) {
        auto* shortcut = new QShortcut(key, &root);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, &root, slot);
    };
    add(Qt::Key_F1, [&root] { showGuide(root, chapterOf(QApplication::focusWidget())); });
    add(Qt::SHIFT | Qt::Key_F1, [] { explainFocus(); });
    add(Qt::CTRL | Qt::Key_Slash, [&root] { showShortcuts(root); });
}

void setChapter(QWidget& widget, const char* chapter) {
    widget.setProperty(chapterProperty, QLatin1String(chapter));
}

} // namespace ov::widgets
