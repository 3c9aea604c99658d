// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/shortcuts_portal.h"

#include "widgets/text.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <QPointer>
#include <array>
#include <utility>

namespace ov {

// As the portal takes them, (sa{sv}). D-Bus wants both ways.
struct PortalShortcut {
    QString id;
    QVariantMap options;
};
QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.options;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.options;
    argument.endStructure();
    return argument;
}

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* shortcutsInterface = "org.freedesktop.portal.GlobalShortcuts";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";
constexpr const char* sessionInterface = "org.freedesktop.portal.Session";
constexpr uint cancelledByUser = 1;

// Desktops remember keys by these ids.
struct Offered {
    const char* id;
    PedalAction action;
};
constexpr std::array offered{
    Offered{"play-pause", PedalAction::playOrPause}, Offered{"back", PedalAction::jumpBack},
    Offered{"forward", PedalAction::jumpForward}, Offered{"time-stamp", PedalAction::timeStamp}};

// The one that has asked: a desktop asks the user for each session.
QPointer<ShortcutsPortal>& asker() {
    static QPointer<ShortcutsPortal> one;
    return one;
}

QString describe(PedalAction action) {
    for (const PedalActionText& known : pedalActions())
        if (known.action == action)
            return widgets::text(known.text);
    return {};
}

} // namespace

ShortcutsPortal::ShortcutsPortal(BusConnection& bus) : bus_(bus) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    connect(&bus_, &BusConnection::signalled, this, &ShortcutsPortal::take);
}

void ShortcutsPortal::begin(const QString& name) {
    name_ = name;
    end();
}

void ShortcutsPortal::end() {
    session_.clear();
    step_ = Step::idle;
    if (asker() == this)
        asker() = nullptr;
}

// Signals are taken from anybody, since a name is looked up by a call that waits: who is on the bus
// could drive the player anyway.
void ShortcutsPortal::offer() {
    if (!canOffer())
        return;
    if (asker() && asker() != this) {
        connect(asker(), &QObject::destroyed, this, &ShortcutsPortal::freed, Qt::UniqueConnection);
        return;
    }
    asker() = this;
    step_ = Step::creating;
    bus_.listen({{}, requestPath(), QLatin1String(requestInterface), QStringLiteral("Response")});
    bus_.listen({{},
                 QLatin1String(portalPath),
                 QLatin1String(shortcutsInterface),
                 QStringLiteral("Activated")});
    ask("CreateSession", {},
        {{QStringLiteral("session_handle_token"), QStringLiteral("ovsearch")}});
}

// Both requests have the same one, one after the other.
QString ShortcutsPortal::requestPath() const {
    QString sender = name_;
    sender.remove(u':').replace(u'.', u'_');
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/ovsearch").arg(sender);
}

void ShortcutsPortal::ask(const char* method, QVariantList arguments, QVariantMap options) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(QLatin1String(service), QLatin1String(portalPath),
                                       QLatin1String(shortcutsInterface), QLatin1String(method));
    options.insert(QStringLiteral("handle_token"), QStringLiteral("ovsearch"));
    arguments.append(options);
    call.setArguments(arguments);
    bus_.send(call);
}

void ShortcutsPortal::bind() {
    QList<PortalShortcut> shortcuts;
    for (const Offered& one : offered)
        shortcuts.append(
            {QLatin1String(one.id), {{QStringLiteral("description"), describe(one.action)}}});
    step_ = Step::binding;
    ask("BindShortcuts",
        {QVariant::fromValue(QDBusObjectPath(session_)), QVariant::fromValue(shortcuts), QString()},
        {});
}

void ShortcutsPortal::take(const QDBusMessage& signal) {
    if (signal.member() == QLatin1String("Response")) {
        if (signal.path() == requestPath() && signal.signature() == QLatin1String("ua{sv}"))
            answered(signal.arguments().at(0).toUInt(),
                     qdbus_cast<QVariantMap>(signal.arguments().at(1).value<QDBusArgument>()));
        return;
    }
    if (signal.member() == QLatin1String("Closed") && signal.path() == session_)
        return end();
    if (signal.member() != QLatin1String("Activated") || session_.isEmpty() ||
        signal.signature() != QLatin1String("osta{sv}") ||
        signal.arguments().at(0).value<QDBusObjectPath>().path() != session_)
        return;
    for (const Offered& one : offered)
        if (signal.arguments().at(1).toString() == QLatin1String(one.id))
            Q_EMIT pressed(one.action);
}

void ShortcutsPortal::answered(uint response, const QVariantMap& results) {
    if (step_ == Step::creating && response == 0) {
        session_ = results.value(QStringLiteral("session_handle")).toString();
        bus_.listen({{}, session_, QLatin1String(sessionInterface), QStringLiteral("Closed")});
        return bind();
    }
    if (step_ == Step::binding && response == cancelledByUser)
        Q_EMIT declined();
    step_ = Step::done;
}

} // namespace ov
