// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/sql/sql_catalogue.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ov::catalogue::sql {

namespace {

constexpr std::int64_t noDepth = std::numeric_limits<std::int64_t>::max();

Settled settledOf(std::int64_t stored) {
    const bool isKnown = stored >= 0 && stored <= static_cast<std::int64_t>(Settled::linked);
    return isKnown ? static_cast<Settled>(stored) : Settled::no;
}

Folder folderIn(const Rows& row) {
    Folder folder;
    folder.id = row.number(0);
    folder.path = row.bytes(1);
    folder.depth = static_cast<std::int32_t>(row.number(2));
    folder.place = row.number(3);
    folder.stamp.id.device = static_cast<std::uint64_t>(row.number(4));
    folder.stamp.id.file = static_cast<std::uint64_t>(row.number(5));
    folder.stamp.modified = row.number(6);
    folder.stamp.changed = row.number(7);
    folder.firstSeen = row.number(8);
    folder.settled = settledOf(row.number(9));
    folder.digest = static_cast<std::uint64_t>(row.number(10));
    folder.dictations = row.number(11);
    folder.skipped = row.number(12);
    folder.problem = row.bytes(13);
    return folder;
}

} // namespace

Catalogue::Status SqlCatalogue::stores(std::vector<Store>& stores) {
    const auto row = ask("SELECT id, root, as_of, begun FROM stores ORDER BY root", {});
    while (row->step()) {
        Store& store = stores.emplace_back();
        store.id = row->number(0);
        store.root = row->bytes(1);
        store.asOf = row->number(2);
        store.begun = row->number(3);
    }
    return takeError();
}

Catalogue::Status SqlCatalogue::count(Store& store) {
    const auto row = ask("SELECT count(*), CAST(sum(dictations) AS bigint),"
                         " count(*) FILTER (WHERE problem <> ?) FROM folders WHERE store = ?",
                         {Bytes{}, store.id});
    if (row->step()) {
        store.folders = row->number(0);
        store.dictations = row->number(1);
        store.unreadable = row->number(2);
    }
    return takeError();
}

Catalogue::Status SqlCatalogue::folders(std::int64_t store, std::vector<Folder>& folders) {
    const auto row = ask("SELECT id, path, depth, place, device, file, modified, changed,"
                         " first_seen, settled, digest, dictations, skipped, problem FROM folders"
                         " WHERE store = ? ORDER BY place",
                         {store});
    while (row->step())
        folders.push_back(folderIn(*row));
    return takeError();
}

SqlCatalogue::Reach SqlCatalogue::reachOf(std::int64_t store, const Question& question) {
    Reach reach{store, question.root, question.root, noDepth, false};
    ++reach.behind.back(); // a directory text ends in "\"
    const auto row = ask("SELECT root, (SELECT count(*) FROM stores),"
                         " (SELECT max(depth) FROM folders) FROM stores WHERE id = ?",
                         {store});
    if (!row->step())
        return reach;
    const std::string_view root = row->bytes(0);
    const auto above = std::count(question.root.begin(), question.root.end(), '\\') -
                       std::count(root.begin(), root.end(), '\\');
    if (question.depth >= 0)
        reach.depth = above + question.depth;
    reach.isWhole = root == question.root && row->number(1) == 1 && row->number(2) <= reach.depth;
    return reach;
}

Values SqlCatalogue::valuesOf(const Reach& reach) {
    return {reach.store, Bytes{reach.root}, Bytes{reach.behind}, reach.depth};
}

// All that is there lies below the root: where something does, that is there too.
Catalogue::Status SqlCatalogue::leftOut(std::int64_t store, const Question& question,
                                        LeftOut& left) {
    Reach reach = reachOf(store, question);
    const std::int64_t depth = std::exchange(reach.depth, noDepth);
    Values values = valuesOf(reach);
    values.insert(values.end(), {depth, depth == noDepth ? depth : depth + 1});
    const auto row =
        ask(std::string("SELECT f.path, f.depth, f.skipped, f.problem FROM folders f WHERE") +
                reached + "AND (f.depth <= ? OR f.depth = ?) ORDER BY f.place",
            values);
    while (row->step()) {
        left.isRootThere = true;
        if (row->number(1) > depth) {
            ++left.tooDeep;
            continue;
        }
        left.skipped += row->number(2);
        if (row->bytes(3).empty())
            ++left.read;
        else
            left.unreadable.emplace_back(row->bytes(0), row->bytes(3));
    }
    return takeError();
}

} // namespace ov::catalogue::sql
