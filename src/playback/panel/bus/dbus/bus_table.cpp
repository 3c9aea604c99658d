// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// All that can be called, in one table.

#include "playback/panel/bus/dbus/bus_calls.h"
#include "playback/panel/bus/dbus/bus_values.h"

#include <QDBusMetaType>

namespace ov {

namespace {

constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

struct Property {
    const char* name = nullptr;
    const char* type = nullptr;
    const char* access = "read";
};

constexpr Property rootProperties[] = {{"CanQuit", "b"},
                                       {"CanRaise", "b"},
                                       {"HasTrackList", "b"},
                                       {"Identity", "s"},
                                       {"DesktopEntry", "s"},
                                       {"SupportedUriSchemes", "as"},
                                       {"SupportedMimeTypes", "as"}};
constexpr Property playerProperties[] = {
    {"PlaybackStatus", "s"}, {"Rate", "d", "readwrite"}, {"MinimumRate", "d"},
    {"MaximumRate", "d"},    {"Metadata", "a{sv}"},      {"Volume", "d", "readwrite"},
    {"Position", "x"},       {"CanGoNext", "b"},         {"CanGoPrevious", "b"},
    {"CanPlay", "b"},        {"CanPause", "b"},          {"CanSeek", "b"},
    {"CanControl", "b"}};

template <std::size_t count>
QString described(const Property (&properties)[count]) {
    QString all;
    for (const Property& property : properties)
        all += QStringLiteral("<property name=\"%1\" type=\"%2\" access=\"%3\"/>")
                   .arg(QLatin1String(property.name), QLatin1String(property.type),
                        QLatin1String(property.access));
    return all;
}

// One argument for each type of a signature; ours are simple ones and arrays of such.
QString arguments(const char* signature, const char* direction) {
    QString all;
    QString type;
    for (const char letter : QByteArray(signature)) {
        type += QLatin1Char(letter);
        if (letter == 'a')
            continue;
        all += QStringLiteral("<arg type=\"%1\" direction=\"%2\"/>")
                   .arg(type, QLatin1String(direction));
        type.clear();
    }
    return all;
}

} // namespace

struct BusCalls::Method {
    const char* interface;
    const char* name;
    const char* takes;
    const char* gives;
    void (BusCalls::*act)(const Reply& reply);
};

const BusCalls::Method BusCalls::methods[] = {
    {bus::rootInterface, "Raise", "", "", &BusCalls::raise},
    {bus::rootInterface, "Quit", "", "", &BusCalls::acceptAll},
    {bus::playerInterface, "Play", "", "", &BusCalls::play},
    {bus::playerInterface, "Pause", "", "", &BusCalls::pause},
    {bus::playerInterface, "PlayPause", "", "", &BusCalls::playPause},
    {bus::playerInterface, "Stop", "", "", &BusCalls::stop},
    {bus::playerInterface, "Next", "", "", &BusCalls::next},
    {bus::playerInterface, "Previous", "", "", &BusCalls::previous},
    {bus::playerInterface, "Seek", "x", "", &BusCalls::seek},
    {bus::playerInterface, "SetPosition", "ox", "", &BusCalls::setPosition},
    {bus::playerInterface, "OpenUri", "s", "", &BusCalls::refuseAll},
    {bus::ownInterface, "Position", "", "x", &BusCalls::position},
    {bus::ownInterface, "TimeStamp", "", "s", &BusCalls::timeStamp},
    {bus::ownInterface, "CopyTimeStamp", "", "", &BusCalls::copyTimeStamp},
    {bus::ownInterface, "Jump", "i", "", &BusCalls::jump},
    {bus::ownInterface, "GoTo", "x", "", &BusCalls::goTo},
    {bus::ownInterface, "Next", "", "", &BusCalls::next},
    {bus::ownInterface, "Previous", "", "", &BusCalls::previous},
    {bus::ownInterface, "SavedSearches", "", "as", &BusCalls::savedSearches},
    {bus::ownInterface, "Search", "s", "", &BusCalls::search},
    {propertiesInterface, "Get", "ss", "v", &BusCalls::getProperty},
    {propertiesInterface, "GetAll", "s", "a{sv}", &BusCalls::getProperties},
    {propertiesInterface, "Set", "ssv", "", &BusCalls::setProperty},
};

const BusCalls::Method* BusCalls::methodOf(const QDBusMessage& call) {
    for (const Method& method : methods)
        if (call.member() == QLatin1String(method.name) &&
            (call.interface().isEmpty() || call.interface() == QLatin1String(method.interface)))
            return &method;
    return nullptr;
}

void BusCalls::perform(const Reply& reply) {
    const QDBusMessage& call = reply->call();
    const Method* method = methodOf(call);
    if (method == nullptr)
        return reply->refuse(
            BusReply::Refusal::unknown,
            QStringLiteral("There is no method %1 in %2.").arg(call.member(), call.interface()));
    if (call.signature() != QLatin1String(method->takes))
        return reply->refuse(BusReply::Refusal::invalid,
                             QStringLiteral("%1 takes arguments of the types \"%2\".")
                                 .arg(call.member(), QLatin1String(method->takes)));
    (this->*method->act)(reply);
}

QString BusCalls::description() {
    QString all;
    for (const char* interface : {bus::rootInterface, bus::playerInterface, bus::ownInterface}) {
        all += QStringLiteral("<interface name=\"%1\">").arg(QLatin1String(interface));
        for (const Method& method : methods)
            if (QLatin1String(method.interface) == QLatin1String(interface))
                all += QStringLiteral("<method name=\"%1\">%2%3</method>")
                           .arg(QLatin1String(method.name), arguments(method.takes, "in"),
                                arguments(method.gives, "out"));
        if (interface == bus::rootInterface)
            all += described(rootProperties);
        if (interface == bus::playerInterface)
            all += described(playerProperties) +
                   QLatin1String("<signal name=\"Seeked\"><arg type=\"x\"/></signal>");
        all += QLatin1String("</interface>");
    }
    return all;
}

} // namespace ov
