// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/dictation_facts.h"

#include "dictation/dictation.h"
#include "dictation/field_table.h"
#include "dictation/field_values.h"

#include <algorithm>
#include <string>

namespace ov::modDictation {

namespace {

// All but the auxiliary ones, also those that the user does not show.
std::vector<SearchField> describedFields() {
    const auto all = searchFields();
    std::vector<SearchField> fields;
    for (const SearchField& field : all)
        if (!fieldDefinition(field.Id).key.empty())
            fields.push_back(field);
    std::sort(fields.begin(), fields.end(),
              [](const SearchField& a, const SearchField& b) { return a.Position < b.Position; });
    return fields;
}

} // namespace

std::vector<DictationFact> describeDictation(std::string_view path) {
    const Dictation dictation = dictationOfPath(path);
    std::vector<DictationFact> facts;
    for (const SearchField& field : describedFields())
        if (std::string value = shownValue(field.Id, dictation); !value.empty())
            facts.push_back({field.Caption, std::move(value)});
    return facts;
}

} // namespace ov::modDictation
