// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/catalogue/catalogue_values.h"
#include "control/results/seen_values.h"

#include <memory>
#include <optional>
#include <string>

namespace ov {

// All that the window knows of the values of fields: what the hits of the last search have, and a
// catalogue where there is one. Of fields of codes it has the texts of all codes.
class KnownValues final : public ValueSource {
public:
    // `catalogue` is its place; empty: none.
    KnownValues(std::shared_ptr<const modDictation::DictationList> hits,
                const std::string& catalogue, const std::string& root);

    bool lookOn(std::int32_t field) override;
    bool isWaiting(std::int32_t field) const override;
    QStringList found(std::int32_t field) const override;

private:
    std::shared_ptr<const modDictation::DictationList> hits_;
    SeenValues seen_{*hits_};
    std::optional<CatalogueValues> catalogue_;
};

} // namespace ov
