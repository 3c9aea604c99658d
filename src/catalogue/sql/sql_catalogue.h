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
        std::string behind; // the first path that is not below it any more
        std::int64_t depth = 0;
        bool isWhole = false; // all that the catalogue has
    };
    Reach reachOf(std::int64_t store, const Question& question);
    // Of the folders "f" that a question reaches, with the values of it.
    static constexpr const char* reached =
        " f.store = ? AND f.path >= ? AND f.path < ? AND f.depth <= ? ";
    static Values valuesOf(const Reach& reach);
};

} // namespace ov::catalogue::sql
