// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/sql/sql_database.h"

#include <memory>
#include <string>
#include <vector>

namespace ov::catalogue::sql {

// What all databases are asked in the same words. They have tables "stores" and "folders", with the
// columns that stand in sql_catalogue.cpp.
class SqlCatalogue : public Catalogue {
public:
    Status stores(std::vector<Store>& stores) final;
    Status count(Store& store) final;
    Status folders(std::int64_t store, std::vector<Folder>& folders) override;
    Status leftOut(std::int64_t store, const Question& question, LeftOut& left) final;

protected:
    // The rows, at once or while they are stepped through; none after an error, which lasts.
    virtual std::unique_ptr<Rows> ask(const std::string& sql, const Values& values) = 0;
    // The first error since it was taken the last time.
    virtual Status takeError() = 0;

    // What a question reaches.
    struct Reach {
        std::int64_t store = 0;
        std::string root;
        std::string behind;          // the first path that is not below it any more
        std::int64_t firstPlace = 0; // of those below it, and where others may be between them
        std::int64_t lastPlace = -1;
        std::int64_t depth = 0;
        bool isStore = false;            // the root is that of the store
        bool isWhole = false;            // all that the catalogue has
        std::vector<std::int64_t> wards; // the only ones in which there may be any; empty: all
    };
    Reach reachOf(std::int64_t store, const Question& question);
    // A condition on the folders "f" that it reaches, with the values of it.
    static std::string reached(const Reach& reach);
    static Values valuesOf(const Reach& reach);

private:
    // As paths of folders "f" are found by an index, for what is below this one.
    virtual std::string indexedPath(const std::string& /*root*/) const { return "f.path"; }
    virtual std::vector<std::int64_t> wardsOf(std::int64_t /*store*/) { return {}; }

    bool goesDeeper(const Reach& reach);
    void findPlaces(Reach& reach);
};

} // namespace ov::catalogue::sql
