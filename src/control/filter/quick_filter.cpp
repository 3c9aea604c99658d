// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/filter/quick_filter.h"

#include "platform/threads/detached_thread.h"

#include <utility>

namespace ov {

QuickFilter::QuickFilter(QObject* parent, std::function<modDictation::RowTexts::Source()> source)
    : QObject(parent), source_(std::move(source)) {}

void QuickFilter::prepare() {
    if (!texts_)
        start({});
}

void QuickFilter::find(std::string_view text) {
    const modDictation::RowFilter filter(text);
    if (!filter.empty()) {
        start(filter);
        return;
    }
    work_.giveUp();
    keepAll(filter.reading());
}

void QuickFilter::keepAll(const modDictation::FilterReading& reading) {
    kept_ = nullptr;
    Q_EMIT found({nullptr, reading});
}

void QuickFilter::start(const modDictation::RowFilter& filter) {
    if (!texts_)
        texts_ = std::make_shared<modDictation::RowTexts>(source_());
    const Kept among = kept_ && filter.isWithin(answered_) ? kept_ : nullptr;
    const bool asked = !filter.empty(); // else the texts are all that is wanted
    auto work = [=, this, texts = texts_](const std::stop_token& stop) -> AsideWork::Delivery {
        const Kept kept = modDictation::keptHits(*texts, filter, among.get(), stop);
        if (!kept || !asked)
            return nullptr;
        return [=, this] {
            answered_ = filter;
            kept_ = kept;
            Q_EMIT found({kept, filter.reading()});
        };
    };
    work_.start(std::move(work), [this, asked] {
        if (asked)
            keepAll({});
    });
}

void QuickFilter::forget() {
    work_.giveUp();
    kept_ = nullptr;
    // So much memory takes longer to give back than a window should stand still.
    if (texts_)
        platform::startDetached([old = std::exchange(texts_, nullptr)]() mutable { old.reset(); });
}

} // namespace ov
