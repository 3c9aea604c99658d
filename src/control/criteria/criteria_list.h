// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/criteria/criteria_entry.h"
#include "control/criteria/criteria_history.h"

#include <QTreeWidget>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QMenu;

namespace ov {

// What a search has found out about a criterion.
struct CriterionCount {
    std::int64_t matched = 0; // dictations that meet it, whatever the others say
    std::int64_t tested = 0;
    bool emptying = false; // it alone emptied the list
};

// The list of the criteria of a search. Its value is its entries; what they show is made from
// that. A tick tells which take part. Every change of the user can be taken back.
class CriteriaList final : public QTreeWidget {
    Q_OBJECT

public:
    explicit CriteriaList(QWidget* parent);

    const CriteriaEntries& entries() const { return entries_; }
    // Those that take part in searches, in list order.
    std::vector<std::string> criteria() const;

    // What was kept from an earlier use; no change.
    void load(CriteriaEntries entries);
    // Takes the place of all that is there.
    void replaceAll(CriteriaEntries entries);
    // Adds it, or finds the entry that has it already; the entry is selected and scrolled to.
    // False when it was there.
    bool addOnce(const std::string& criteriaString);
    // Gives the selected entry another string. When another entry has that string already, the
    // selected one is removed and the other is selected instead; false then.
    bool replaceSelected(const std::string& criteriaString);
    // Selects the next entry, or the one before when it was the last.
    void removeSelected();
    void undo();
    void redo();

    bool hasSelected() const { return !selectedItems().isEmpty(); }
    // The one with the keyboard, or else the first; empty without one.
    std::string selected() const;

    // One for each of criteria(), or none. They vanish with the next change.
    void setCounts(const std::vector<CriterionCount>& counts);

    // Shows the entries in the current language and country.
    void retranslate();

    // Lets the user drag the selected ones to another place; comes back when they are let go of.
    void dragSelected();

Q_SIGNALS:
    void addRequested();
    void editRequested();
    void deleteRequested();
    void duplicateRequested();
    void dragRequested();
    void selectionMoved();
    void changed(); // the entries, by whatever the user did

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Rows = std::vector<int>;

    Rows selectedRows() const;
    int selectedRow() const; // of selected(), -1 without one
    int find(const std::string& criteriaString) const;
    void change(CriteriaEntries next, const Rows& selected);
    void show(CriteriaEntries next, const Rows& selected);
    void showAgain(CriteriaEntries next);
    void showEntry(int row);
    void select(const Rows& rows);
    void tick(QTreeWidgetItem& item);
    void tickSelected();
    void moveSelected(int before);
    void moveSelectedBy(int step);
    bool handleKey(const QKeyEvent& event);
    bool handleControlKey(const QKeyEvent& event);
    void fillMenu(QMenu& menu);

    CriteriaEntries entries_;
    CriteriaHistory history_;
};

} // namespace ov
