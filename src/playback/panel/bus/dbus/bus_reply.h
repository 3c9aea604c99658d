// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "playback/panel/bus/dbus/bus_connection.h"

#include <QDBusMessage>
#include <QPointer>
#include <QVariantList>

namespace ov {

// Answers a call, once. Who forgets to, or cannot any more, answers with its end: that we are busy.
class BusReply {
public:
    enum class Refusal { unknown, invalid, readOnly, nothingOpen, notFound, busy };

    BusReply(BusConnection* bus, const QDBusMessage& call) : bus_(bus), call_(call) {}
    ~BusReply();
    BusReply(const BusReply&) = delete;
    BusReply& operator=(const BusReply&) = delete;

    const QDBusMessage& call() const { return call_; }
    QVariant argument(int index) const { return call_.arguments().at(index); }

    void give(const QVariantList& values = {});
    void refuse(Refusal why, const QString& sentence);

private:
    void send(const QDBusMessage& reply);

    QPointer<BusConnection> bus_;
    QDBusMessage call_;
    bool answered_ = false;
};

} // namespace ov
