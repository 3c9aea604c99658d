// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/store_update.h"
#include "tests/control/control_fixture.h"
#include "tests/wave_files.h"

namespace ov {

// A window whose setting names a catalogue.
class CatalogueWindow : public ControlTest {
protected:
    CatalogueWindow() { write("local.ini", sectionWith("Catalogue=" + path("catalogue.db"))); }

    static std::string sectionWith(const std::string& line) {
        return "[OVSearch.ctrlOVSearch]\r\n" + line + "\r\n";
    }
    virtual std::string place() const { return path("catalogue.db"); }
    void update(const std::string& root) const {
        platform::Status status;
        const auto catalogue = catalogue::openCatalogue(place(), catalogue::Access::update, status);
        ASSERT_NE(catalogue, nullptr) << status.description();
        status = catalogue::updateStore(*catalogue, root, {}).status;
        ASSERT_TRUE(status.ok()) << status.description();
    }
    void update() const { update(store.directory()); }
    std::string moment() { return text("lblCatalogueMoment"); }
    std::string hint() {
        QCoreApplication::processEvents();
        return child<QLabel>(results(), "lblListHint").text().toStdString();
    }
    // As a user asks for a walk.
    void searchAfresh() {
        user->saysYes = true;
        key(window(), Qt::Key_F5, Qt::ShiftModifier);
        user->saysYes = false;
    }
    void move(const char* from, const char* to) const {
        fs::create_directories(fs::path(store.native(to)).parent_path());
        fs::rename(store.native(from), store.native(to));
    }
};

} // namespace ov
