// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers as in text_ids.h, of what is said of foot pedals.

namespace ov::text_id {

// The dialog
constexpr std::int32_t pedalsTitle = 4400;
constexpr std::int32_t pedalsHint = 4401;
constexpr std::int32_t pedalActionColumn = 4402;
constexpr std::int32_t pedalColumn = 4403;
constexpr std::int32_t assignPedal = 4404;
constexpr std::int32_t removePedal = 4405;
constexpr std::int32_t pressPedalNow = 4406; // %1%: an action
constexpr std::int32_t pedalReceived = 4407; // %1%: pedal, %2%: device
constexpr std::int32_t noPedalReceived = 4408;
constexpr std::int32_t pedalJumpLabel = 4409;
constexpr std::int32_t pedalDevices = 4410;
constexpr std::int32_t pedalGrabTip = 4411;
constexpr std::int32_t pedalsUnreadable = 4412; // %1%: why
constexpr std::int32_t noPedalFound = 4413;
constexpr std::int32_t pedalsDenied = 4414;
constexpr std::int32_t pedalLetGo = 4415;        // behind a device
constexpr std::int32_t pedalMayNotBeRead = 4416; // likewise
constexpr std::int32_t pedalIsTaken = 4431;      // likewise
constexpr std::int32_t pedalAssigned = 4417;     // %1%: pedal, %2%: action
constexpr std::int32_t pedalReceivedFor = 4418;  // %1%: pedal, %2%: device, %3%: action
constexpr std::int32_t removePedalTip = 4419;
constexpr std::int32_t pedalJumpTip = 4430;

// What a pedal can do
constexpr std::int32_t pedalPlayWhileHeld = 4420;
constexpr std::int32_t pedalPlayOrPause = 4421;
constexpr std::int32_t pedalWindBack = 4422;
constexpr std::int32_t pedalWindForward = 4423;
constexpr std::int32_t pedalJumpBack = 4424;
constexpr std::int32_t pedalJumpForward = 4425;
constexpr std::int32_t pedalPlayAgain = 4426;
constexpr std::int32_t pedalToStart = 4427;
constexpr std::int32_t pedalStop = 4428;
constexpr std::int32_t pedalTimeStamp = 4429;

} // namespace ov::text_id
