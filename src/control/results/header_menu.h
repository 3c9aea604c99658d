// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/search/result_order.h"

#include <cstdint>
#include <functional>
#include <vector>

class QMenu;
class QWidget;

namespace ov {

// What the titles of the result list offer, and what of it was chosen.
struct HeaderChoice {
    enum What : std::uint8_t {
        sort,
        sortSecond,
        fitWidth,
        moveLeft,
        moveRight,
        show,
        hide,
        choose,
        reset
    };
    What what = sort;
    modDictation::SortKey key; // the column's field, and how to sort by it

    bool isOfAColumn() const {
        return what == sort || what == fitWidth || what == moveLeft || what == moveRight;
    }
};

// The menus of the titles: of one column, or of all for who has no mouse.
class HeaderMenu {
public:
    struct Columns {
        std::vector<std::int32_t> shown; // fields from left to right
        modDictation::SortKey sorted;
        modDictation::SortKey second;
    };
    HeaderMenu(QWidget& parent, Columns columns, std::function<void(HeaderChoice)> choose)
        : parent_(parent), columns_(std::move(columns)), choose_(std::move(choose)) {}

    // The parent owns it; it deletes itself when it is closed.
    QMenu* ofColumn(std::int32_t field) const;
    QMenu* ofAll() const;

private:
    QMenu* make() const;
    void addColumn(QMenu& menu, std::int32_t field) const;
    void addSorts(QMenu& menu, std::int32_t field) const;
    void addChoiceOfColumns(QMenu& menu) const;
    void add(QMenu& menu, std::int32_t textId, HeaderChoice choice, bool enabled) const;
    void addTick(QMenu& menu, std::int32_t textId, HeaderChoice choice, bool ticked) const;

    QWidget& parent_;
    Columns columns_;
    std::function<void(HeaderChoice)> choose_;
};

} // namespace ov
