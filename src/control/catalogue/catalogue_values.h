// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/value_source.h"
#include "platform/threads/errand.h"

#include <QSet>
#include <map>
#include <optional>
#include <stop_token>
#include <string>

namespace ov {

// The values that all dictations of a store have, as a catalogue knows them, and those of another
// source, which may be newer. The catalogue is asked aside: until it answers there are the others.
class CatalogueValues final : public ValueSource {
public:
    // `other` lives as long.
    CatalogueValues(std::string place, std::string root, ValueSource& other)
        : place_(std::move(place)), root_(std::move(root)), other_(other) {}
    ~CatalogueValues() override { stop_.request_stop(); }
    CatalogueValues(const CatalogueValues&) = delete;
    CatalogueValues& operator=(const CatalogueValues&) = delete;

    bool lookOn(std::int32_t id) override;
    bool isWaiting(std::int32_t id) const override;
    QStringList found(std::int32_t id) const override;

private:
    using Texts = QSet<QString>;
    struct Field {
        std::optional<platform::Errand<Texts>> asked;
        bool isAnswered = false;
        bool isWaiting = false;
        Texts known; // by it
        QStringList texts;
    };
    static Texts ask(const std::string& place, const std::string& root, std::int32_t id,
                     const std::stop_token& stop);

    const std::string place_;
    const std::string root_;
    ValueSource& other_;
    std::stop_source stop_;
    std::map<std::int32_t, Field> fields_;
};

} // namespace ov
