// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/hits/hit_search.h"

#include "cli/search_request.h"

namespace ov::cli {

using modDictation::DictationList;

modDictation::SearchReport searchFor(const modDictation::Search& what, const HitSearch& with) {
    if (with.catalogue != nullptr)
        return with.catalogue->search(what, with.consumer);
    DictationList hits;
    modDictation::SearchReport report =
        search(what, with.session, with.terminal, hits,
               [&] {
                   handOn(hits, with.consumer);
                   return !with.consumer.isFull();
               },
               {.entered = with.entered, .remembered = with.remembered});
    handOn(hits, with.consumer);
    with.consumer.endSearch(report);
    return report;
}

} // namespace ov::cli
