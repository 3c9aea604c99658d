// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/postgres/connection.h"
#include "catalogue/postgres/pending_rows.h"
#include "catalogue/sql/sql_catalogue.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ov::catalogue::loaded {

// A catalogue in a database of a server, for many machines. Several stores may be updated at once.
class PostgresCatalogue final : public sql::SqlCatalogue {
public:
    static std::unique_ptr<Catalogue> open(const std::string& server, Access access,
                                           Status& status);

    Status begin() override;
    void end() override;
    Status size(std::int64_t& bytes) override;
    Status folders(std::int64_t store, std::vector<Folder>& folders) override;
    Status names(std::int64_t folder, std::vector<std::string>& names) override;
    Status positions(std::int64_t folder, std::vector<std::int64_t>& positions) override;
    Status candidates(std::int64_t store, const Question& question, const Taker& take) override;
    Status counts(std::int64_t store, const Question& question, std::optional<std::size_t> column,
                  const Taker& take) override;

    Status lockForUpdate() override;
    Status commit() override;
    void rollBack() override;
    Status putStore(Store& store) override;
    Status removeStore(std::int64_t store) override;
    Status putFolder(std::int64_t store, Folder& folder) override;
    Status removeFolder(std::int64_t folder) override;
    Status removeDictations(std::int64_t folder,
                            const std::vector<std::int64_t>& positions) override;
    Status addDictation(std::int64_t folder, std::int64_t position, std::string_view name,
                        const KeptValues& values) override;
    Status setPlaces(const std::vector<Folder>& folders) override;
    std::int64_t numberOfText(std::int64_t ward, std::int32_t field, std::string_view upper,
                              std::string_view text) override;
    Status tidy(bool isSmall) override;

private:
    PostgresCatalogue(Address address, Access access);

    std::unique_ptr<sql::Rows> ask(const std::string& sql, const sql::Values& values) override;
    Status takeError() override { return connection_.take(); }
    std::string indexedPath(const std::string& root) const override;
    std::vector<std::int64_t> wardsOf(std::int64_t store) override;

    void openConnection();
    template <typename Act>
    void tryTwice(const Act& act);
    Question lookedUp(Question question);
    Status tellAll(const std::string& sql, const sql::Values& values, const Taker& take);
    void startWriting();
    Status write();
    Status remove(const std::string& which, const Parameters& values);
    Status lock(std::int64_t store);
    void readWards(std::int64_t store);
    std::int64_t wardOf(std::string_view path) const;
    std::int64_t newFolderId();
    Status removeUnusedTexts();

    const Access access_;
    Connection connection_;
    bool isInside_ = false; // from begin() to end()
    bool isWriting_ = false;
    bool hasRemoved_ = false;  // a store, since tidy()
    std::int64_t store_ = 0;   // that is updated
    std::int64_t removed_ = 0; // dictations of it, since commit()
    PendingRows pending_;
    std::vector<std::pair<std::string, std::int64_t>> wards_; // the innermost first
    std::vector<std::int64_t> folderIds_;                     // that are free
    std::int64_t mostFolderIds_ = 1;                          // to be had at once
};

} // namespace ov::catalogue::loaded
