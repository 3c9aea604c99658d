// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "catalogue/postgres/pending_rows.h"

#include <array>
#include <cerrno>
#include <utility>

namespace ov::catalogue::loaded {

namespace {

// The numbers first, then the texts.
constexpr std::size_t folderNumbers = 14;
constexpr const char* writingOfFolders =
    "INSERT INTO folders (id, store, ward, depth, place, device, file, modified, changed,"
    " first_seen, settled, digest, dictations, skipped, path, upper, problem)"
    " SELECT * FROM unnest(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"
    " ON CONFLICT (id) DO UPDATE SET (ward, place, device, file, modified, changed, first_seen,"
    " settled, digest, dictations, skipped, problem) = (excluded.ward, excluded.place, "
    "excluded.device,"
    " excluded.file, excluded.modified, excluded.changed, excluded.first_seen,"
    " excluded.settled, excluded.digest, excluded.dictations, excluded.skipped,"
    " excluded.problem)";

std::array<std::int64_t, folderNumbers> numbersOf(const Folder& folder, std::int64_t store) {
    return {folder.id,
            store,
            folder.ward,
            folder.depth,
            folder.place,
            static_cast<std::int64_t>(folder.stamp.id.device),
            static_cast<std::int64_t>(folder.stamp.id.file),
            folder.stamp.modified,
            folder.stamp.changed,
            folder.firstSeen,
            static_cast<std::int64_t>(folder.settled),
            static_cast<std::int64_t>(folder.digest),
            folder.dictations,
            folder.skipped};
}

} // namespace

void PendingRows::add(const Folder& folder, std::int64_t store, std::string upper) {
    folders_.insert_or_assign(folder.id, FolderRow{folder, store, std::move(upper)});
}

void PendingRows::add(std::int64_t folder, std::int64_t position, std::string_view name,
                      const KeptValues& values) {
    rows_.push_back({folder, position, std::string(name), values});
}

bool PendingRows::isMuch() const noexcept {
    constexpr std::size_t mostRows = 20'000;
    constexpr std::size_t mostFolders = 2'000;
    return rows_.size() >= mostRows || folders_.size() >= mostFolders;
}

void PendingRows::forget() {
    folders_.clear();
    rows_.clear();
    texts_.forget();
}

void PendingRows::write(Connection& connection) {
    writeFolders(connection);
    texts_.resolve(connection);
    writeDictations(connection);
}

void PendingRows::writeFolders(Connection& connection) {
    if (folders_.empty())
        return;
    std::vector<ArrayOf> numbers(folderNumbers, ArrayOf(type::int64));
    std::vector<ArrayOf> texts(3, ArrayOf(type::bytes));
    for (const auto& [id, row] : folders_) {
        const auto values = numbersOf(row.folder, row.store);
        for (std::size_t i = 0; i < values.size(); ++i)
            numbers[i].add(values[i]);
        texts[0].add(row.folder.path);
        texts[1].add(row.upper);
        texts[2].add(row.folder.problem);
    }
    Parameters parameters;
    for (const auto* const arrays : {&numbers, &texts})
        for (const ArrayOf& array : *arrays)
            parameters.add(array);
    connection.ask(writingOfFolders, parameters);
    folders_.clear();
}

// False for a text that the server was not asked for.
bool PendingRows::appendColumns(std::string& out, const KeptValues& values) const {
    bool isWhole = true;
    for (std::size_t i = 0; i < columnCount; ++i) {
        const std::int64_t number = values.numbers[i];
        const Keeping keeping = keptColumns()[i].keeping;
        if (keeping == Keeping::text) {
            const std::int64_t known = number < kept::first ? number : texts_.of(number);
            appendField(out, static_cast<std::int32_t>(known));
            isWhole = isWhole && (known == 0) == (number == kept::absent);
        } else if (keeping != Keeping::ownText) {
            appendField(out, number);
        } else if (number == kept::absent) {
            appendNothing(out);
        } else {
            appendField(out, std::string_view(values.ownText));
        }
    }
    return isWhole;
}

bool PendingRows::append(std::string& out, const Row& row) const {
    constexpr std::int16_t fieldCount = columnCount + 4;
    const auto ward = wards_.find(row.folder);
    appendNumber(out, fieldCount);
    appendField(out, static_cast<std::int32_t>(row.folder));
    appendField(out, static_cast<std::int32_t>(row.position));
    appendField(out, ward != wards_.end() ? ward->second : std::int32_t{0});
    const bool isWhole = appendColumns(out, row.values);
    appendField(out, std::string_view(row.name));
    return isWhole && ward != wards_.end();
}

void PendingRows::writeDictations(Connection& connection) {
    constexpr std::size_t mostBytes = 256 * 1024; // at once
    if (rows_.empty() || connection.failed())
        return;
    connection.beginCopy("COPY dictations FROM STDIN (FORMAT binary)");
    std::string bytes;
    bool isWhole = true;
    for (const Row& row : rows_) {
        isWhole = append(bytes, row) && isWhole;
        if (bytes.size() < mostBytes)
            continue;
        connection.copy(bytes);
        bytes.clear();
    }
    connection.copy(bytes);
    connection.endCopy();
    rows_.clear();
    if (!isWhole)
        connection.fail(EIO, "the update took up a text that was undone; begin it anew");
}

} // namespace ov::catalogue::loaded
