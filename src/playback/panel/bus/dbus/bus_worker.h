// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/dbus/bus_connection.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QTimer>
#include <chrono>
#include <optional>

namespace ov {

// What of a BusConnection lives on the thread that may have to wait.
class BusWorker final : public QDBusVirtualObject {
    Q_OBJECT

public:
    BusWorker(QString address, QString path, QString description);
    ~BusWorker() override;
    BusWorker(const BusWorker&) = delete;
    BusWorker& operator=(const BusWorker&) = delete;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;

    void open();
    void send(const QDBusMessage& message);
    void listen(const BusSignal& signal);

public Q_SLOTS: // which D-Bus looks for by their names
    void connectionLost();
    void takeSignal(const QDBusMessage& signal);

Q_SIGNALS:
    void connected(const QString& name);
    void lost();
    void called(const QDBusMessage& call);
    void signalled(const QDBusMessage& signal);

private:
    void tryLater();
    void close();
    void hear(const BusSignal& signal, const char* slot);

    QString address_;
    QString path_;
    QString description_;
    std::optional<QDBusConnection> bus_;
    QList<BusSignal> heard_;
    QTimer again_;
    std::chrono::milliseconds pause_;
};

} // namespace ov
