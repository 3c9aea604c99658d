// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "tests/catalogue/postgres_server.h"
#include "tests/control/catalogue/catalogue_window_fixture.h"

// A window whose catalogue is on a server.

namespace ov {
namespace {

class ServerWindow : public CatalogueWindow {
protected:
    ServerWindow() { write("local.ini", sectionWith("Catalogue=" + place())); }
    std::string place() const override { return server.place(database_); }

    PostgresServer& server = PostgresServer::get();

private:
    std::string database_ = server.newDatabase();
};

TEST_F(ServerWindow, AsksUntilTheServerDies) {
    store.add("a/2$WAV@@14$Anna.WAV").add("2$WAV@@14$Berta.WAV");
    update();
    fs::remove(store.native("2$WAV@@14$Berta.WAV"));
    openWith("5|17|a|\n");
    search();
    EXPECT_EQ(rows(), "*Berta; Anna; ");
    EXPECT_TRUE(moment().starts_with("as of ")) << moment();
    waitFor([this] { return counts() == "2 of 2; "; });

    server.crash();
    user->saysYes = true;
    search();
    EXPECT_NE(user->onlyText().find("does not answer"), std::string::npos);
    EXPECT_EQ(rows(), "*Anna; ") << "walked instead";
    EXPECT_EQ(moment(), "");
    server.start();
    search();
    EXPECT_EQ(rows(), "*Berta; Anna; ");
}

} // namespace
} // namespace ov
