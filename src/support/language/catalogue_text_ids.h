// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers as in text_ids.h, of the texts about catalogues.

namespace ov::text_id {

constexpr std::int32_t menuSearchCatalogue = 1211;
constexpr std::int32_t askingCatalogue = 1500;
constexpr std::int32_t catalogueAsOf = 1501;        // %1%: a time
constexpr std::int32_t catalogueIncomplete = 1502;  // no update has come to its end
constexpr std::int32_t catalogueMissing = 1503;     // %1%: the file
constexpr std::int32_t catalogueLacksFolder = 1504; // %1%: the folder
constexpr std::int32_t catalogueUnreachable = 1505; // %1% of this and those below: the catalogue
constexpr std::int32_t walkInstead = 1506;          // question; %1%: one of these sentences
constexpr std::int32_t catalogueRefused = 1507;
constexpr std::int32_t catalogueDamaged = 1508;
constexpr std::int32_t dictationMoved = 1509;       // %1%: the folder it is in now
constexpr std::int32_t lookForDictation = 1510;     // question; %1%: the path it had
constexpr std::int32_t dictationGone = 1511;        // %1%: the folder that was looked through
constexpr std::int32_t catalogueUpdateBegun = 1513; // %1%: a time
constexpr std::int32_t lookingForDictation = 1512;  // progress
constexpr std::int32_t catalogueOfOtherVersion = 1514;
constexpr std::int32_t catalogueBusy = 1515;
constexpr std::int32_t catalogueAddressWrong = 1516;
constexpr std::int32_t catalogueModuleMissing = 1517;

} // namespace ov::text_id
