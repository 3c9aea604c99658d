// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/catalogue/known_values.h"

#include "dictation/field_codes.h"
#include "dictation/field_table.h"
#include "widgets/text.h"

#include <utility>

namespace ov {

namespace {

auto codesOf(std::int32_t field) {
    return modDictation::fieldDefinition(field).offeredCodes;
}

} // namespace

KnownValues::KnownValues(std::shared_ptr<const modDictation::DictationList> hits,
                         const std::string& catalogue, const std::string& root)
    : hits_(std::move(hits)) {
    if (!catalogue.empty())
        catalogue_.emplace(catalogue, root, seen_);
}

bool KnownValues::lookOn(std::int32_t field) {
    if (!codesOf(field).empty())
        return false;
    return catalogue_ ? catalogue_->lookOn(field) : seen_.lookOn(field);
}

bool KnownValues::isWaiting(std::int32_t field) const {
    return catalogue_ && catalogue_->isWaiting(field);
}

QStringList KnownValues::found(std::int32_t field) const {
    if (codesOf(field).empty())
        return catalogue_ ? catalogue_->found(field) : seen_.found(field);
    QStringList texts;
    for (const std::int32_t code : codesOf(field))
        texts.append(widgets::toQt(modDictation::GetStatusText(code)));
    texts.removeAll(QString());
    return texts;
}

} // namespace ov
