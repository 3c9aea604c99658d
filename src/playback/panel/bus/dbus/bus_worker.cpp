// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/bus_worker.h"

#include "playback/panel/bus/dbus/bus_probe.h"

#include <QUuid>
#include <algorithm>
#include <utility>

namespace ov {

namespace {

// Between attempts: a bus comes back soon, or with the next session.
constexpr std::chrono::milliseconds firstPause{500};
constexpr std::chrono::milliseconds longestPause{60000};

} // namespace

BusWorker::BusWorker(QString address, QString path, QString description)
    : address_(std::move(address)),
      path_(std::move(path)),
      description_(std::move(description)),
      again_(this),
      pause_(firstPause) {
    again_.setSingleShot(true);
    connect(&again_, &QTimer::timeout, this, &BusWorker::open);
}

BusWorker::~BusWorker() {
    close();
}

void BusWorker::open() {
    if (!busAnswers(address_.toStdString()))
        return tryLater();
    const QString name = QLatin1String("ovsearch-player-") + QUuid::createUuid().toString();
    bus_ = QDBusConnection::connectToBus(address_, name);
    if (!bus_->isConnected()) {
        close();
        return tryLater();
    }
    pause_ = firstPause;
    hear({{},
          QStringLiteral("/org/freedesktop/DBus/Local"),
          QStringLiteral("org.freedesktop.DBus.Local"),
          QStringLiteral("Disconnected")},
         SLOT(connectionLost()));
    for (const BusSignal& signal : std::as_const(heard_))
        hear(signal, SLOT(takeSignal(QDBusMessage)));
    bus_->registerVirtualObject(path_, this);
    Q_EMIT connected(bus_->baseService());
}

void BusWorker::tryLater() {
    again_.start(pause_);
    pause_ = std::min(pause_ * 2, longestPause);
}

void BusWorker::close() {
    if (!bus_)
        return;
    bus_->unregisterObject(path_);
    const QString name = bus_->name();
    bus_.reset();
    QDBusConnection::disconnectFromBus(name);
}

// Once: the end of a connection is told several times.
void BusWorker::connectionLost() {
    if (!bus_ || bus_->isConnected())
        return;
    close();
    again_.start(pause_);
    Q_EMIT lost();
}

void BusWorker::hear(const BusSignal& signal, const char* slot) {
    bus_->connect(signal.service, signal.path, signal.interface, signal.name, this, slot);
}

void BusWorker::listen(const BusSignal& signal) {
    if (heard_.contains(signal))
        return;
    heard_.append(signal);
    if (bus_)
        hear(signal, SLOT(takeSignal(QDBusMessage)));
}

void BusWorker::takeSignal(const QDBusMessage& signal) {
    Q_EMIT signalled(signal);
}

void BusWorker::send(const QDBusMessage& message) {
    if (bus_)
        bus_->send(message);
}

QString BusWorker::introspect(const QString& path) const {
    return path == path_ ? description_ : QString();
}

bool BusWorker::handleMessage(const QDBusMessage& call, const QDBusConnection& /*connection*/) {
    if (call.interface() == QLatin1String("org.freedesktop.DBus.Introspectable") ||
        call.interface() == QLatin1String("org.freedesktop.DBus.Peer"))
        return false; // Qt answers
    Q_EMIT called(call);
    return true;
}

} // namespace ov
