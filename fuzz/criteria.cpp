// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any bytes as criteria: the first line as one that is typed in a terminal, in the long and in the
// quick form, the rest as a criteria file. What can be read is shown and tested on a dictation of
// its own.

#include "dictation/field_table.h"
#include "dictation/search/criterion.h"
#include "dictation/search/matching.h"
#include "dictation/typed/criterion_text.h"
#include "dictation/typed/explained_criterion.h"
#include "dictation/typed/quick_text.h"
#include "dictation/typed/search_text.h"
#include "fuzz/fuzzing.h"
#include "tests/quick_line.h"

#include <string>
#include <vector>

namespace {

using namespace ov;
using namespace ov::modDictation;
using fuzzing::require;

constexpr std::string_view directory = "D:\\Store\\Ward3\\";
constexpr std::string_view name =
    "2$ROH@@5$HOCH@@7$21.11.2026 17$05$00@@14$Dr. M\xC3\xBCller@@6$00$01$10@@17$384";
constexpr platform::DateTime now{2026, 11, 21, 12, 0, 0};

void readTyped(std::string_view line) {
    const ParsedCriterion parsed = parseCriterion(line);
    require(parsed.ok() != !parsed.error.empty());
    if (!parsed.ok())
        return;
    const Criterion& typed = parsed.criterion;
    const std::string text =
        BuildCriteriaString(typed.Field, typed.Operator, typed.Value1, typed.Value2);
    require(isCriteriaString(text) && ParseCriteriaString(text) == typed);
}

bool isMet(const std::vector<Criterion>& criteria, bool all) {
    PreparedCriteria prepared(criteria, now);
    return MatchDictation(directory, name, prepared, all);
}

// Whatever can be asked for can be left out too.
void readQuick(std::string_view line) {
    const QuickSearch quick = tests::readQuickLine(line, {now, true});
    require(quick.ok() || (quick.criteria.empty() && quick.error.offset <= line.size() * 3));
    require(quick.criteria.size() <= mostCriteria);
    if (quick.criteria.empty())
        return;
    require(!quick.criteria.front().indented);
    for (const Criterion& criterion : quick.criteria)
        explainedCriterion(criterion, true, now);
    std::vector<QuickPart> parts = TypedLine(line).parts;
    parts.insert(parts.begin(), {{QuickPart::Kind::negation, "-"}, {QuickPart::Kind::open, "("}});
    parts.push_back({QuickPart::Kind::close, ")"});
    const QuickSearch opposite = readQuickParts(parts, {now, false});
    require(!opposite.ok() || isMet(opposite.criteria, false) != isMet(quick.criteria, true));
}

void readFile(std::string_view content) {
    std::vector<Criterion> criteria;
    for (const std::string& line : readCriteriaLines(content).criteria) {
        require(isCriteriaString(line) && line.find_first_of("\r\n") == std::string::npos);
        criteria.push_back(ParseCriteriaString(line));
        GetCriterionText(line);
    }
    const std::string saved = writeSearchText(readSearchText(content).search, "name");
    require(writeSearchText(readSearchText(saved).search, "name") == saved);
    PreparedCriteria prepared(criteria, now);
    const bool all = MatchDictation(directory, name, prepared, true);
    const bool any = MatchDictation(directory, name, prepared, false);
    require(!criteria.empty() ? any || !all : all && !any);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    BuildSearchFieldTable();
    std::string_view rest = fuzzing::textOf(data, size);
    const std::string_view line = fuzzing::takePart(rest, '\n');
    readTyped(line);
    readQuick(line);
    readFile(rest);
    return 0;
}
