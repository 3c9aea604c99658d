// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/moved_dictation.h"

#include "dictation/field_table.h"

#include <utility>

namespace ov {

using modDictation::Dictation;

MovedDictation::MovedDictation(const ResultModel& list, const std::string& path)
    : list_(list), hit_(list.hitOfPath(path)), path_(path) {}

modDictation::Search MovedDictation::searchIn(const std::string& root) const {
    constexpr std::int32_t field = modDictation::field_id::name;
    std::string value;
    modDictation::readField(modDictation::fieldDefinition(field).dictationField,
                            modDictation::dictationOfPath(path_), value);
    return {root, {{field, modDictation::operator_id::is, value, {}, false}}, true};
}

void MovedDictation::noteAnswer(const modDictation::DictationList& answer) {
    const std::string whenFound = pathOf(list_.hits()[hit_]);
    std::set<std::string> others;
    bool hasOld = false;
    for (std::int32_t i = 1; i <= answer.size(); ++i)
        if (std::string one = pathOf(answer[i]); one == path_ || one == whenFound)
            hasOld = true;
        else
            others.insert(std::move(one));
    if (hasOld)
        others_ = std::move(others);
}

bool MovedDictation::isAt(const Dictation& found) const {
    const std::string path = pathOf(found);
    const std::int32_t listed = list_.hitOfPath(path);
    return found.name == modDictation::dictationOfPath(path_).name && path != path_ &&
           (listed == 0 || listed == hit_) && !others_.contains(path);
}

} // namespace ov
