// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/catalogue/catalogue_fixture.h"

#include <fstream>

namespace ov::catalogue {

using modDictation::muchLater;
using modDictation::RandomTree;

// A small store that is brought into a catalogue.
class StoreUpdate : public CatalogueTest {
protected:
    StoreUpdate() {
        store.add("one.WAV").add("ward/two.WAV").add("ward/ERL/three.WAV").add("x/four.WAV");
    }

    UpdateReport update() const { return CatalogueTest::update(store.directory()); }
    UpdateReport updateLater() const {
        UpdateMeans means;
        means.clock = muchLater;
        return CatalogueTest::update(store.directory(), means);
    }
    Texts asked() const { return CatalogueTest::asked(store.directory()); }
    Texts walked() const { return CatalogueTest::walked(store.directory()); }
    Store known() const {
        std::vector<Store> stores;
        EXPECT_TRUE(open(Access::ask)->stores(stores).ok());
        return stores.empty() ? Store() : stores.front();
    }
    // Of the catalogue's file and those beside it.
    std::string bytes() const {
        return read("catalogue.db") + read("catalogue.db-wal") + read("catalogue.db-shm");
    }
    // Writes a number into the head of the file.
    void setHead(std::streamoff offset, char value) const {
        std::fstream file(platform::toNativePath(place()),
                          std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(offset);
        file.put(value);
    }
    std::string refusal() const {
        platform::Status status;
        EXPECT_EQ(openCatalogue(place(), Access::ask, status), nullptr);
        return status.text();
    }

    tests::TemporaryStore store;
};

// For EXPECT_PRED2, which shows both.
inline bool holds(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

} // namespace ov::catalogue
