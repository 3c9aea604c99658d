// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/typed/field_word.h"

#include "dictation/field_table.h"
#include "dictation/typed/criterion_text.h"
#include "dictation/typed/similar_word.h"
#include "platform/text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace ov::modDictation {

namespace {

constexpr std::size_t fewestLetters = 2; // of a name

std::int32_t fieldOfCaption(std::string_view word) {
    for (const SearchField& field : searchFields()) {
        const bool named = platform::equalsIgnoringCase(word, field.Caption) ||
                           platform::equalsIgnoringCase(word, field.ShortCaption);
        if (named && word.size() >= fewestLetters && !fieldDefinition(field.Id).key.empty())
            return field.Id;
    }
    return noField;
}

std::vector<const FieldDefinition*> fieldsBeginning(std::string_view word) {
    std::vector<const FieldDefinition*> fields;
    for (const FieldDefinition& field : fieldDefinitions()) {
        const std::string_view start = field.key.substr(0, word.size());
        if (word.size() >= fewestLetters && platform::equalsIgnoringCase(start, word))
            fields.push_back(&field);
    }
    std::ranges::stable_sort(fields, {}, [](const auto* field) { return field->key.size(); });
    return fields;
}

bool beginAll(std::string_view key, const std::vector<const FieldDefinition*>& fields) {
    return std::ranges::all_of(fields,
                               [key](const auto* field) { return field->key.starts_with(key); });
}

std::string probablyMeant(std::string_view word) {
    std::vector<std::string> names;
    for (const FieldDefinition& field : fieldDefinitions())
        if (!field.key.empty())
            names.emplace_back(field.key);
    for (const SearchField& field : searchFields())
        if (!fieldDefinition(field.Id).key.empty() && field.Caption.find(' ') == std::string::npos)
            names.push_back(field.Caption);
    return similarWord(word, names);
}

} // namespace

std::int32_t fieldOfWord(std::string_view word) {
    const auto isKey = [word](const FieldDefinition& field) {
        return !field.key.empty() && platform::equalsIgnoringCase(field.key, word);
    };
    const auto key = std::ranges::find_if(fieldDefinitions(), isKey);
    if (key != fieldDefinitions().end())
        return key->id;
    if (const std::int32_t field = fieldOfCaption(word); field != noField)
        return field;
    const auto fields = fieldsBeginning(word);
    return !fields.empty() && beginAll(fields.front()->key, fields) ? fields.front()->id : noField;
}

std::string unknownField(std::string_view word) {
    std::string meant;
    for (const FieldDefinition* field : fieldsBeginning(word))
        meant.append(meant.empty() ? "" : "\" or \"").append(field->key);
    if (meant.empty())
        meant = probablyMeant(word);
    const std::string sentence = "there is no field \"" + std::string(word) + '"';
    return meant.empty() ? sentence + "; fields are: " + fieldKeys()
                         : sentence + "; did you mean \"" + meant + "\"?";
}

} // namespace ov::modDictation
