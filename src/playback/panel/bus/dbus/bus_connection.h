// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

class QThread;

namespace ov {

struct BusSignal {
    QString service;
    QString path;
    QString interface;
    QString name;
    bool operator==(const BusSignal&) const = default;
};

// The session bus as a window can use it: nothing here waits. Connections are made, lost and made
// again by a thread of its own. A bus that hangs keeps that thread and nobody else, since Qt's own,
// one for all buses of the process, only gets to see a bus that has just answered.
class BusConnection final : public QObject {
    Q_OBJECT

public:
    // `address` as D-Bus writes it. Calls of the object at `path` are told; `description` is what
    // it answers who wants to know what can be called.
    BusConnection(const QString& address, const QString& path, const QString& description);
    ~BusConnection() override;
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    // Without a connection it goes nowhere.
    void send(const QDBusMessage& message) { Q_EMIT toSend(message); }
    // From now on, and after the connection was lost too, these are told.
    void listen(const BusSignal& signal) { Q_EMIT toListen(signal); }

Q_SIGNALS:
    // `name` is what the bus calls us, ":1.42".
    void connected(const QString& name);
    void lost();
    void called(const QDBusMessage& call);
    void signalled(const QDBusMessage& signal);

    // To the thread.
    void toSend(const QDBusMessage& message);
    void toListen(const ov::BusSignal& signal);

private:
    std::unique_ptr<QThread> thread_;
};

} // namespace ov
