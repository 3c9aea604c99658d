// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/filter/aside_work.h"
#include "dictation/filter/row_filter.h"

#include <QObject>
#include <functional>
#include <memory>
#include <string_view>

namespace ov {

// Finds the hits whose rows hold the words that somebody types, on threads of its own: the window
// never waits, and of several texts only the newest one is answered.
class QuickFilter final : public QObject {
    Q_OBJECT

public:
    using Kept = std::shared_ptr<const modDictation::KeptHits>;
    struct Found {
        Kept kept; // nullptr: all are, as there is no filter, or it could not be looked for
        modDictation::FilterReading reading;
    };

    // `source` tells what the list shows at the moment.
    QuickFilter(QObject* parent, std::function<modDictation::RowTexts::Source()> source);

    // Makes the texts of the rows ahead, as somebody is about to type.
    void prepare();
    // Asks for the hits that hold these words; found() comes later from the event loop, unless
    // another text follows.
    void find(std::string_view text);
    // Rows, columns or language are others: gives up what was asked for and what is kept.
    void forget();

Q_SIGNALS:
    void found(const ov::QuickFilter::Found& found);

private:
    void start(const modDictation::RowFilter& filter);
    void keepAll(const modDictation::FilterReading& reading);

    std::function<modDictation::RowTexts::Source()> source_;
    std::shared_ptr<modDictation::RowTexts> texts_; // nullptr until asked for
    modDictation::RowFilter answered_;              // found the hits of `kept_`
    Kept kept_;
    AsideWork work_;
};

} // namespace ov
