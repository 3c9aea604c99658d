// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/bus_reply.h"

#include <utility>

namespace ov {

namespace {

QString errorName(BusReply::Refusal why) {
    switch (why) {
    case BusReply::Refusal::unknown:
        return QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
    case BusReply::Refusal::invalid:
        return QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
    case BusReply::Refusal::readOnly:
        return QStringLiteral("org.freedesktop.DBus.Error.PropertyReadOnly");
    case BusReply::Refusal::nothingOpen:
        return QStringLiteral("org.orvanta.OVSearch.Error.NothingOpen");
    case BusReply::Refusal::notFound:
        return QStringLiteral("org.orvanta.OVSearch.Error.NotFound");
    default:
        return QStringLiteral("org.orvanta.OVSearch.Error.Busy");
    }
}

} // namespace

BusReply::~BusReply() {
    if (!answered_)
        refuse(Refusal::busy,
               QStringLiteral("OVSearch is busy with a search or a question; ask again later."));
}

void BusReply::give(const QVariantList& values) {
    send(call_.createReply(values));
}

void BusReply::refuse(Refusal why, const QString& sentence) {
    send(call_.createErrorReply(errorName(why), sentence));
}

void BusReply::send(const QDBusMessage& reply) {
    if (!std::exchange(answered_, true) && bus_ && call_.isReplyRequired())
        bus_->send(reply);
}

} // namespace ov
