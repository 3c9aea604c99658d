// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "playback/panel/bus/dbus/bus_values.h"

#include "dictation/field_table.h"
#include "dictation/field_values.h"
#include "playback/panel/choices/player_choices.h"
#include "widgets/text.h"

#include <QDBusObjectPath>
#include <QGuiApplication>
#include <QStringList>

namespace ov::bus {

namespace {

constexpr double percent = 100;

QString stateWord(PlayerStatus::Mode mode) {
    switch (mode) {
    case PlayerStatus::Mode::playing:
        return QStringLiteral("Playing");
    case PlayerStatus::Mode::paused:
        return QStringLiteral("Paused");
    default:
        return QStringLiteral("Stopped");
    }
}

QString shown(std::int32_t field, const modDictation::Dictation& dictation) {
    return widgets::toQt(modDictation::shownValue(field, dictation));
}

// What the player shows and no more: desktops show it to all who see the screen, also when it is
// locked. The path is not told at all.
QVariantMap metadata(const PlayerStatus& status, const QString& track) {
    namespace field = modDictation::field_id;
    QVariantMap all{{QStringLiteral("mpris:trackid"), QVariant::fromValue(QDBusObjectPath(track))}};
    if (!status.isOpen())
        return all;
    const modDictation::Dictation dictation = modDictation::dictationOfPath(status.path);
    const QString author = shown(field::author, dictation);
    const QString subject = shown(field::subject, dictation);
    const QString title = !subject.isEmpty()  ? subject
                          : !author.isEmpty() ? author
                                              : shown(field::name, dictation);
    all.insert(QStringLiteral("xesam:title"), title);
    if (!author.isEmpty())
        all.insert(QStringLiteral("xesam:artist"), QStringList(author));
    all.insert(QStringLiteral("mpris:length"),
               static_cast<qlonglong>(status.length.count() * microsecondsInMs));
    return all;
}

} // namespace

QString trackId(const PlayerStatus& status, int number) {
    return status.isOpen() ? QStringLiteral("/org/orvanta/OVSearch/Dictation%1").arg(number)
                           : QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack");
}

QVariantMap rootProperties() {
    QVariantMap all{{QStringLiteral("CanQuit"), false},
                    {QStringLiteral("CanRaise"), true},
                    {QStringLiteral("HasTrackList"), false},
                    {QStringLiteral("Identity"), QStringLiteral("OVSearch")},
                    {QStringLiteral("SupportedUriSchemes"), QStringList()},
                    {QStringLiteral("SupportedMimeTypes"), QStringList()}};
    if (const QString entry = QGuiApplication::desktopFileName(); !entry.isEmpty())
        all.insert(QStringLiteral("DesktopEntry"), entry);
    return all;
}

QVariantMap playerProperties(const PlayerStatus& status, const QString& track, bool hasNext,
                             bool hasPrevious) {
    return {{QStringLiteral("PlaybackStatus"), stateWord(status.mode)},
            {QStringLiteral("Rate"), status.speedPercent / percent},
            {QStringLiteral("MinimumRate"), PlayerChoices::slowest / percent},
            {QStringLiteral("MaximumRate"), PlayerChoices::fastest / percent},
            {QStringLiteral("Metadata"), metadata(status, track)},
            {QStringLiteral("Volume"), status.volume},
            {QStringLiteral("Position"),
             static_cast<qlonglong>(status.position.count() * microsecondsInMs)},
            {QStringLiteral("CanGoNext"), hasNext},
            {QStringLiteral("CanGoPrevious"), hasPrevious},
            {QStringLiteral("CanPlay"), status.canPlay},
            {QStringLiteral("CanPause"), status.isOpen()},
            {QStringLiteral("CanSeek"), status.length.count() > 0},
            {QStringLiteral("CanControl"), true}};
}

} // namespace ov::bus
