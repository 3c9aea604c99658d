// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/painting/code_icons.h"

#include "dictation/field_codes.h"
#include "dictation/field_table.h"

#include <string>

namespace ov {

using modDictation::ValueType;

namespace {

QString numbered(const char* set, std::int32_t code) {
    return code == modDictation::noCode ? QString()
                                        : QStringLiteral("%1-%2").arg(QLatin1String(set)).arg(code);
}

} // namespace

bool hasCodeIcons(std::int32_t field) {
    switch (modDictation::fieldDefinition(field).valueType) {
    case ValueType::status:
    case ValueType::priority:
    case ValueType::marker:
    case ValueType::flag:
        return true;
    default:
        return false;
    }
}

QString codeIconName(std::int32_t field, const modDictation::Dictation& dictation) {
    const modDictation::FieldDefinition& definition = modDictation::fieldDefinition(field);
    std::string value;
    modDictation::readField(definition.dictationField, dictation, value);
    const auto code = [&] { return modDictation::GetFieldCode(definition.dictationField, value); };
    switch (definition.valueType) {
    case ValueType::status:
        return numbered("status", code());
    case ValueType::priority:
        return numbered("priority", code());
    case ValueType::marker:
        return modDictation::isMarked(value) ? QStringLiteral("marker") : QString();
    case ValueType::flag:
        return code() == modDictation::noCode ? QString() : QStringLiteral("flags");
    default:
        return {};
    }
}

} // namespace ov
