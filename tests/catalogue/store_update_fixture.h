// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/catalogue/catalogue_fixture.h"
#include "tests/run_program.h"

#include <functional>
#include <ostream>

namespace ov::catalogue {

using modDictation::muchLater;
using modDictation::RandomTree;
using tests::holds;

// A store that is brought into a catalogue.
class OneStore : public CatalogueTest {
protected:
    using CatalogueTest::asked;
    using CatalogueTest::update;
    using CatalogueTest::walked;
    UpdateReport update() const { return update(store.directory()); }
    UpdateReport updateLater() const {
        const UpdateMeans means{.clock = muchLater};
        return update(store.directory(), means);
    }
    Texts asked() const { return asked(store.directory()); }
    Texts walked() const { return walked(store.directory()); }
    Store known() const {
        std::vector<Store> stores;
        EXPECT_TRUE(open(Access::ask)->stores(stores).ok());
        return stores.empty() ? Store() : stores.front();
    }
    void forget() const {
        platform::Status status;
        const auto catalogue = open(Access::update);
        EXPECT_TRUE(
            catalogue->removeStore(storeOf(*catalogue, store.directory(), status)->id).ok());
        EXPECT_TRUE(catalogue->commit().ok());
        EXPECT_TRUE(catalogue->tidy(false).ok());
    }
    static std::string refusal(const std::string& place, Access access = Access::ask) {
        platform::Status status;
        EXPECT_EQ(openCatalogue(place, access, status), nullptr);
        return status.description();
    }
    void addMany(int count, const std::string& folder = "many/") {
        for (int i = 0; i < count; ++i)
            store.add(folder + "2$WAV@@11$" + std::to_string(i) + std::string(150, 'x') + ".WAV");
    }
    // Where the update of so many more fails.
    void expectNothingLost(int count, const std::function<bool()>& updateFails) {
        update();
        const Texts before = asked();
        addMany(count);
        EXPECT_TRUE(updateFails());
        EXPECT_EQ(asked(), before);
        EXPECT_TRUE(update().status.ok());
        EXPECT_EQ(asked(), walked());
    }

    tests::TemporaryStore store;
};

// Where a catalogue may be.
struct Home {
    const char* name = "";
    std::string (*makePlace)() = nullptr; // on a server; else it is a file
};

inline void PrintTo(const Home& home, std::ostream* out) {
    *out << home.name;
}

class AtHome : public OneStore, public ::testing::WithParamInterface<Home> {
protected:
    static bool isOnServer() { return GetParam().makePlace != nullptr; }
    std::string place() const final { return isOnServer() ? place_ : OneStore::place(); }

private:
    std::string place_ = isOnServer() ? GetParam().makePlace() : std::string();
};

class StoreUpdate : public AtHome {
protected:
    StoreUpdate() {
        store.add("one.WAV").add("ward/two.WAV").add("ward/ERL/three.WAV").add("x/four.WAV");
    }
};

} // namespace ov::catalogue
