// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/catalogue.h"
#include "catalogue/postgres/text_numbers.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ov::catalogue::loaded {

// What is to be written, gathered: rows go to the server by thousands, each alone would wait for an
// answer.
class PendingRows {
public:
    void add(const Folder& folder, std::int64_t store, std::string upper);
    void add(std::int64_t folder, std::int64_t position, std::string_view name,
             const KeptValues& values);
    std::int64_t addText(std::int64_t ward, std::int32_t field, std::string_view upper,
                         std::string_view text) {
        return texts_.add(ward, field, upper, text);
    }
    void setWard(std::int64_t folder, std::int64_t ward) {
        wards_[folder] = static_cast<std::int32_t>(ward);
    }

    bool isMuch() const noexcept;
    void write(Connection& connection);
    // After what was written has been undone.
    void forget();

private:
    struct FolderRow {
        Folder folder;
        std::int64_t store = 0;
        std::string upper;
    };
    struct Row {
        std::int64_t folder = 0;
        std::int64_t position = 0;
        std::string name;
        KeptValues values;
    };
    void writeFolders(Connection& connection);
    void writeDictations(Connection& connection);
    bool append(std::string& out, const Row& row) const;
    bool appendColumns(std::string& out, const KeptValues& values) const;

    std::map<std::int64_t, FolderRow> folders_;            // by their ids
    std::unordered_map<std::int64_t, std::int32_t> wards_; // of folders
    std::vector<Row> rows_;
    TextNumbers texts_;
};

} // namespace ov::catalogue::loaded
