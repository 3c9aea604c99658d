// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/results/column_layout.h"
#include "dictation/search/result_order.h"
#include "support/ini_section.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace ov {

// What the control remembers from one use to the next, in the host's per-user INI file, section
// "OVSearch.ctrlOVSearch". Reading gives the default for what is missing; writing without a file
// does nothing.
class ControlSettings {
public:
    explicit ControlSettings(std::string file = {}) : settings_(controlSection, std::move(file)) {}

    const std::string& file() const { return settings_.file(); }

    // Sets the marker that older versions looked for; nothing else is copied.
    void markAsCopied() const;

    std::int32_t listSortKey() const;   // zero-based index of a column, 1
    std::int32_t listSortOrder() const; // 0 ascending, 1 descending; 0
    void setListSort(std::int32_t key, std::int32_t order) const;

    // By what rows are sorted that are equal by that; none.
    modDictation::SortKey secondSort() const;
    void setSecondSort(modDictation::SortKey key) const;

    bool searchCompareAnd() const; // true
    void setSearchCompareAnd(bool compareAnd) const;

    bool followsCriteria() const; // the list of hits does; true
    void setFollowsCriteria(bool follows) const;

    ColumnLayout columnLayout() const;
    void setColumnLayout(const ColumnLayout& layout) const;

    std::int32_t backUpSeconds() const; // of the player, 0 to 10; 0
    void setBackUpSeconds(std::int32_t seconds) const;
    std::int32_t speedPercent() const; // of the player, 50 to 200; 100
    void setSpeedPercent(std::int32_t percent) const;
    std::string timeStampForm() const; // see playback/panel/player_texts.h; empty
    void setTimeStampForm(const std::string& form) const;
    bool remembersPositions() const; // where dictations are left in the player; true
    void setRemembersPositions(bool remembers) const;

    // How high the user made the criteria's half of the window, in thousandths; nothing: as high
    // as the criteria need.
    std::optional<std::int32_t> criteriaShare() const;
    void setCriteriaShare(std::int32_t thousandths) const;

    // What searches keep of the store in memory: how much at most, in MiB, 512; and whether the
    // times of folders count also on file systems of unknown kind, false. Set by hand.
    std::int32_t rememberedMiB() const;
    bool trustsFolderTimes() const;

private:
    IniSection settings_;
};

} // namespace ov
