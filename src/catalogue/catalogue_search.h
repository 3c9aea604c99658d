// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "dictation/search/search.h"

#include <cstdint>
#include <functional>

namespace ov::catalogue {

// What search() of a walk (dictation/search/search.h) answered at the moment of the last update:
// the same hits in the same order, and what was left out. `matched` of the report stays empty. Of
// `means` only whom to stop for and who watches. Fails where the catalogue cannot be read or does
// not have the folder; `hits` keeps what was found by then.
platform::Status search(Catalogue& catalogue, const Store& store, const modDictation::Search& what,
                        modDictation::DictationList& hits, const modDictation::SearchMeans& means,
                        modDictation::SearchReport& report);

// How many hits there are of each value of a field, or in all (noField): one of them and how many
// others are like it, several times for values that a catalogue does not keep apart. Without a
// limit.
platform::Status countHits(Catalogue& catalogue, const Store& store,
                           const modDictation::Search& what, std::int32_t byField,
                           const Catalogue::Taker& take, modDictation::SearchReport& report,
                           const modDictation::SearchMeans& means = {});

} // namespace ov::catalogue
