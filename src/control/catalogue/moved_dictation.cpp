// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/moved_dictation.h"

#include "dictation/field_table.h"

namespace ov {

using modDictation::Dictation;

MovedDictation::MovedDictation(const ResultModel& list, const std::string& path)
    : hit_(list.hitOfPath(path)), path_(path) {}

modDictation::Search MovedDictation::searchIn(const std::string& root) const {
    constexpr std::int32_t field = modDictation::field_id::name;
    std::string value;
    modDictation::readField(modDictation::fieldDefinition(field).dictationField,
                            modDictation::dictationOfPath(path_), value);
    return {root, {{field, modDictation::operator_id::is, value, {}, false}}, true};
}

bool MovedDictation::isAt(const Dictation& found) const {
    return found.name == modDictation::dictationOfPath(path_).name && pathOf(found) != path_;
}

} // namespace ov
