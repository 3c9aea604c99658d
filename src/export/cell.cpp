// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/cell.h"

#include "platform/text.h"

namespace ov::exporting {

std::string cellBytes(const Column& column, const Dictation& dictation) {
    return column.field == pathColumn ? nativePathOf(dictation)
                                      : modDictation::shownValue(column.field, dictation);
}

std::string cellText(const Column& column, const Dictation& dictation) {
    return platform::textFromBytes(cellBytes(column, dictation));
}

std::optional<modDictation::TypedValue> cellValue(const Column& column,
                                                  const Dictation& dictation) {
    return column.field == pathColumn ? std::nullopt
                                      : modDictation::typedValue(column.field, dictation);
}

std::string HitRows::text(const Column& column, std::int64_t row) const {
    return cellText(column, dictation(row));
}

} // namespace ov::exporting
