// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue_search.h"
#include "catalogue/store_update.h"
#include "tests/dictation/listing/listing_fixture.h"

#include <memory>

namespace ov::catalogue {

using modDictation::Search;
using modDictation::SearchReport;
using Texts = std::vector<std::string>;

// A store, and a catalogue of it in a file of its own.
class CatalogueTest : public tests::SettingsTest {
protected:
    virtual std::string place() const { return path("catalogue.db"); }
    std::unique_ptr<Catalogue> open(Access access) const {
        platform::Status status;
        auto catalogue = openCatalogue(place(), access, status);
        EXPECT_TRUE(status.ok()) << status.description();
        return catalogue;
    }
    UpdateReport update(const std::string& root, const UpdateMeans& means = {}) const {
        const auto catalogue = open(Access::update);
        return catalogue ? updateStore(*catalogue, root, means) : UpdateReport();
    }
    static Texts asked(Catalogue& catalogue, const Search& what, SearchReport& report) {
        modDictation::DictationList hits;
        platform::Status status;
        const auto store = storeOf(catalogue, what.root, status);
        if (store)
            status = search(catalogue, *store, what, hits, {}, report);
        if (!status.ok())
            return {status.description()};
        return pathsOf(hits);
    }
    Texts asked(const Search& what) const {
        const auto catalogue = open(Access::ask);
        SearchReport report;
        return catalogue ? asked(*catalogue, what, report) : Texts{"no catalogue"};
    }
    static Texts walked(const Search& what) {
        modDictation::DictationList hits;
        modDictation::search(what, hits);
        return pathsOf(hits);
    }
    static Search allOf(const std::string& root) { return {root, {}, true, -1, 999999}; }
    Texts asked(const std::string& root) const { return asked(allOf(root)); }
    static Texts walked(const std::string& root) { return walked(allOf(root)); }
};

} // namespace ov::catalogue
