// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/captions.h"

#include "widgets/text.h"

#include <QEvent>
#include <QVariant>
#include <QWidget>
#include <array>
#include <utility>

namespace ov::widgets {

namespace {

// Where an object keeps a number, and the property that shows its text.
struct Role {
    const char* number;
    const char* shown; // nullptr: as captionProperty() says
};

constexpr Role caption{"ovCaption", nullptr};
constexpr Role tip{"ovTip", "toolTip"};
constexpr Role spokenName{"ovSpokenName", "accessibleName"};

const char* captionProperty(const QObject& object) {
    if (const auto* widget = qobject_cast<const QWidget*>(&object);
        widget != nullptr && widget->isWindow() && !widget->inherits("QMenu"))
        return "windowTitle";
    return object.metaObject()->indexOfProperty("title") >= 0 ? "title" : "text";
}

// Words that are spoken have neither marks of keys nor the colon of a label.
QString wordsOf(const Role& role, std::int32_t textId) {
    QString words = role.shown == spokenName.shown ? plainText(textId) : text(textId);
    if (role.shown == spokenName.shown && words.endsWith(QLatin1Char(':')))
        words.chop(1);
    return words;
}

void apply(QObject& object, const Role& role) {
    const QVariant number = object.property(role.number);
    if (number.isValid())
        object.setProperty(role.shown != nullptr ? role.shown : captionProperty(object),
                           wordsOf(role, number.toInt()));
}

void give(QObject& object, const Role& role, std::int32_t textId) {
    object.setProperty(role.number, textId);
    apply(object, role);
}

class LanguageFollower final : public QObject {
public:
    LanguageFollower(QWidget& widget, std::function<void()> retranslate)
        : QObject(&widget), retranslate_(std::move(retranslate)) {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject* widget, QEvent* event) override {
        if (event->type() != QEvent::LanguageChange)
            return false;
        widget->event(event);
        retranslate_();
        return true;
    }

private:
    std::function<void()> retranslate_;
};

} // namespace

void setCaption(QObject& object, std::int32_t textId) {
    give(object, caption, textId);
}

void setTip(QObject& object, std::int32_t textId) {
    give(object, tip, textId);
}

void setSpokenName(QWidget& widget, std::int32_t textId) {
    give(widget, spokenName, textId);
}

void translate(QWidget& root) {
    root.setLocale(languageLocale());
    QList<QObject*> objects = root.findChildren<QObject*>();
    objects.append(&root);
    for (QObject* object : std::as_const(objects))
        for (const Role& role : {caption, tip, spokenName})
            apply(*object, role);
}

void followLanguage(QWidget& widget, std::function<void()> retranslate) {
    new LanguageFollower(widget, std::move(retranslate));
}

QString indexedName(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

} // namespace ov::widgets
