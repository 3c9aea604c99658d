// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/bus_probe.h"

#include <chrono>
#include <dbus/dbus.h>
#include <memory>

namespace ov {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds patience{5};

struct Close {
    void operator()(DBusConnection* connection) const {
        dbus_connection_close(connection);
        dbus_connection_unref(connection);
    }
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
    void operator()(DBusPendingCall* call) const { dbus_pending_call_unref(call); }
};
template <typename Kind>
using Owned = std::unique_ptr<Kind, Close>;

// It has no memory that would be cared for here: without any of it there is no answer.
Owned<DBusPendingCall> greet(DBusConnection& connection) {
    const Owned<DBusMessage> hello(dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS,
                                                                DBUS_INTERFACE_DBUS, "Hello"));
    DBusPendingCall* call = nullptr;
    if (hello)
        dbus_connection_send_with_reply(&connection, hello.get(), &call, DBUS_TIMEOUT_INFINITE);
    return Owned<DBusPendingCall>(call);
}

} // namespace

// Not by a call that blocks: while the bus has not let us in that waits without end.
bool busAnswers(const std::string& address) {
    constexpr int step = 100; // ms
    const Owned<DBusConnection> connection(dbus_connection_open_private(address.c_str(), nullptr));
    if (!connection)
        return false;
    const Owned<DBusPendingCall> call = greet(*connection);
    const auto end = steady_clock::now() + patience;
    while (call && dbus_pending_call_get_completed(call.get()) == 0 && steady_clock::now() < end)
        dbus_connection_read_write_dispatch(connection.get(), step);
    const Owned<DBusMessage> answer(call ? dbus_pending_call_steal_reply(call.get()) : nullptr);
    return answer && dbus_message_get_type(answer.get()) == DBUS_MESSAGE_TYPE_METHOD_RETURN;
}

} // namespace ov
