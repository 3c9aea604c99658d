// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/search_run.h"

#include <QString>
#include <optional>
#include <string>

namespace ov {

// What the list of hits says while it is empty.
struct SearchHint {
    QString text;
    bool offersAll = false; // to list all dictations
};

// `root` is the dictation tree, empty when none is chosen; `outcome` is that of the last search,
// which was for `searched`.
SearchHint searchHint(const std::string& root, bool hasCriteria,
                      const std::optional<SearchOutcome>& outcome,
                      const modDictation::Search& searched);

// By its place, whether no dictation meets that criterion of a search which found nothing, nor any
// other of its group: then they alone emptied the list. Empty where that is not known.
std::vector<bool> emptyingCriteria(const SearchOutcome& outcome,
                                   const modDictation::Search& searched);

} // namespace ov
