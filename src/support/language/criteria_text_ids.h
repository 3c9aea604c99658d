// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers as in text_ids.h, of the texts around the criteria: saved searches, the list that follows
// them, what is said where nothing was found.

namespace ov::text_id {

// Saved searches
constexpr std::int32_t savedSearchesButton = 1330;
constexpr std::int32_t savedSearchesTip = 1331;
constexpr std::int32_t saveSearchAs = 1332;
constexpr std::int32_t recentSearches = 1333;
constexpr std::int32_t renameSearch = 1334;
constexpr std::int32_t deleteSearch = 1335;
constexpr std::int32_t searchNameTitle = 1336;
constexpr std::int32_t searchNameLabel = 1337;
constexpr std::int32_t replaceSearchQuestion = 1338; // %1%: the name
constexpr std::int32_t deleteSearchQuestion = 1339;  // %1%: the name
constexpr std::int32_t searchNotSaved = 1340;        // %1%: why
constexpr std::int32_t searchPartlyRead = 1341;      // %1%: lines, %2%: the file

// What the list of hits says while it is empty
constexpr std::int32_t listAllButton = 1300;
constexpr std::int32_t listAllTip = 1308;
constexpr std::int32_t noStoreChosen = 1301;
constexpr std::int32_t noCriteriaHint = 1302;
constexpr std::int32_t noneMeetsThis = 1303; // the criterion follows on a line of its own
constexpr std::int32_t noneMeetsThese = 1304;
constexpr std::int32_t nothingInWhatWasRead = 1349;
constexpr std::int32_t noneMeetsTogether = 1305;
constexpr std::int32_t noneMeetsAny = 1306;
constexpr std::int32_t storeIsEmpty = 1307; // %1%: the folder

// The criteria list
constexpr std::int32_t duplicateCriterionCommand = 1310;
constexpr std::int32_t undoCommand = 1311;
constexpr std::int32_t redoCommand = 1312;
constexpr std::int32_t moveCriterionUp = 1315;
constexpr std::int32_t moveCriterionDown = 1316;
constexpr std::int32_t indentCriterion = 1313;
constexpr std::int32_t outdentCriterion = 1314;
constexpr std::int32_t criteriaGrouped = 1344;   // spoken
constexpr std::int32_t criteriaUngrouped = 1345; // spoken
constexpr std::int32_t orCriterion = 1317;  // %1%: a criterion of a group, any of which is enough
constexpr std::int32_t andCriterion = 1318; // %1%: a criterion of a group, all of which must match
constexpr std::int32_t cutCriteria = 1319;
constexpr std::int32_t copyCriteria = 1329;
constexpr std::int32_t pasteCriteria = 1342;
constexpr std::int32_t linesNotPasted = 1343; // %1%: how many
constexpr std::int32_t followBox = 1320;
constexpr std::int32_t followTip = 1321;
constexpr std::int32_t countTitle = 1390;        // of a column of counts
constexpr std::int32_t explainedAll = 1391;      // %1%: the folder
constexpr std::int32_t explainedAny = 1392;      // the same
constexpr std::int32_t explainedNone = 1393;     // the same, %2%: as countOfAll
constexpr std::int32_t anyTextContains = 1394;   // %1%: the word
constexpr std::int32_t noTextContains = 1395;    // the same
constexpr std::int32_t countOfAll = 1322;        // %1%: dictations that meet it, %2%: of how many
constexpr std::int32_t emptyingCriterion = 1323; // spoken
constexpr std::int32_t dateRange = 1324;         // %1% and %2%: dates
constexpr std::int32_t formatDay = 1325;         // as Qt has them
constexpr std::int32_t formatDayAndMonth = 1326;
constexpr std::int32_t formatWholeDate = 1327;
constexpr std::int32_t storeDoesNotAnswer = 1328; // %1%: the folder

} // namespace ov::text_id
