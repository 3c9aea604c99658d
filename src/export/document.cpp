// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/document.h"

#include "dictation/field_table.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/text.h"
#include "support/language/language_id.h"
#include "support/language/modLanguage.h"
#include "support/language/text_ids.h"

namespace ov::exporting {

using modLanguage::GetText;

namespace {

std::vector<std::string> criteriaInWords(const modDictation::Search& search) {
    // A single empty one is satisfied by every dictation; beside others it changes what they mean.
    if (search.criteria.empty() ||
        (search.criteria.size() == 1 && search.criteria.front() == modDictation::Criterion()))
        return {GetText(text_id::printedWithoutCriteria)};
    std::vector<std::string> lines;
    for (const modDictation::Criterion& criterion : search.criteria)
        lines.push_back(
            platform::textFromBytes(modDictation::GetListedCriterionText(criterion, search.all)));
    if (lines.size() > 1)
        lines.insert(lines.begin(),
                     GetText(search.all ? text_id::describeAll : text_id::describeAny));
    return lines;
}

} // namespace

Column columnOf(std::int32_t field) {
    const modDictation::FieldDefinition& definition = modDictation::fieldDefinition(field);
    return {std::string(definition.key), field, modDictation::GetSearchFieldCaption(field, true),
            modDictation::GetSearchFieldCaption(field, false), definition.width};
}

Document describe(const modDictation::Search& search, const std::string& filter) {
    Document document;
    document.title = GetText(text_id::defaultPrintTitle);
    const std::int32_t language = modLanguage::Language();
    document.language = language_id::isGerman(language) ? "de" : "en";
    document.criteria = criteriaInWords(search);
    if (!filter.empty())
        document.criteria.push_back(GetText(text_id::filteredBy, {filter}));
    document.madeOn = GetText(text_id::printedOn, {platform::formatShortDate(platform::now())});
    document.storeFolder = platform::textFromBytes(platform::toNativePath(search.root));
    document.pageNumber = GetText(text_id::pageNumber);
    document.sheetName = GetText(text_id::defaultPrintTitle);
    document.listSeparator = platform::listSeparator();
    return document;
}

} // namespace ov::exporting
