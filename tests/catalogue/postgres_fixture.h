// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/catalogue/catalogue_fixture.h"
#include "tests/catalogue/postgres_server.h"

namespace ov::catalogue {

inline bool holds(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

// A store, and a catalogue of it in a database of its own.
class OnServer : public CatalogueTest {
protected:
    OnServer() {
        store.add("one.WAV").add("ward/2$ROH@@11$Secret.WAV").add("ward/ERL/three.WAV");
        store.add("other/2$WAV@@11$Known@@14$47.WAV");
    }

    std::string place() const override { return server.place(database, role); }
    using CatalogueTest::asked;
    using CatalogueTest::update;
    using CatalogueTest::walked;
    UpdateReport update() const { return CatalogueTest::update(store.directory()); }
    UpdateReport updateLater() const {
        UpdateMeans means;
        means.clock = modDictation::muchLater;
        return CatalogueTest::update(store.directory(), means);
    }
    Texts asked() const { return CatalogueTest::asked(store.directory()); }
    Texts walked() const { return CatalogueTest::walked(store.directory()); }
    std::string run(const std::string& sql, const std::string& as = "postgres") const {
        return server.run(database, sql, as);
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

    tests::PostgresServer& server = tests::PostgresServer::get();
    const std::string database = server.newDatabase();
    std::string role = "postgres"; // that opens catalogues
    tests::TemporaryStore store;
};

} // namespace ov::catalogue
