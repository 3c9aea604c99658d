// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/sql/sql_catalogue.h"

#include <algorithm>
#include <limits>

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

// A condition with that many values; none for none.
std::string inWards(std::size_t count) {
    std::string sql;
    for (std::size_t i = 0; i < count; ++i)
        sql.append(i == 0 ? " AND f.ward IN (?" : ", ?");
    return count == 0 ? sql : sql + ") ";
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
    Reach reach;
    reach.store = store;
    reach.root = reach.behind = question.root;
    ++reach.behind.back(); // a directory text ends in "\"
    reach.depth = noDepth;
    const auto row =
        ask("SELECT root, (SELECT count(*) FROM stores) FROM stores WHERE id = ?", {store});
    if (!row->step())
        return reach;
    const std::string_view root = row->bytes(0);
    const auto above = std::count(question.root.begin(), question.root.end(), '\\') -
                       std::count(root.begin(), root.end(), '\\');
    if (question.depth >= 0)
        reach.depth = above + question.depth;
    reach.isStore = root == question.root;
    reach.wards = wardsOf(store);
    reach.isWhole =
        reach.isStore && row->number(1) == 1 && reach.wards.empty() && !goesDeeper(reach);
    if (!reach.isStore)
        findPlaces(reach);
    return reach;
}

bool SqlCatalogue::goesDeeper(const Reach& reach) {
    if (reach.depth == noDepth)
        return false;
    const auto row = ask(
        "SELECT count(*) FROM (SELECT 1 FROM folders WHERE store = ? AND depth > ? LIMIT 1) one",
        {reach.store, reach.depth});
    return row->step() && row->number(0) > 0;
}

// By the index of paths; in their places they lie side by side, and where they are asked for in
// that order nothing has to be sorted. "+ 0": the first one is not looked for from the first place
// on.
void SqlCatalogue::findPlaces(Reach& reach) {
    const std::string path = indexedPath(reach.root);
    Values values = {reach.store, Bytes{reach.root}, Bytes{reach.behind}};
    values.insert(values.end(), reach.wards.begin(), reach.wards.end());
    const auto row = ask("SELECT COALESCE(min(f.place + 0), 0), COALESCE(max(f.place + 0), -1)"
                         " FROM folders f WHERE f.store = ? AND " +
                             path + " >= ? AND " + path + " < ?" + inWards(reach.wards.size()),
                         values);
    if (!row->step())
        return;
    reach.firstPlace = row->number(0);
    reach.lastPlace = row->number(1);
}

std::string SqlCatalogue::reached(const Reach& reach) {
    std::string sql = " f.store = ? ";
    if (!reach.isStore)
        sql.append("AND f.place BETWEEN ? AND ? AND f.path >= ? AND f.path < ? ");
    if (reach.depth != noDepth)
        sql.append("AND f.depth + 0 <= ? "); // most are: no index helps
    return sql + inWards(reach.wards.size());
}

Values SqlCatalogue::valuesOf(const Reach& reach) {
    Values values = {reach.store};
    if (!reach.isStore)
        values.insert(values.end(),
                      {reach.firstPlace, reach.lastPlace, Bytes{reach.root}, Bytes{reach.behind}});
    if (reach.depth != noDepth)
        values.emplace_back(reach.depth);
    values.insert(values.end(), reach.wards.begin(), reach.wards.end());
    return values;
}

// All that is there lies below the root: where something does, that is there too. The conditions
// are those of the indexes, so that not every folder is looked at.
Catalogue::Status SqlCatalogue::leftOut(std::int64_t store, const Question& question,
                                        LeftOut& left) {
    Reach reach = reachOf(store, question);
    const auto row =
        ask("SELECT f.path, f.problem, f.skipped FROM folders f WHERE" + reached(reach) +
                "AND (f.skipped > 0 OR length(f.problem) > 0) ORDER BY f.place",
            valuesOf(reach));
    while (row->step()) {
        if (!row->bytes(1).empty())
            left.unreadable.emplace_back(row->bytes(0), row->bytes(1));
        left.skipped += row->number(2);
    }
    const auto first =
        ask("SELECT 1 FROM folders f WHERE" + reached(reach) + "LIMIT 1", valuesOf(reach));
    left.isRootThere = first->step();
    if (reach.depth == noDepth)
        return takeError();
    const std::int64_t depth = reach.depth++;
    Values values = valuesOf(reach);
    values.emplace_back(depth);
    const auto deep =
        ask("SELECT count(*) FROM folders f WHERE" + reached(reach) + "AND f.depth > ?", values);
    if (deep->step())
        left.tooDeep = deep->number(0);
    left.isRootThere = left.isRootThere || left.tooDeep > 0;
    return takeError();
}

} // namespace ov::catalogue::sql
