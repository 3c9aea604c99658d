// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue/sql/sql_catalogue.h"
#include "catalogue/sqlite/database.h"
#include "platform/file_lock.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ov::catalogue::sql {
class QuestionText;
}

namespace ov::catalogue::loaded {

// A catalogue in one file of this machine, with two beside it while it is in use: those who ask go
// on while it is updated (write-ahead logging).
class SqliteCatalogue final : public sql::SqlCatalogue {
public:
    static std::unique_ptr<Catalogue> open(const std::string& native, Access access,
                                           Status& status);

    Status begin() override;
    void end() override;
    Status size(std::int64_t& bytes) override;
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
    explicit SqliteCatalogue(std::string native) : native_(std::move(native)) {}

    std::unique_ptr<sql::Rows> ask(const std::string& sql, const sql::Values& values) override;
    Status takeError() override;

    Status few(const Reach& reach, const sql::QuestionText& text, const Taker& take);
    Status many(const Reach& reach, const sql::QuestionText& text, const Taker& take);
    bool tell(std::int64_t dictation, std::int64_t count, const Taker& take);
    Status removeDictations(std::int64_t folder);
    std::vector<bool> usedTexts();
    Status removeUnusedTexts();
    void startWriting();

    std::string native_;
    Database database_;
    platform::FileLock lock_;
    bool isWriting_ = false;
    bool hasChanged_ = false; // dictations
    std::int64_t lastText_ = 0;
    std::int64_t toldFolder_ = 0; // whose path is toldPath_
    std::string toldPath_;
    // Those used for each dictation.
    sqlite3_stmt* addName_ = nullptr;
    sqlite3_stmt* addNumbers_ = nullptr;
    sqlite3_stmt* addText_ = nullptr;
    sqlite3_stmt* findText_ = nullptr;
};

} // namespace ov::catalogue::loaded
