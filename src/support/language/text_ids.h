// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/language/criteria_text_ids.h"
#include "support/language/player_text_ids.h"

#include <cstdint>

// The numbers of the texts in the language files: 1 to 19999 in OVSearch.drl, 20000 to 29999 in
// OVStd.drl. Translators know the texts by these numbers, so a number is never given to another
// text. A text with an accelerator carries it as "&"; "%1%" is the first argument of GetText.

namespace ov::text_id {

constexpr std::int32_t languageName = 1;
constexpr std::int32_t versionWord = 22; // stands before the version number

// The search control
constexpr std::int32_t title = 1000; // of message boxes, and the plug-in's description
constexpr std::int32_t criteriaGroup = 1001;
constexpr std::int32_t criteriaColumn = 1002;
constexpr std::int32_t compareAny = 1003;
constexpr std::int32_t compareAll = 1004;
constexpr std::int32_t describeAny = 1005;
constexpr std::int32_t describeAll = 1006;
constexpr std::int32_t resultLabel = 1011; // %1%: empty, or a suffix like " (12 dictations)"
constexpr std::int32_t searchStopped = 1012;
constexpr std::int32_t directoriesSkipped = 1013; // %1%: how many
constexpr std::int32_t storeVanished = 1280;
constexpr std::int32_t dictation = 1017;
constexpr std::int32_t dictations = 1018;
constexpr std::int32_t resultList = 1019;   // accessible name
constexpr std::int32_t criteriaHint = 1061; // in the empty list
constexpr std::int32_t resultHint = 1062;

constexpr std::int32_t hitLimitReached = 1240;  // %1%: how many dictations are listed
constexpr std::int32_t namesSkipped = 1241;     // %1%: how many
constexpr std::int32_t criteriaNotSaved = 1242; // %1%: why
constexpr std::int32_t withoutLocale = 1243;    // %1%: why

// The buttons of the search control and their tooltips
constexpr std::int32_t searchButton = 1020;
constexpr std::int32_t printButton = 1022;
constexpr std::int32_t columnsButton = 1023;
constexpr std::int32_t logButton = 1024;
constexpr std::int32_t stopButton = 1025;
constexpr std::int32_t searchTip = 1030;
constexpr std::int32_t printTip = 1032;
constexpr std::int32_t columnsTip = 1033;
constexpr std::int32_t logTip = 1034;
constexpr std::int32_t stopTip = 1035;
constexpr std::int32_t addCriterionButton = 1040;
constexpr std::int32_t editCriterionButton = 1041;
constexpr std::int32_t deleteCriterionButton = 1042;
constexpr std::int32_t addCriterionTip = 1050;
constexpr std::int32_t editCriterionTip = 1051;
constexpr std::int32_t deleteCriterionTip = 1052;

// Context menu of the result list
constexpr std::int32_t menuPlay = 1201;
constexpr std::int32_t menuStop = 1202;
constexpr std::int32_t menuShowLog = 1203;
constexpr std::int32_t menuCopyRows = 1204;
constexpr std::int32_t menuCopyPath = 1205;
constexpr std::int32_t menuOpenFolder = 1206;
constexpr std::int32_t menuSelectAll = 1207;
constexpr std::int32_t menuColumns = 1208;
constexpr std::int32_t menuSearchAfresh = 1209;
constexpr std::int32_t tooManyRows = 1210;       // %1%: how many can be copied
constexpr std::int32_t anotherSearchRuns = 1220; // in another control

// What is told at any time
constexpr std::int32_t settingsUnsaved = 1260;      // %1%: the file
constexpr std::int32_t standardTextsMissing = 1261; // %1%: the file

// The criterion editor
constexpr std::int32_t newCriterionTitle = 4001;
constexpr std::int32_t editCriterionTitle = 4002;
constexpr std::int32_t fieldLabel = 4010;
constexpr std::int32_t operatorLabel = 4011;
constexpr std::int32_t valueLabel = 4012;
constexpr std::int32_t valueAnd = 4013;
constexpr std::int32_t noValueNeeded = 4014;
constexpr std::int32_t noOperators = 4015;
constexpr std::int32_t firstValue = 4016; // accessible names
constexpr std::int32_t secondValue = 4017;
constexpr std::int32_t duplicateCriterion = 4091;
constexpr std::int32_t datesReversed = 4107;
constexpr std::int32_t timesReversed = 4108;
constexpr std::int32_t dayYesterday = 1400; // as typed into a date
constexpr std::int32_t dayToday = 1401;
constexpr std::int32_t dayTomorrow = 1402;
constexpr std::int32_t dateHint = 1403;
constexpr std::int32_t noDate = 1404;
constexpr std::int32_t nameAsCodeHint = 1405; // %1%: the field for names

// The column chooser
constexpr std::int32_t columnsTitle = 4120;
constexpr std::int32_t columnsHint = 4121;
constexpr std::int32_t availableFields = 4122;
constexpr std::int32_t shownColumns = 4123;
constexpr std::int32_t fixedFields = 4124;
constexpr std::int32_t addColumn = 4130;
constexpr std::int32_t removeColumn = 4131;
constexpr std::int32_t moveUp = 4132;
constexpr std::int32_t moveDown = 4133;

// The print dialog
constexpr std::int32_t printTitle = 4200;
constexpr std::int32_t printerGroup = 4201;
constexpr std::int32_t printerName = 4202;
constexpr std::int32_t printerPort = 4203;
constexpr std::int32_t printerCopies = 4204;
constexpr std::int32_t changePrinter = 4205;
constexpr std::int32_t printRangeGroup = 4206;
constexpr std::int32_t printoutTitle = 4207;
constexpr std::int32_t listFont = 4208;
constexpr std::int32_t pageSetup = 4209;
constexpr std::int32_t printRangeAll = 4210; // 4210 + index of the range
constexpr std::int32_t printRangeSelected = 4211;

// Export and print
constexpr std::int32_t exportTitle = 4300;
constexpr std::int32_t menuPrint = 4301;
constexpr std::int32_t menuPreview = 4303;
constexpr std::int32_t menuExportPdf = 4304;
constexpr std::int32_t menuExportXlsx = 4305;
constexpr std::int32_t menuExportCsv = 4306;
constexpr std::int32_t menuExportHtml = 4307;
constexpr std::int32_t menuExportJson = 4308;
constexpr std::int32_t menuCopyText = 4309;
constexpr std::int32_t fileTypePdf = 4313;
constexpr std::int32_t fileTypeXlsx = 4314;
constexpr std::int32_t fileTypeCsv = 4315;
constexpr std::int32_t fileTypeHtml = 4312;
constexpr std::int32_t fileTypeJson = 4316;
constexpr std::int32_t fileTypeText = 4317;
constexpr std::int32_t pageNumber = 4320; // %1%: the page, %2%: of how many
constexpr std::int32_t printedOn = 4321;  // %1%: the date
constexpr std::int32_t printedWithoutCriteria = 4322;
constexpr std::int32_t exporting = 4323; // while it goes on
constexpr std::int32_t layingOutPages = 4324;
constexpr std::int32_t printing = 4325;
constexpr std::int32_t exportFailed = 4330; // %1%: the file, %2%: why
constexpr std::int32_t nothingSelected = 4332;
constexpr std::int32_t noPrinter = 4333;
constexpr std::int32_t printFailed = 4334;
constexpr std::int32_t exportStopped = 4335;      // a new file
constexpr std::int32_t replacementStopped = 4336; // %1%: the file that is as it was
constexpr std::int32_t printStopped = 4337;
constexpr std::int32_t replaceFileQuestion = 4338; // %1%: the file
constexpr std::int32_t menuSelectedOnly = 4339;
constexpr std::int32_t noSuchPage = 4340; // %1%: the page, %2%: the last one
constexpr std::int32_t allColumns = 4310; // tick box
constexpr std::int32_t allColumnsTip = 4311;

// The print preview
constexpr std::int32_t previewTitle = 4350;
constexpr std::int32_t previewPrint = 4351;
constexpr std::int32_t previewClose = 4352;
constexpr std::int32_t previousPage = 4354;
constexpr std::int32_t nextPage = 4355;
constexpr std::int32_t zoomIn = 4357;
constexpr std::int32_t zoomOut = 4358;
constexpr std::int32_t wholePage = 4359;
constexpr std::int32_t previewPage = 4360;      // accessible name
constexpr std::int32_t exportIncomplete = 4380; // after the file's name and a colon

// The search
constexpr std::int32_t fillingList = 10001;
constexpr std::int32_t nothingFound = 10002;
constexpr std::int32_t searchWithoutCriteria = 10003;
constexpr std::int32_t foundSoFar = 10004; // %1%: how many dictations
constexpr std::int32_t defaultPrintTitle = 10011;
constexpr std::int32_t nothingToPrint = 19001;
constexpr std::int32_t noColumnToPrint = 19002;

// The rows of the list
constexpr std::int32_t filterPlaceholder = 1350;
constexpr std::int32_t filterName = 1351;
constexpr std::int32_t filterTip = 1352;
constexpr std::int32_t filteredCount = 1353;      // %1%: rows, %2%: hits
constexpr std::int32_t filteredCountOfOne = 1377; // %1%: rows, of a single hit
constexpr std::int32_t filterHint = 1354;
constexpr std::int32_t filteredBy = 1355; // %1%: words
constexpr std::int32_t menuCopyFiles = 1356;
constexpr std::int32_t menuDetails = 1357;
constexpr std::int32_t detailsTitle = 1358;
constexpr std::int32_t detailsField = 1359;
constexpr std::int32_t detailsShown = 1360;
constexpr std::int32_t detailsRaw = 1361;
constexpr std::int32_t detailsMissing = 1378; // stands where the name lacks a field
constexpr std::int32_t copyDetails = 1362;
constexpr std::int32_t closeDetails = 1363;
constexpr std::int32_t sortUp = 1364;
constexpr std::int32_t sortDown = 1365;
constexpr std::int32_t sortSecondUp = 1366;
constexpr std::int32_t sortSecondDown = 1367;
constexpr std::int32_t withoutSecondSort = 1379;
constexpr std::int32_t columnTicks = 1368;
constexpr std::int32_t fitWidth = 1369;
constexpr std::int32_t moveColumnLeft = 1370;
constexpr std::int32_t moveColumnRight = 1371;
constexpr std::int32_t resetColumns = 1372;
constexpr std::int32_t summaryOfAll = 1373;      // %1%: rows, %2%: hours, minutes, seconds
constexpr std::int32_t summaryOfSelected = 1374; // the same
constexpr std::int32_t playingRow = 1375;        // %1%: what the cell shows
constexpr std::int32_t playedDictationTip = 1376;
constexpr std::int32_t assumedValue = 1380;    // %1%: what is shown for a field without a value
constexpr std::int32_t assumedNotFound = 1381; // %1%: the same, %2%: what finds it, %3%: how many
constexpr std::int32_t assumedFoundToo = 1382; // the same, %2%: what leaves it out

// The host's standard texts
constexpr std::int32_t directoryMissing = 20002; // %1%: the directory
constexpr std::int32_t countingDirectories = 20009;
constexpr std::int32_t searchingDirectories = 20034;
constexpr std::int32_t ok = 20101;
constexpr std::int32_t cancel = 20102;
constexpr std::int32_t yes = 20103;
constexpr std::int32_t no = 20104;
constexpr std::int32_t valueRequired = 29001;

// Captions of the search fields: odd numbers short, even ones long; which belongs to which field
// is in the field table.
constexpr std::int32_t firstFieldCaption = 25001;
constexpr std::int32_t lastFieldCaption = 25048;
// The long ones; the short one of a field stands before it.
constexpr std::int32_t noFieldCaption = 25002;
constexpr std::int32_t folderCaption = 25004;
constexpr std::int32_t nameCaption = 25006;
constexpr std::int32_t statusCaption = 25008;
constexpr std::int32_t markerCaption = 25010;
constexpr std::int32_t authorCodeCaption = 25012;
constexpr std::int32_t authorCaption = 25014;
constexpr std::int32_t typistCaption = 25016;
constexpr std::int32_t flagsCaption = 25018;
constexpr std::int32_t numberCaption = 25020;
constexpr std::int32_t dictatedCaption = 25022;
constexpr std::int32_t lengthCaption = 25024;
constexpr std::int32_t priorityCaption = 25026;
constexpr std::int32_t subjectCaption = 25028;
constexpr std::int32_t note1Caption = 25030;
constexpr std::int32_t note2Caption = 25032;
constexpr std::int32_t groupCaption = 25034;
constexpr std::int32_t worktypeCaption = 25036;
constexpr std::int32_t status2Caption = 25038;
constexpr std::int32_t changedCaption = 25040;
constexpr std::int32_t fileCaption = 25042;
constexpr std::int32_t dueCaption = 25044;
constexpr std::int32_t column1Caption = 25046;
constexpr std::int32_t column2Caption = 25048;
constexpr std::int32_t shortCaption(std::int32_t caption) noexcept {
    return caption - 1;
}

// Priorities, states and flags; which code has which text is in GetStatusText.
constexpr std::int32_t firstCodeText = 25101;
// The texts are older than the codes: some stand elsewhere than their code would say.
constexpr std::int32_t rohText = 25106;
constexpr std::int32_t wavText = 25107;
constexpr std::int32_t sixthFlagText = 25115;
constexpr std::int32_t severalFlagsText = 25116;
constexpr std::int32_t seventhFlagText = 25118;
constexpr std::int32_t rangeAnd = 25117; // between two values, with its own blanks
constexpr std::int32_t lastCodeText = 25118;

// Operators, by their ids 1 to 33.
constexpr std::int32_t firstOperator = 25151;
constexpr std::int32_t lastOperator = 25183;
constexpr std::int32_t operatorBase = firstOperator - 1; // + the operator id

} // namespace ov::text_id
