// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/criteria/criteria_room.h"

#include <QEvent>
#include <QHeaderView>
#include <QLayout>
#include <QSplitter>
#include <QTreeView>
#include <algorithm>
#include <utility>

namespace ov {

namespace {

constexpr int fewestRows = 3;
constexpr int mostRows = 8;
constexpr int thousand = 1000;
// Of the window, which a small one keeps for the hits.
constexpr double mostOfTheHeight = 0.45;

int wholeHeight(const QSplitter& splitter) {
    const QList<int> heights = splitter.sizes();
    return heights[0] + heights[1];
}

} // namespace

CriteriaRoom::CriteriaRoom(QSplitter& splitter, QTreeView& list)
    : QObject(&splitter), splitter_(splitter), list_(list) {
    soon_.setSingleShot(true);
    soon_.setInterval(0); // rows come one by one, without what they show
    connect(&soon_, &QTimer::timeout, this, &CriteriaRoom::makeRoom);
    const auto later = qOverload<>(&QTimer::start);
    connect(list.model(), &QAbstractItemModel::rowsInserted, &soon_, later);
    connect(list.model(), &QAbstractItemModel::rowsRemoved, &soon_, later);
    connect(list.model(), &QAbstractItemModel::modelReset, &soon_, later);
    connect(&splitter, &QSplitter::splitterMoved, this, [this] {
        dragged_ = true;
        fits_ = false;
    });
    splitter.installEventFilter(this);
}

void CriteriaRoom::begin(std::optional<std::int32_t> share) {
    share_ = share;
    fits_ = !share;
    if (splitter_.isVisible())
        makeRoom();
}

std::optional<std::int32_t> CriteriaRoom::draggedShare() const {
    const int whole = wholeHeight(splitter_);
    if (!dragged_ || whole <= 0)
        return std::nullopt;
    return (splitter_.sizes()[0] * thousand + whole / 2) / whole;
}

// What is shown at once has its room at once; all else would be moved while it is being laid out.
bool CriteriaRoom::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show)
        makeRoom();
    else if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        soon_.start();
    return QObject::eventFilter(watched, event);
}

void CriteriaRoom::makeRoom() {
    if (!splitter_.isVisible())
        return;
    if (fits_)
        fitEntries();
    else if (share_)
        setHeight(wholeHeight(splitter_) * *std::exchange(share_, std::nullopt) / thousand);
}

void CriteriaRoom::fitEntries() {
    const int rows = std::clamp(list_.model()->rowCount(), fewestRows, mostRows);
    const int beside = heightBesideTheList();
    const int most = static_cast<int>(wholeHeight(splitter_) * mostOfTheHeight);
    setHeight(std::clamp(beside + listHeight(rows), std::min(beside + listHeight(fewestRows), most),
                         most));
}

int CriteriaRoom::listHeight(int rows) const {
    const int row =
        list_.model()->rowCount() > 0 ? list_.sizeHintForRow(0) : list_.fontMetrics().height();
    const QMargins inside = list_.contentsMargins();
    return rows * row + list_.header()->sizeHint().height() + inside.top() + inside.bottom() + 1;
}

// The buttons, and a sentence that takes more lines in a narrow window.
int CriteriaRoom::heightBesideTheList() const {
    const QWidget& half = *splitter_.widget(0);
    const QLayout& layout = *half.layout();
    const int height = layout.hasHeightForWidth() ? layout.totalHeightForWidth(half.width())
                                                  : layout.totalSizeHint().height();
    return height - list_.sizeHint().height();
}

void CriteriaRoom::setHeight(int height) {
    const int whole = wholeHeight(splitter_);
    if (whole > 0 && splitter_.sizes()[0] != height)
        splitter_.setSizes({height, whole - height});
}

} // namespace ov
