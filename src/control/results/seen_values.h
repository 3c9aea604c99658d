// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/value_source.h"
#include "dictation/search/dictation_list.h"

#include <map>
#include <set>
#include <string>

namespace ov {

// The values that the hits of the last search have. A field that has more of them than anybody
// would choose from is not looked through to its end.
class SeenValues final : public ValueSource {
public:
    // The hits stay as they are for as long as this lives.
    explicit SeenValues(const modDictation::DictationList& hits) : hits_(hits) {}

    bool lookOn(std::int32_t field) override;
    QStringList found(std::int32_t field) const override;

private:
    struct Field {
        std::int32_t looked = 0; // at so many hits
        std::set<std::string, std::less<>> values;
        QStringList texts;
    };
    void look(std::int32_t id, Field& field);

    const modDictation::DictationList& hits_;
    std::map<std::int32_t, Field> fields_;
};

} // namespace ov
