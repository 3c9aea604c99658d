// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dictation/field_table.h"
#include "dictation/filter/row_filter.h"
#include "dictation/search/dictation_list.h"
#include "dictation/search/result_order.h"

#include <QAbstractTableModel>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ov {

// The hits of a search as a table: a row for each hit, a column for each visible search field.
// It keeps what the search found and nothing else; a cell is read from the dictation's name when
// somebody asks for it. Hits are counted from 1, rows and columns from 0.
class ResultModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Role {
        fieldRole = Qt::UserRole, // of a header: the search field's id
        keyRole,                  // of a header: "_9"
        captionRole,              // of a header: the long caption
        codeIconRole,             // of a cell: name of the icon that stands for its code
        playingRole,              // of a cell: whether its dictation is in the player
        assumedRole,              // of a cell: whether its text only stands for nothing
    };

    struct Column {
        std::int32_t field = 0;
        QString title; // short caption
        QString caption;
        std::int32_t width = 0; // twips, 0: hidden
        bool alignRight = false;
    };

    explicit ResultModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    // Takes the columns from the search field table.
    void setColumns();
    // Takes the captions from it again, after a change of language.
    void retranslate();
    const std::vector<Column>& columns() const { return columns_; }
    // The column of that field, -1 when it is not shown.
    int columnOf(std::int32_t field) const;

    void clear();
    // Takes over the hits of a search, of which no row is shown yet.
    void setHits(std::unique_ptr<modDictation::DictationList> hits);
    const modDictation::DictationList& hits() const { return *hits_; }
    std::shared_ptr<const modDictation::DictationList> sharedHits() const { return hits_; }
    // Shows the rows of the first `count` hits, in the order found.
    void showFirst(std::int32_t count);
    // The order of all hits by a field, and by another where that is the same; kept until the hits
    // are others. Lets window messages be handled.
    std::vector<std::int32_t> sortedOrder(modDictation::SortKey first,
                                          modDictation::SortKey second) {
        return orders_.sorted(*hits_, first, second);
    }
    // Shows all hits in that order, a hit for each row.
    void setOrder(std::vector<std::int32_t> order);
    // Of the rows only those of the hits kept, until the hits are others; nullptr: of all.
    void setKept(std::shared_ptr<const modDictation::KeptHits> kept);
    const modDictation::KeptHits* kept() const { return kept_.get(); }

    // The dictation that is in the player, by its path; empty: none.
    void setPlaying(const std::string& path);
    std::string playing() const; // the path of what is in the player, if it is among the hits
    int playingRow() const;      // its row; -1 where none is shown
    // The hit with that path; 0 when there is none.
    std::int32_t hitOfPath(const std::string& path) const;

    std::int32_t hitOf(int row) const;
    int rowOf(std::int32_t hit) const; // -1 for a hit that is not shown
    // Both as they are now, where a file has moved since it was found.
    modDictation::Dictation dictation(int row) const { return dictationOfHit(hitOf(row)); }
    modDictation::Dictation dictationOfHit(std::int32_t hit) const;
    std::string path(int row) const { return pathOf(dictation(row)); }
    void noteMoved(std::int32_t hit, const std::string& path);
    QString text(int row, int column) const;

Q_SIGNALS:
    // Others have taken the place of all hits.
    void hitsReplaced();

private:
    QVariant cell(const QModelIndex& index, int role) const;
    QVariant spoken(const QModelIndex& index) const;
    void showKept();
    void tellChanged(std::int32_t hit);
    // The hits of the rows; empty: as found.
    const std::vector<std::int32_t>& shown() const { return kept_ ? shownOfKept_ : order_; }

    std::vector<Column> columns_;
    std::shared_ptr<const modDictation::DictationList> hits_;
    modDictation::ResultOrders orders_;
    std::vector<std::int32_t> order_; // of all hits; empty: as found
    std::shared_ptr<const modDictation::KeptHits> kept_;
    std::vector<std::int32_t> shownOfKept_;
    std::int32_t playing_ = 0; // hit
    int rows_ = 0;
    std::map<std::int32_t, std::string> moved_; // by their hits, where they are now
};

} // namespace ov
