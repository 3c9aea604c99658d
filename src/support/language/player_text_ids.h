// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers as in text_ids.h, of the texts of the player.

namespace ov::text_id {

// The player panel: tooltips, which are the accessible names too
constexpr std::int32_t playerPanel = 1100;
constexpr std::int32_t playTip = 1101;
constexpr std::int32_t pauseTip = 1102;
constexpr std::int32_t stopPlayingTip = 1103;
constexpr std::int32_t seekTip = 1104;
constexpr std::int32_t volumeTip = 1105;
constexpr std::int32_t levelTip = 1106;
constexpr std::int32_t playerStateTip = 1107;
constexpr std::int32_t elapsedTimeTip = 1108;
constexpr std::int32_t lengthTip = 1109;
constexpr std::int32_t modeError = 1110; // states of the device
constexpr std::int32_t modeStopped = 1111;
constexpr std::int32_t modePlaying = 1112;
constexpr std::int32_t modePaused = 1113;
constexpr std::int32_t modeNotReady = 1114;
constexpr std::int32_t modeOpen = 1115;
constexpr std::int32_t modeParked = 1116;
constexpr std::int32_t modeRecording = 1117;
constexpr std::int32_t modeSeeking = 1118;
constexpr std::int32_t speedTip = 1120;
constexpr std::int32_t speedMenu = 1121;
constexpr std::int32_t backUpMenu = 1122;
constexpr std::int32_t rememberPositions = 1123;
constexpr std::int32_t goOnAt = 1124; // %1%: a time
constexpr std::int32_t offeredPositionTip = 1125;
constexpr std::int32_t timeStampMenu = 1126;
constexpr std::int32_t timeStampTitle = 1127;  // an example of what a dictation is
constexpr std::int32_t timeStampCopied = 1128; // %1%: the stamp
constexpr std::int32_t goToTimeTip = 1129;
constexpr std::int32_t boostMenu = 1130;
constexpr std::int32_t evenOut = 1131;
constexpr std::int32_t cutRumble = 1132;
constexpr std::int32_t skipSilence = 1133;
constexpr std::int32_t loopMenu = 1134;
constexpr std::int32_t loopBegins = 1135; // %1%: a time
constexpr std::int32_t loopPlays = 1136;  // %1%, %2%: times
constexpr std::int32_t loopEnded = 1137;
constexpr std::int32_t pedalsMenu = 1138;
constexpr std::int32_t outputMenu = 1140;
constexpr std::int32_t usualOutput = 1141;
constexpr std::int32_t outputGone = 1142; // %1%: its name
constexpr std::int32_t outputsAsked = 1143;
constexpr std::int32_t outputMissing = 1144;  // %1%: its name
constexpr std::int32_t placeBeyondEnd = 1145; // %1%: the length
constexpr std::int32_t loopTooShort = 1146;

} // namespace ov::text_id
