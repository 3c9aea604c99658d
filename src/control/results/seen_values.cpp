// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/seen_values.h"

#include "dictation/field_values.h"
#include "widgets/text.h"

#include <QElapsedTimer>

namespace ov {

namespace {
constexpr std::size_t mostValues = 1000;
}

bool SeenValues::lookOn(std::int32_t id) {
    Field& field = fields_[id];
    QElapsedTimer since;
    since.start();
    constexpr qint64 sliceMs = 8;
    constexpr std::int32_t askTheClock = 64; // hits that take some ten microseconds
    while (field.looked < hits_.size() && field.values.size() < mostValues) {
        look(id, field);
        if (field.looked % askTheClock == 0 && since.elapsed() >= sliceMs)
            return true;
    }
    return false;
}

void SeenValues::look(std::int32_t id, Field& field) {
    std::string value = modDictation::shownValue(id, hits_[++field.looked]);
    if (value.empty() || field.values.contains(value))
        return;
    field.texts.append(widgets::toQt(value));
    field.values.insert(std::move(value));
}

QStringList SeenValues::found(std::int32_t id) const {
    const auto field = fields_.find(id);
    return field == fields_.end() ? QStringList() : field->second.texts;
}

} // namespace ov
