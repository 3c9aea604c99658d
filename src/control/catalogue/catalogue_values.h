// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/value_source.h"
#include "platform/threads/errand.h"

#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace ov {

namespace modDictation {
class DictationList;
} // namespace modDictation

// The values that all dictations of a store have, as a catalogue knows them. It is asked aside; a
// field of which it tells nothing has the values of another source.
class CatalogueValues final : public ValueSource {
public:
    // `other` lives as long.
    CatalogueValues(std::string place, std::string root, ValueSource& other)
        : place_(std::move(place)), root_(std::move(root)), other_(other) {}
    ~CatalogueValues() override { stop_.request_stop(); }
    CatalogueValues(const CatalogueValues&) = delete;
    CatalogueValues& operator=(const CatalogueValues&) = delete;

    bool lookOn(std::int32_t field) override;
    QStringList found(std::int32_t field) const override;

private:
    // One dictation for each value, or several; nullptr when it cannot be asked.
    using Examples = std::unique_ptr<modDictation::DictationList>;
    struct Field {
        std::optional<platform::Errand<Examples>> asked;
        bool isAnswered = false;
        bool isOthers = false;
        QStringList texts;
    };
    static Examples ask(const std::string& place, const std::string& root, std::int32_t id,
                        const std::stop_token& stop);
    static QStringList textsOf(std::int32_t id, const modDictation::DictationList& examples);

    const std::string place_;
    const std::string root_;
    ValueSource& other_;
    std::stop_source stop_;
    std::map<std::int32_t, Field> fields_;
};

} // namespace ov
