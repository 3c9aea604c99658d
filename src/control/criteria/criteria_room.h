// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <optional>

class QSplitter;
class QTreeView;

namespace ov {

// How high the upper half of the window is, which holds the criteria: as high as its entries, 3 to
// 8 rows, until the user drags the line below it.
class CriteriaRoom final : public QObject {
public:
    // The list stands in the first half of `splitter`.
    CriteriaRoom(QSplitter& splitter, QTreeView& list);

    // The user's share of the height, in thousandths, when he has dragged the line before; it is
    // shown once there is room to share.
    void begin(std::optional<std::int32_t> share);
    // As he dragged it since; nothing when he has not.
    std::optional<std::int32_t> draggedShare() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeRoom();
    void fitEntries();
    int listHeight(int rows) const;
    int heightBesideTheList() const;
    void setHeight(int height);

    QSplitter& splitter_;
    QTreeView& list_;
    QTimer soon_;
    std::optional<std::int32_t> share_; // to show
    bool fits_ = false;                 // the entries, whatever they are
    bool dragged_ = false;
};

} // namespace ov
