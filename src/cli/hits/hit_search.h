// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "cli/hits/asked_catalogue.h"
#include "cli/hits/hit_consumer.h"
#include "cli/session.h"
#include "cli/terminal_interface.h"
#include "dictation/search/search.h"

#include <functional>
#include <memory>
#include <string>

namespace ov::cli {

// What searches of a command have in common.
struct HitSearch {
    const Session& session;
    TerminalInterface& terminal;
    HitConsumer& consumer;
    std::shared_ptr<modDictation::RememberedStore> remembered = {};
    std::function<void(const std::string& directory)> entered = {}; // as SearchMeans has it
    AskedCatalogue* catalogue = nullptr;                            // that is searched instead
};

// Hands the hits of a search on while it runs, until the consumer is full. Keeps none.
modDictation::SearchReport searchFor(const modDictation::Search& what, const HitSearch& with);

} // namespace ov::cli
