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

} // namespace ov
