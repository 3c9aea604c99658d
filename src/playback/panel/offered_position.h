// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QToolButton>
#include <cstdint>

namespace ov {

// Offers to go on where the dictation was left; hidden while there is nothing to offer.
class OfferedPosition final : public QToolButton {
    Q_OBJECT

public:
    explicit OfferedPosition(QWidget* parent);

    void offer(std::int32_t milliseconds); // and has it read out
    void withdraw();
    std::int32_t milliseconds() const { return milliseconds_; }

    void retranslate();

private:
    std::int32_t milliseconds_ = 0;
};

} // namespace ov
