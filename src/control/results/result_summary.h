// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/filter/aside_work.h"

#include <QLabel>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <vector>

namespace ov {

class ResultList;

// The line under the result list: how many rows there are, how many are selected, and how long
// they all play, which is what typists are paid by.
class ResultSummary final : public QLabel {
public:
    // The list must live as long.
    ResultSummary(ResultList& list, QWidget* parent);

    void retranslate() { tell(); }

private:
    using Lengths = std::vector<std::int32_t>; // seconds, by hit

    void rowsChanged();
    void tell();
    bool isFilling() const;
    QString part(std::int32_t textId, std::int64_t rows, std::int64_t seconds) const;

    ResultList& list_;
    AsideWork reading_;
    const void* hits_ = nullptr; // whose lengths these are, or will be
    std::shared_ptr<const Lengths> lengths_;
    bool unknown_ = false;           // the lengths could not be read
    std::int64_t secondsOfAll_ = -1; // -1: not added up
    QTimer soon_;
};

} // namespace ov
