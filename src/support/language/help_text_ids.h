// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers as in text_ids.h, of the texts that explain: hints, reasons, help.

namespace ov::text_id {

constexpr std::int32_t compareGroup = 1406; // accessible name

// The column chooser
constexpr std::int32_t columnsOrderHint = 1410;
constexpr std::int32_t defaultColumns = 1411;

// Why a button has nothing to do
constexpr std::int32_t logNeedsSelection = 1413;
constexpr std::int32_t printNeedsRows = 1414;
constexpr std::int32_t printNeedsPrinter = 1415;

// The guide and the keys
constexpr std::int32_t guideTitle = 1420;
constexpr std::int32_t keyShortcuts = 1421;
constexpr std::int32_t keysColumn = 1422;
constexpr std::int32_t keysDoColumn = 1423;
constexpr std::int32_t keyStop = 1424;
constexpr std::int32_t keyPrint = 1425;
constexpr std::int32_t keyExport = 1426;
constexpr std::int32_t keyGuide = 1427;
constexpr std::int32_t keyExplain = 1428;
constexpr std::int32_t keySkip = 1429;
constexpr std::int32_t keyMove = 1430;
constexpr std::int32_t keyAgain = 1416;
constexpr std::int32_t keyLoop = 1455;
constexpr std::int32_t keyGoToTime = 1417;
constexpr std::int32_t keyTimeStamp = 1418;
constexpr std::int32_t keyGoRound = 1407;
constexpr std::int32_t keyToTheList = 1408;
constexpr std::int32_t keyTitles = 1409;
constexpr std::int32_t keyLeaveOut = 1412;
constexpr std::int32_t keyTurnPages = 1449;
constexpr std::int32_t keyZoom = 1419;
constexpr std::int32_t keyShowAll = 1456;

// What controls are for
constexpr std::int32_t aboutCriteriaList = 1431;
constexpr std::int32_t aboutPrintButton = 1432;
constexpr std::int32_t aboutResultList = 1433;
constexpr std::int32_t aboutSeek = 1434;
constexpr std::int32_t aboutField = 1435;
constexpr std::int32_t aboutOperator = 1436;
constexpr std::int32_t aboutTextValue = 1437;
constexpr std::int32_t aboutCodeValue = 1438;
constexpr std::int32_t aboutTimeValue = 1439;
constexpr std::int32_t aboutFieldLists = 1440;
constexpr std::int32_t aboutFixedFields = 1441;
constexpr std::int32_t aboutDefaultColumns = 1442;
constexpr std::int32_t aboutPrinter = 1443;
constexpr std::int32_t aboutPrintRange = 1444;
constexpr std::int32_t aboutPrintTitle = 1445;
constexpr std::int32_t aboutNothing = 1446;
constexpr std::int32_t aboutOk = 1447;
constexpr std::int32_t aboutCancel = 1448;
constexpr std::int32_t aboutPages = 1450;
constexpr std::int32_t aboutPrintNow = 1451;
constexpr std::int32_t aboutWholePage = 1452;
constexpr std::int32_t aboutDetails = 1453;
constexpr std::int32_t aboutCopyDetails = 1454;

} // namespace ov::text_id
