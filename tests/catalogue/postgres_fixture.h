// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/catalogue/postgres_server.h"
#include "tests/catalogue/store_update_fixture.h"

namespace ov::catalogue {

// A new database, made with these words of CREATE DATABASE.
inline std::string placeOnServer(const char* how) {
    auto& server = tests::PostgresServer::get();
    return server.place(server.newDatabase(how));
}

// A store, and a catalogue of it in a database of its own.
class OnServer : public OneStore {
protected:
    OnServer() {
        store.add("one.WAV").add("ward/2$ROH@@11$Secret.WAV").add("ward/ERL/three.WAV");
        store.add("other/2$WAV@@11$Known@@14$47.WAV");
    }

    std::string place() const override { return server.place(database, role); }
    std::string run(const std::string& sql, const std::string& as = "postgres") const {
        return server.run(database, sql, as);
    }

    tests::PostgresServer& server = tests::PostgresServer::get();
    const std::string database = server.newDatabase();
    std::string role = "postgres"; // that opens catalogues
};

} // namespace ov::catalogue
