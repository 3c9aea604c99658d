// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "playback/panel/player_texts.h"

#include "dictation/field_date.h"
#include "platform/text.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <array>
#include <string>

namespace ov {

namespace {

struct ModeText {
    std::string_view mode;
    std::int32_t textId;
};

constexpr std::array<ModeText, 9> modeTexts{{{"ERROR", text_id::modeError},
                                             {"STOPPED", text_id::modeStopped},
                                             {"PLAYING", text_id::modePlaying},
                                             {"PAUSED", text_id::modePaused},
                                             {"NOT READY", text_id::modeNotReady},
                                             {"OPEN", text_id::modeOpen},
                                             {"PARKED", text_id::modeParked},
                                             {"RECORDING", text_id::modeRecording},
                                             {"SEEKING", text_id::modeSeeking}}};

} // namespace

QString MciModeText(std::string_view mode) {
    if (mode.empty())
        return QStringLiteral("-");
    const std::string word = platform::upperCase(mode);
    for (const ModeText& text : modeTexts)
        if (text.mode == word)
            return widgets::text(text.textId);
    return {};
}

QString FormatPlayTime(std::int32_t position, std::int32_t rate) {
    return widgets::toQt(modDictation::secondsText(rate > 0 ? position / rate : 0));
}

bool isTimeStampForm(std::string_view form) {
    return form.find("%1%") != std::string_view::npos;
}

// A title may look like a form itself.
QString timeStamp(std::string_view form, const QString& time, const QString& title) {
    QString stamp;
    const QString usable = widgets::toQt(isTimeStampForm(form) ? form : usualTimeStampForm);
    const QStringList parts = usable.split(QLatin1String("%2%"));
    for (QString part : parts)
        stamp += part.replace(QLatin1String("%1%"), time) + title;
    return stamp.chopped(title.size());
}

} // namespace ov
