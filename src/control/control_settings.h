// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/results/column_layout.h"
#include "dictation/search/result_order.h"
#include "playback/panel/choices/player_choices.h"
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

    std::string pedals() const; // see playback/pedal/pedal_assignments.h; empty
    void setPedals(const std::string& assignments) const;
    PlayerChoices playerChoices() const;
    // Writes what is another than before; the rest may be another window's.
    void setPlayerChoices(const PlayerChoices& choices, const PlayerChoices& before) const;

    std::string output() const; // of the player, by name; empty: the usual one
    void setOutput(const std::string& name) const;
    std::optional<std::int32_t> volume() const; // of the player, 0 to 65535; as the mixer has it
    void setVolume(std::int32_t volume) const;

    // How high the user made the criteria's half of the window, in thousandths; nothing: as high
    // as the criteria need.
    std::optional<std::int32_t> criteriaShare() const;
    void setCriteriaShare(std::int32_t thousandths) const;

    // What searches keep of the store in memory: how much at most, in MiB, 512; and whether the
    // times of folders count also on file systems of unknown kind, false. Set by hand.
    std::int32_t rememberedMiB() const;
    bool trustsFolderTimes() const;

    // The catalogue as cataloguePlace() reads it, empty: none is named; and whether searches ask
    // it, true where one is named. Asking is switched off without the name being lost; on, without
    // a name, it is the user's own.
    std::string catalogue() const;
    bool searchesCatalogue() const;
    void setSearchesCatalogue(bool searches) const;

    // Whether other programs of the session see the player and drive it, true. Set by hand.
    bool isPlayerOnBus() const;
    // Whether the desktop asks for keys that drive it from all programs, true.
    bool offersPlayerShortcuts() const;
    void declinePlayerShortcuts() const;

private:
    IniSection settings_;
};

} // namespace ov
