// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "catalogue/postgres/postgres_catalogue.h"
#include "catalogue/postgres/postgres_tables.h"
#include "dictation/dictation_record.h"
#include "platform/text.h"

#include <algorithm>
#include <cerrno>
#include <utility>

// How it is updated.

namespace ov::catalogue::loaded {

using platform::Status;

// Which store is known only at putStore(), and others may be updated at the same time.
Status PostgresCatalogue::lockForUpdate() {
    std::vector<Store> any;
    return stores(any);
}

// Kept until the connection ends.
Status PostgresCatalogue::lock(std::int64_t store) {
    connection_.run("BEGIN; SET LOCAL lock_timeout = '1s'");
    const bool isOurs =
        connection_.ask("SELECT ovsearch.hold(CAST(? AS integer))", Parameters().add(store))
            .only() != 0;
    if (!isOurs && !connection_.failed())
        connection_.fail(EBUSY, {});
    endTransaction(connection_);
    const Status status = connection_.take();
    if (status.number() == EBUSY)
        return {EBUSY, connection_.name(),
                "another program is updating it; try again when that is through"};
    return status;
}

void PostgresCatalogue::startWriting() {
    if (isWriting_)
        return;
    connection_.run("BEGIN");
    isWriting_ = !connection_.failed();
}

Status PostgresCatalogue::write() {
    startWriting();
    pending_.write(connection_);
    return connection_.error();
}

Status PostgresCatalogue::commit() {
    if (isWriting_) {
        pending_.write(connection_);
        if (removed_ > 0)
            connection_.ask("UPDATE stores SET removed = removed + ? WHERE id = ?",
                            Parameters().add(std::exchange(removed_, 0)).add(store_));
        connection_.run("COMMIT");
    }
    Status status = connection_.error();
    if (status.ok())
        isWriting_ = false;
    else
        rollBack();
    return status;
}

void PostgresCatalogue::rollBack() {
    pending_.forget();
    removed_ = 0;
    static_cast<void>(connection_.take());
    if (std::exchange(isWriting_, false))
        connection_.run("ROLLBACK");
    static_cast<void>(connection_.take()); // the server has, where it cannot be told
}

Status PostgresCatalogue::putStore(Store& store) {
    const auto idOf = [this](const std::string& root) {
        return connection_.ask("SELECT id FROM stores WHERE root = ?", Parameters().add(root))
            .only();
    };
    const bool isNew = (store.id = idOf(store.root)) == 0;
    if (isNew) {
        connection_.ask("INSERT INTO stores (root, as_of, begun, removed) VALUES (?, 0, 0, 0)"
                        " ON CONFLICT DO NOTHING",
                        Parameters().add(store.root));
        store.id = idOf(store.root);
    }
    if (Status locked = isWriting_ ? connection_.error() : lock(store.id); !locked.ok())
        return locked;
    startWriting();
    connection_.ask("INSERT INTO wards (store, directory) VALUES (?, ?) ON CONFLICT DO NOTHING",
                    Parameters().add(store.id).add(store.root));
    connection_.ask("UPDATE stores SET as_of = ?, begun = ? WHERE id = ?",
                    Parameters().add(store.asOf).add(store.begun).add(store.id));
    readWards(store.id);
    store_ = store.id;
    return connection_.error();
}

void PostgresCatalogue::readWards(std::int64_t store) {
    wards_.clear();
    Answer row = connection_.ask(
        "SELECT directory, id FROM wards WHERE store = ? ORDER BY length(directory) DESC",
        Parameters().add(store));
    while (row.step())
        wards_.emplace_back(row.bytes(0), row.number(1));
}

std::int64_t PostgresCatalogue::wardOf(std::string_view path) const {
    const auto found = std::ranges::find_if(
        wards_, [path](const auto& ward) { return path.starts_with(ward.first); });
    return found != wards_.end() ? found->second : 0;
}

Status PostgresCatalogue::folders(std::int64_t store, std::vector<Folder>& folders) {
    if (Status read = SqlCatalogue::folders(store, folders); !read.ok() || wards_.empty())
        return read;
    for (Folder& folder : folders) {
        folder.ward = wardOf(folder.path);
        pending_.setWard(folder.id, folder.ward);
    }
    return {};
}

std::int64_t PostgresCatalogue::newFolderId() {
    constexpr std::int64_t mostAtOnce = 1'000;
    if (folderIds_.empty()) {
        Answer row = connection_.ask("SELECT nextval('folder_ids') FROM generate_series(1, ?)",
                                     Parameters().add(mostFolderIds_));
        while (row.step())
            folderIds_.push_back(row.number(0));
        std::ranges::reverse(folderIds_);
        mostFolderIds_ = std::min(2 * mostFolderIds_, mostAtOnce);
    }
    if (folderIds_.empty())
        return 0;
    const std::int64_t id = folderIds_.back();
    folderIds_.pop_back();
    return id;
}

Status PostgresCatalogue::putFolder(std::int64_t store, Folder& folder) {
    startWriting();
    if (folder.id == 0) {
        folder.id = newFolderId();
        folder.ward = wardOf(folder.path);
        pending_.setWard(folder.id, folder.ward);
    }
    pending_.add(folder, store, platform::upperCase(modDictation::GetDirectoryText(folder.path)));
    return pending_.isMuch() ? write() : connection_.error();
}

Status PostgresCatalogue::removeDictations(std::int64_t folder,
                                           const std::vector<std::int64_t>& positions) {
    ArrayOf those(type::int64);
    for (const std::int64_t position : positions)
        those.add(position);
    return remove(" AND position = ANY (?)", Parameters().add(folder).add(those));
}

Status PostgresCatalogue::removeFolder(std::int64_t folder) {
    if (Status status = remove("", Parameters().add(folder)); !status.ok())
        return status;
    connection_.ask("DELETE FROM folders WHERE id = ?", Parameters().add(folder));
    return connection_.error();
}

// Dictations of a folder.
Status PostgresCatalogue::remove(const std::string& which, const Parameters& values) {
    if (Status written = write(); !written.ok())
        return written;
    removed_ += connection_
                    .ask("WITH gone AS (DELETE FROM dictations WHERE folder = ?" + which +
                             " RETURNING folder) SELECT count(*) FROM gone",
                         values)
                    .only();
    return connection_.error();
}

// Nobody else has the texts of its wards.
Status PostgresCatalogue::removeStore(std::int64_t store) {
    if (Status locked = isWriting_ ? Status() : lock(store); !locked.ok())
        return locked;
    startWriting();
    for (const char* const sql :
         {"DELETE FROM dictations WHERE folder IN (SELECT id FROM folders WHERE store = ?)",
          "DELETE FROM folders WHERE store = ?",
          "DELETE FROM texts WHERE ward IN (SELECT id FROM wards WHERE store = ?)",
          "DELETE FROM ward_readers WHERE ward IN (SELECT id FROM wards WHERE store = ?)",
          "DELETE FROM wards WHERE store = ?", "DELETE FROM stores WHERE id = ?"})
        connection_.ask(sql, Parameters().add(store));
    hasRemoved_ = true;
    return connection_.error();
}

Status PostgresCatalogue::addDictation(std::int64_t folder, std::int64_t position,
                                       std::string_view name, const KeptValues& values) {
    startWriting();
    if (position >= mostPositions)
        return {EFBIG, connection_.name(), "a folder has too many dictations for a catalogue"};
    pending_.add(folder, position, name, values);
    return pending_.isMuch() ? write() : connection_.error();
}

Status PostgresCatalogue::setPlaces(const std::vector<Folder>& folders) {
    if (Status written = write(); !written.ok())
        return written;
    ArrayOf ids(type::int64);
    ArrayOf places(type::int64);
    for (const Folder& folder : folders) {
        ids.add(folder.id);
        places.add(folder.place);
    }
    connection_.ask("UPDATE folders SET place = a.place FROM unnest(?, ?) AS a (id, place)"
                    " WHERE folders.id = a.id",
                    Parameters().add(ids).add(places));
    return connection_.error();
}

std::int64_t PostgresCatalogue::numberOfText(std::int64_t ward, std::int32_t field,
                                             std::string_view upper, std::string_view text) {
    return pending_.addText(ward, field, upper, text);
}

// What nothing refers to any more is not to be found either. That takes a look at all dictations of
// the store, and so waits until a tenth of them has gone.
Status PostgresCatalogue::removeUnusedTexts() {
    const bool isDue =
        connection_
            .ask("SELECT removed * 10 > (SELECT COALESCE(sum(dictations), 0) FROM folders WHERE"
                 " store = s.id) FROM stores s WHERE id = ? AND removed > 0",
                 Parameters().add(store_))
            .only() != 0;
    if (!isDue)
        return connection_.take();
    startWriting();
    for (const KeptColumn& column : keptColumns())
        if (column.keeping == Keeping::text)
            connection_.ask("DELETE FROM texts t WHERE field = ? AND ward IN (SELECT id FROM wards"
                            " WHERE store = ?) AND NOT EXISTS (SELECT FROM dictations d WHERE d." +
                                std::string(column.name) + " = t.number AND d.ward = t.ward)",
                            Parameters().add(column.field).add(store_));
    connection_.ask("UPDATE stores SET removed = 0 WHERE id = ?", Parameters().add(store_));
    return commit();
}

// What is asked is planned by what the server knows of the tables; it looks at them by itself, but
// later.
Status PostgresCatalogue::tidy(bool isSmall) {
    if (isSmall && !hasRemoved_)
        return connection_.take();
    const bool isFirst =
        connection_.ask("SELECT to_regclass('ovsearch.folders_by_path') IS NULL").only() != 0;
    makeServerIndexes(connection_);
    if (Status removed = removeUnusedTexts(); !removed.ok())
        return removed;
    if (hasRemoved_ || isFirst)
        connection_.run("VACUUM (ANALYZE) ovsearch.dictations, ovsearch.folders, ovsearch.texts");
    hasRemoved_ = hasRemoved_ && connection_.failed();
    return connection_.take();
}

} // namespace ov::catalogue::loaded
