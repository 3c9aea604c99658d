// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/control_settings.h"
#include "control/filter/quick_filter.h"
#include "control/results/header_menu.h"
#include "control/results/result_columns.h"
#include "control/results/result_model.h"
#include "control/results/result_selection.h"

#include <QTableView>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QMenu;

namespace ov {

// The list of the dictations found, with the chosen columns. It remembers how it is sorted and
// how the user left its columns.
class ResultList final : public QTableView {
    Q_OBJECT

public:
    explicit ResultList(QWidget* parent);

    // Reads how it was left the last time.
    void setSettings(const ControlSettings& settings);
    // What has not been written yet, before the list goes away.
    void saveSettings() { columns_->saveSettings(); }

    // Clears the columns and makes one for each visible field, in the user's order and widths.
    // The rows stay and stay sorted by the same field.
    void ApplyColumns();
    void retranslate();

    void removeAllRows();
    // Takes over the hits of a search. Rows are shown by showFirst() as the caller goes on.
    void setHits(std::unique_ptr<modDictation::DictationList> hits);
    // Others take the place of all hits at once, in the order that the user has chosen; what was
    // selected stays so where it is among them. Lets window messages be handled before.
    void replaceHits(std::unique_ptr<modDictation::DictationList> hits);
    void showFirst(std::int32_t count) { model_->showFirst(count); }
    // All rows shown, in the order that the user has chosen; lets window messages be handled.
    void showSorted() {
        sortRows([] { return true; });
    }
    bool isEmpty() const { return model_->rowCount() == 0; }

    const ResultModel& results() const { return *model_; }
    const ResultSelection& selected() const { return selection_; }

    // The fields of the columns from left to right, without the hidden ones.
    std::vector<std::int32_t> shownFields() const { return columns_->shownFields(); }
    // Widths and places of columns, as a user would drag them.
    ResultColumns& columns() { return *columns_; }
    // The hits of the rows, from top to bottom.
    std::vector<std::int32_t> shownHits() const;

    // How a click on the title of that column sorts: by it or, when that is so, the other way
    // round.
    modDictation::SortKey clickedSort(int column) const;
    // Shows by the titles that rows are about to be sorted so; sortBy() follows, or the end of all
    // work shows again what is.
    void showWishedSort(modDictation::SortKey key);
    // Sorts by that field's column and remembers it. Lets window messages be handled, and the
    // titles show that it is at work. When `goOn` answers no then, or it throws, all is as it was
    // before.
    void sortBy(modDictation::SortKey key, const std::function<bool()>& goOn);
    // By what rows are sorted that are equal then; a key without a field: by nothing. As above.
    void sortSecondBy(modDictation::SortKey key, const std::function<bool()>& goOn);
    // The field whose column shows that the list is sorted by it; none for a stored key that is no
    // column.
    modDictation::SortKey sortedBy() const;
    modDictation::SortKey secondSort() const { return secondSort_; }

    // Somebody is about to type what filters the list.
    void prepareFilter();
    // Asks for the rows that meet what is typed, see filter_words.h; filterFound() comes later.
    // Hits and columns that are others afterwards are filtered too.
    void filterBy(const QString& text);
    // Shows the rows found, in the same order and as far as they stay selected.
    void showFound();
    bool isFiltered() const { return model_->kept() != nullptr && !model_->hits().empty(); }
    // What the rows shown are filtered by; empty: they are not.
    std::string shownFilter() const { return isFiltered() ? filterReading_.text : std::string(); }
    // How the filter of the rows shown was understood.
    const modDictation::FilterReading& filterReading() const { return filterReading_; }
    // Selects the first row and goes there.
    void selectFirst();
    // Selects the row of that dictation and goes there, unless it is not shown.
    void selectPath(const std::string& path);
    // The file of that hit is there now.
    void noteMoved(std::int32_t hit, const std::string& path) { model_->noteMoved(hit, path); }
    // Marks the row of the dictation that is in the player; empty: none is.
    void markPlaying(const std::string& path) { model_->setPlaying(path); }

Q_SIGNALS:
    // "/".
    void filterRequested();
    // showFound() can show other rows now.
    void filterFound();
    // Enter, or a double click on a row.
    void playRequested();
    // Space.
    void playOrPauseRequested();
    void stopPlayingRequested();
    void showLogRequested();
    void columnsRequested();
    // A click on a column's header; sortBy() then does what it asks for.
    void sortRequested(ov::modDictation::SortKey key);
    // One of the entries of the menu of the titles.
    void headerRequested(ov::HeaderChoice choice);
    void copyRequested();
    void copyPathsRequested();
    void copyFilesRequested();
    // Rows are being dragged; dragSelectedFiles() then does it.
    void dragRequested();
    // Alt with Enter.
    void detailsRequested();
    void openFolderRequested();
    void searchAfreshRequested();

public:
    // The menu of the titles for the keyboard: each column's own is in it.
    void openHeaderMenu();

    // While the caller works on the rows, headers cannot be clicked, and rows stay.
    void setBusy(bool busy);
    // Nothing is asked for: what a filter needs may be made ahead.
    void setQuiet(bool quiet);

    // More than fits a clipboard sensibly; such a list is exported.
    static constexpr int mostCopiedRows = 100000;
    // The selected rows as lines of text with tabs, headers first, and their paths, on the
    // clipboard. Lets window messages be handled; nothing is copied when `goOn` answers no.
    void copySelectedRows(const std::function<bool()>& goOn);
    void copySelectedPaths(const std::function<bool()>& goOn);
    // The files themselves, so that a file manager pastes them.
    void copySelectedFiles(const std::function<bool()>& goOn);
    // More than somebody drags on purpose are not.
    void dragSelectedFiles();
    // Of the selected row, in the desktop's file manager.
    void openFolder() const;

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyboardSearch(const QString& search) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    void setUp();
    void playKeyPressed(const QKeyEvent& event, bool enter);
    int sortColumnOf(int column) const;
    int indicatedColumn() const;
    void showSortIndicator();
    bool sortRows(const std::function<bool()>& goOn);
    std::int32_t sortedField() const;

    QMenu* buildMenu();
    void openColumnMenu(int column, QPoint place);
    HeaderMenu headerMenu();
    modDictation::RowTexts::Source filterSource() const;
    void takeFound(const QuickFilter::Found& found);
    void filterAfresh();
    void goToSelected();
    void goToRow(int row,
                 QItemSelectionModel::SelectionFlags command = QItemSelectionModel::ClearAndSelect |
                                                               QItemSelectionModel::Rows);

    ResultModel* model_;
    ResultColumns* columns_;
    ResultSelection selection_;
    QuickFilter* filter_;
    QString filterText_;
    std::optional<QuickFilter::Found> found_;   // not shown yet
    modDictation::FilterReading filterReading_; // of the rows that the model keeps
    bool busy_ = false;
    QTimer prepareSoon_;
    ControlSettings settings_;
    std::int32_t listSortKey_ = 1;
    std::int32_t listSortOrder_ = 0;
    modDictation::SortKey secondSort_;
};

} // namespace ov
