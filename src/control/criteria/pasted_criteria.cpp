// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/criteria/pasted_criteria.h"

#include "widgets/text.h"

namespace ov {

modDictation::CriteriaText pastedCriteria(const QString& copied) {
    constexpr qsizetype mostLetters = 100'000;
    constexpr std::size_t most = 500;
    const qsizetype end = copied.size() <= mostLetters
                              ? copied.size()
                              : copied.lastIndexOf(u'\n', mostLetters - 1) + 1;
    modDictation::CriteriaText read =
        modDictation::readCriteriaText(widgets::toUtf8(copied.left(end)));
    if (read.criteria.size() > most) {
        read.skipped += read.criteria.size() - most;
        read.criteria.resize(most);
    }
    if (end < copied.size())
        read.skipped += static_cast<std::size_t>(copied.mid(end).trimmed().count(u'\n')) + 1;
    return read;
}

} // namespace ov
