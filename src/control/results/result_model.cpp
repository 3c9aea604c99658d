// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/results/result_model.h"

#include "control/results/painting/code_icons.h"
#include "dictation/field_values.h"
#include "platform/threads/detached_thread.h"
#include "support/language/text_ids.h"
#include "widgets/text.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace ov {

using widgets::toQt;

ResultModel::ResultModel(QObject* parent)
    : QAbstractTableModel(parent), hits_(std::make_shared<modDictation::DictationList>()) {}

int ResultModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int ResultModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

void ResultModel::setColumns() {
    beginResetModel();
    columns_.clear();
    for (const modDictation::SearchField* field : modDictation::columnFields())
        columns_.push_back({field->Id, toQt(field->ShortCaption), toQt(field->Caption),
                            field->Width,
                            modDictation::sortsByNumber(field->Id) &&
                                field->ValueType == modDictation::ValueType::time});
    endResetModel();
}

void ResultModel::retranslate() {
    for (Column& column : columns_) {
        column.title = toQt(modDictation::GetSearchFieldCaption(column.field, false));
        column.caption = toQt(modDictation::GetSearchFieldCaption(column.field, true));
    }
    if (!columns_.empty())
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    if (rows_ > 0 && !columns_.empty())
        Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

int ResultModel::columnOf(std::int32_t field) const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(),
                     [field](const Column& column) { return column.field == field; });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

void ResultModel::clear() {
    setHits(std::make_unique<modDictation::DictationList>());
}

void ResultModel::setHits(std::unique_ptr<modDictation::DictationList> hits) {
    beginResetModel();
    rows_ = 0;
    order_ = {};
    kept_ = nullptr;
    playing_ = 0;
    orders_.forget();
    moved_.clear();
    std::shared_ptr<const modDictation::DictationList> old = std::exchange(hits_, std::move(hits));
    endResetModel();
    Q_EMIT hitsReplaced();
    // The memory of a million takes longer to give back than a window should stand still.
    platform::startDetached([old = std::move(old)]() mutable { old.reset(); });
}

void ResultModel::showFirst(std::int32_t count) {
    if (count <= rows_)
        return;
    beginInsertRows({}, rows_, count - 1);
    rows_ = count;
    endInsertRows();
}

// A reset instead of moved rows: keeping track of a million selected rows one by one would take
// longer than the sort.
void ResultModel::setOrder(std::vector<std::int32_t> order) {
    beginResetModel();
    order_ = std::move(order);
    showKept();
    endResetModel();
}

void ResultModel::setKept(std::shared_ptr<const modDictation::KeptHits> kept) {
    beginResetModel();
    kept_ = std::move(kept);
    showKept();
    endResetModel();
}

void ResultModel::showKept() {
    shownOfKept_.clear();
    rows_ = kept_ ? kept_->count : hits_->size();
    if (!kept_)
        return;
    shownOfKept_.reserve(static_cast<std::size_t>(rows_));
    for (std::int32_t i = 1; i <= hits_->size(); ++i)
        if (const std::int32_t hit = order_.empty() ? i : order_[static_cast<std::size_t>(i) - 1];
            kept_->marks[static_cast<std::size_t>(hit) - 1] != 0)
            shownOfKept_.push_back(hit);
}

void ResultModel::setPlaying(const std::string& path) {
    const std::int32_t before = std::exchange(playing_, hitOfPath(path));
    for (const std::int32_t hit : {before, playing_})
        tellChanged(hit);
}

void ResultModel::tellChanged(std::int32_t hit) {
    if (const int row = hit > 0 ? rowOf(hit) : -1; row >= 0)
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

std::string ResultModel::playing() const {
    return playing_ > 0 ? pathOf(dictationOfHit(playing_)) : std::string();
}

modDictation::Dictation ResultModel::dictationOfHit(std::int32_t hit) const {
    const auto moved = moved_.find(hit);
    return moved == moved_.end() ? (*hits_)[hit] : modDictation::dictationOfPath(moved->second);
}

void ResultModel::noteMoved(std::int32_t hit, const std::string& path) {
    moved_[hit] = path;
    tellChanged(hit);
}

int ResultModel::playingRow() const {
    return playing_ > 0 ? rowOf(playing_) : -1;
}

std::int32_t ResultModel::hitOfPath(const std::string& path) const {
    for (const auto& [hit, now] : moved_)
        if (now == path)
            return hit;
    return hits_->find(modDictation::dictationOfPath(path));
}

std::int32_t ResultModel::hitOf(int row) const {
    return shown().empty() ? row + 1 : shown().at(static_cast<std::size_t>(row));
}

int ResultModel::rowOf(std::int32_t hit) const {
    if (shown().empty())
        return hit <= rows_ ? hit - 1 : -1;
    const auto found = std::find(shown().begin(), shown().end(), hit);
    return found == shown().end() ? -1 : static_cast<int>(found - shown().begin());
}

QString ResultModel::text(int row, int column) const {
    const std::int32_t field = columns_.at(static_cast<std::size_t>(column)).field;
    return toQt(modDictation::shownValue(field, dictation(row)));
}

QVariant ResultModel::data(const QModelIndex& index, int role) const {
    return checkIndex(index, CheckIndexOption::IndexIsValid) ? cell(index, role) : QVariant();
}

Qt::ItemFlags ResultModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return index.isValid() ? usual | Qt::ItemIsDragEnabled : usual;
}

QVariant ResultModel::cell(const QModelIndex& index, int role) const {
    const Column& column = columns_.at(static_cast<std::size_t>(index.column()));
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(
            Qt::Alignment(Qt::AlignVCenter | (column.alignRight ? Qt::AlignRight : Qt::AlignLeft)));
    case Qt::AccessibleTextRole:
        return spoken(index);
    case playingRole:
        return hitOf(index.row()) == playing_;
    case assumedRole:
        return modDictation::isAssumed(column.field, dictation(index.row()));
    case codeIconRole:
        return hasCodeIcons(column.field) ? codeIconName(column.field, dictation(index.row()))
                                          : QVariant();
    default:
        return {};
    }
}

// Nothing: as shown.
QVariant ResultModel::spoken(const QModelIndex& index) const {
    const bool isPlaying = hitOf(index.row()) == playing_;
    const bool assumed = cell(index, assumedRole).toBool();
    if (!isPlaying && !assumed)
        return {};
    QString spoken = text(index.row(), index.column());
    if (assumed)
        spoken = widgets::text(text_id::assumedValue, {widgets::toUtf8(spoken)});
    return isPlaying ? widgets::text(text_id::playingRow, {widgets::toUtf8(spoken)}) : spoken;
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const Column& column = columns_[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return column.title;
    case Qt::ToolTipRole:
        return widgets::toolTipText(column.caption);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignVCenter | Qt::AlignLeft));
    case Qt::AccessibleTextRole:
    case captionRole:
        return column.caption;
    case fieldRole:
        return column.field;
    case keyRole:
        return QStringLiteral("_%1").arg(column.field);
    default:
        return {};
    }
}

} // namespace ov
