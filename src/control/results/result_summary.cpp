// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/results/result_summary.h"

#include "control/results/result_list.h"
#include "dictation/field_date.h"
#include "dictation/filter/hit_lengths.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ov {

namespace {

std::string hours(std::int64_t seconds) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    return modDictation::secondsText(static_cast<std::int32_t>(std::min(seconds, most)));
}

} // namespace

ResultSummary::ResultSummary(ResultList& list, QWidget* parent) : QLabel(parent), list_(list) {
    setObjectName(QStringLiteral("lblResultSummary"));
    setTextFormat(Qt::PlainText);
    constexpr int briefly = 50;
    soon_.setSingleShot(true);
    soon_.setInterval(briefly);
    connect(&soon_, &QTimer::timeout, this, &ResultSummary::tell);
    const auto rowsChange = [this] { rowsChanged(); };
    connect(list.model(), &QAbstractItemModel::modelReset, this, rowsChange);
    connect(list.model(), &QAbstractItemModel::rowsInserted, this, rowsChange);
    connect(list.selectionModel(), &QItemSelectionModel::selectionChanged, &soon_,
            qOverload<>(&QTimer::start));
}

// The lengths of a million take longer to read than a window should stand still.
void ResultSummary::rowsChanged() {
    secondsOfAll_ = -1;
    soon_.start();
    auto hits = list_.results().sharedHits();
    if (hits.get() == hits_)
        return;
    hits_ = hits.get();
    lengths_ = nullptr;
    unknown_ = false;
    auto read = [this, hits](const std::stop_token& stop) -> AsideWork::Delivery {
        auto lengths = std::make_shared<const Lengths>(modDictation::hitLengths(*hits, stop));
        return [this, lengths] {
            lengths_ = lengths;
            soon_.start();
        };
    };
    reading_.start(std::move(read), [this] {
        unknown_ = true;
        soon_.start();
    });
}

bool ResultSummary::isFilling() const {
    const ResultModel& model = list_.results();
    return model.kept() == nullptr && model.rowCount() < model.hits().size();
}

QString ResultSummary::part(std::int32_t textId, std::int64_t rows, std::int64_t seconds) const {
    const std::string none = unknown_ ? "?" : "…";
    return widgets::text(textId, {widgets::groupedNumber(rows), lengths_ ? hours(seconds) : none});
}

void ResultSummary::tell() {
    const ResultModel& model = list_.results();
    if (isFilling())
        return;
    const auto lengthOf = [&](int row) -> std::int64_t {
        return lengths_ ? (*lengths_)[static_cast<std::size_t>(model.hitOf(row)) - 1] : 0;
    };
    if (lengths_ && secondsOfAll_ < 0) {
        secondsOfAll_ = 0;
        for (int row = 0; row < model.rowCount(); ++row)
            secondsOfAll_ += lengthOf(row);
    }
    std::int64_t selected = 0;
    std::int64_t seconds = 0;
    list_.selected().forEachRow([&](int row) {
        seconds += lengthOf(row);
        return ++selected > 0;
    });
    QString text;
    if (model.rowCount() > 0)
        text = part(text_id::summaryOfAll, model.rowCount(), secondsOfAll_);
    if (selected > 0)
        text += QStringLiteral("    ") + part(text_id::summaryOfSelected, selected, seconds);
    setText(text);
}

} // namespace ov
