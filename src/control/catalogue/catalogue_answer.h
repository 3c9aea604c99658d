// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "catalogue/catalogue.h"
#include "dictation/search/search.h"
#include "platform/locale.h"
#include "support/modUtil.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace ov {

// What a catalogue answers to a search.
struct CatalogueAnswer {
    enum class Kind : std::uint8_t { answered, missing, lacksFolder, unreachable };

    Kind kind = Kind::answered;
    std::string what;        // else: the folder that it lacks, or the catalogue
    platform::Status status; // why it is unreachable
    std::optional<catalogue::Store> store;
    modDictation::SearchReport report;
    std::unique_ptr<modDictation::DictationList> hits;

    // That and why there is none, or the question whether to walk instead.
    modUtil::Message problem() const;
    modUtil::Message question() const;
};

// Who waits for an answer.
struct CatalogueWait {
    std::stop_token stop;
    std::function<bool()> isEnding;                // nobody waits any more
    std::function<void(std::int32_t found)> watch; // many times a second
};

// Asks on a thread of its own and lets window messages be handled until the answer is there. A
// request to stop gives what was found by then, or nothing, when that does not come soon.
CatalogueAnswer askPumping(const std::string& place, const modDictation::Search& what,
                           const CatalogueWait& wait);

// The catalogue of that place and the store in it where the folder lies, on the thread of the
// caller; without a store `answer` tells why.
std::unique_ptr<catalogue::Catalogue> openFor(const std::string& place, const std::string& folder,
                                              CatalogueAnswer& answer);

// As a person names it in the settings: a file, "own", or the address of a server.
std::string cataloguePlace(const std::string& named);

// "10:42", with the date when that was not on the day of `now`.
std::string momentText(std::int64_t nanoseconds, const platform::DateTime& now);

} // namespace ov
