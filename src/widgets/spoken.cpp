// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/spoken.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QProgressBar>
#include <QVariant>

namespace ov::widgets {

namespace {

constexpr const char* roleProperty = "ovSpokenRole";

class WithRole final : public QAccessibleWidget {
public:
    explicit WithRole(QWidget* widget)
        : QAccessibleWidget(
              widget, static_cast<QAccessible::Role>(widget->property(roleProperty).toInt())) {}

    QString text(QAccessible::Text kind) const override {
        const auto* label = qobject_cast<const QLabel*>(widget());
        if (kind == QAccessible::Name && label != nullptr && label->accessibleName().isEmpty())
            return label->text();
        const auto* bar = qobject_cast<const QProgressBar*>(widget());
        if (kind == QAccessible::Name && bar != nullptr && bar->isTextVisible() &&
            !bar->text().isEmpty())
            return bar->accessibleName() + QStringLiteral(": ") + bar->text();
        return QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* makeWithRole(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    return widget != nullptr && widget->property(roleProperty).isValid() ? new WithRole(widget)
                                                                         : nullptr;
}

} // namespace

void setSpokenRole(QWidget& widget, QAccessible::Role role) {
    static const bool installed = [] {
        QAccessible::installFactory(&makeWithRole);
        return true;
    }();
    static_cast<void>(installed);
    widget.setProperty(roleProperty, static_cast<int>(role));
}

// A name that changes is for braille, a notification that appears for speech.
void announce(QLabel& label) {
    QAccessibleEvent named(&label, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&named);
    if (label.text().isEmpty() || !label.isVisible())
        return;
    QAccessibleEvent shown(&label, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

// By a label of the widget around it, which has no place to be seen in.
void announce(const QWidget& about, const QString& text) {
    const QString name = QStringLiteral("lblAnnouncement");
    QWidget* around = about.parentWidget();
    auto* label = around->findChild<QLabel*>(name, Qt::FindDirectChildrenOnly);
    if (label == nullptr) {
        label = new QLabel(around);
        label->setObjectName(name);
        label->setTextFormat(Qt::PlainText);
        setSpokenRole(*label, QAccessible::Notification);
        label->resize(0, 0);
        label->show();
    }
    label->setText(text);
    announce(*label);
}

void setSpokenHint(QWidget& list, const QString& hint) {
    if (list.accessibleDescription() != hint)
        list.setAccessibleDescription(hint);
}

} // namespace ov::widgets
