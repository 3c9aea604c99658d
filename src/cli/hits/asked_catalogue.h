// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "cli/hits/hit_consumer.h"
#include "dictation/search/search.h"

#include <memory>
#include <string>

namespace ov::cli {

// The place of a catalogue as typed: a file, a server, or "own" for the one among the user's data.
std::string cataloguePlace(const std::string& typed);

// As openCatalogue(); ends early when the user interrupts, also where a server does not answer.
std::unique_ptr<catalogue::Catalogue>
openUnlessInterrupted(const std::string& place, catalogue::Access access, platform::Status& status);

// "2026-11-22 10:42", of the user's time zone.
std::string momentText(std::int64_t nanoseconds);

// Of what moment the answers from a store are.
std::string asOfText(const catalogue::Store& store);

// A catalogue that is searched in place of a store.
class AskedCatalogue {
public:
    platform::Status open(const std::string& typed) {
        platform::Status status;
        catalogue_ = openUnlessInterrupted(cataloguePlace(typed), catalogue::Access::ask, status);
        return status;
    }

    // Hands the hits on, until the consumer is full. Where not all of the store is there yet that
    // counts as a search that was stopped. Where it cannot be asked the report says so,
    // as of a store that cannot be read.
    modDictation::SearchReport search(const modDictation::Search& what, HitConsumer& consumer);

    // Of what moment the answers are; where not all of the store is there yet, that. Empty before
    // the first search.
    const std::string& asOf() const noexcept { return asOf_; }

private:
    platform::Status ask(const modDictation::Search& what, HitConsumer& consumer,
                         modDictation::SearchReport& report);

    std::unique_ptr<catalogue::Catalogue> catalogue_;
    std::string asOf_;
    bool isWhole_ = true; // the store in it
};

} // namespace ov::cli
