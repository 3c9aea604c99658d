// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/criteria/criteria_entry.h"
#include "control/criteria/criteria_groups.h"
#include "control/criteria/criteria_history.h"

#include <QTreeWidget>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class QMenu;

namespace ov {

// What a search has found out about a criterion.
struct CriterionCount {
    std::int64_t matched = 0; // dictations that meet it, whatever the others say
    std::int64_t tested = 0;
    bool emptying = false; // it alone emptied the list
};

// The list of the criteria of a search. Its value is its entries and whether all of them must
// match; what they show is made from that. A tick tells which take part. Every change of the user
// can be taken back.
class CriteriaList final : public QTreeWidget {
    Q_OBJECT

public:
    explicit CriteriaList(QWidget* parent);

    const CriteriaEntries& entries() const { return entries_; }
    // Those that take part in searches, in list order.
    std::vector<modDictation::Criterion> criteria() const { return criteriaOf(entries_); }

    // Whether all criteria must match, or any one: it chooses the word that joins a group, too.
    bool all() const { return all_; }
    void chooseAll(bool all);

    // What was kept from an earlier use; no change.
    void load(AskedCriteria kept);
    // Takes the place of all that is there.
    void replaceAll(AskedCriteria other);
    // Adds it, or finds the entry that has it already; the entry is selected and scrolled to.
    // False when it was there.
    bool addOnce(const std::string& criteriaString);
    // The same, for one that was made of copied(): in a group it stands below that one.
    bool addBeside(const std::string& criteriaString);
    // The selected one, or else the last; empty without one.
    std::string copied() const;
    // Gives the selected entry another string. When another entry has that string already, the
    // selected one is removed and the other is selected instead; false then.
    bool replaceSelected(const std::string& criteriaString);
    // Selects the next entry, or the one before when it was the last.
    void removeSelected();
    // Below the one with the keyboard, or else at the end. One that is in no group is not added a
    // second time, but selected; false when there was nothing to add.
    bool insert(const CriteriaEntries& added);
    // The selected ones to the clipboard, as lines of a saved search.
    void copySelected() const;
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
    void pasteRequested();
    void dragRequested();
    void selectionMoved();
    void changed();            // the value, by whatever the user did
    void allChanged(bool all); // before changed()

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct MenuEntry { // or a line, without a text
        const char* icon = "";
        std::int32_t text = 0;
        QKeySequence key = {};
        std::function<void(CriteriaList&)> act = {};
        bool enabled = false;
    };

    Rows selectedRows() const;
    int selectedRow() const; // of selected(), -1 without one
    int copiedRow() const;
    int find(const std::string& criteriaString) const;
    int find(const std::string& criteriaString, RowRange among) const;
    int findFor(int row, const std::string& criteriaString) const;
    AskedCriteria present() const { return {entries_, all_}; }
    void change(AskedCriteria next, const Rows& selected);
    void change(CriteriaEntries next, const Rows& selected) {
        change(AskedCriteria{std::move(next), all_}, selected);
    }
    void change(ChangedCriteria next) { change(std::move(next.entries), next.selected); }
    void show(AskedCriteria next, const Rows& selected);
    void showAgain(AskedCriteria next);
    void showEntry(int row);
    void select(const Rows& rows);
    void tick(QTreeWidgetItem& item);
    void tickSelected();
    void moveSelectedUp() { change(movedBy(entries_, selectedRows(), -1)); }
    void moveSelectedDown() { change(movedBy(entries_, selectedRows(), 1)); }
    void indentSelected() { changeIndent(true); }
    void outdentSelected() { changeIndent(false); }
    void changeIndent(bool inward);
    bool canIndent(bool inward) const {
        return indented(entries_, selectedRows(), inward) != entries_;
    }
    void cutSelected();
    bool handleKey(const QKeyEvent& event);
    bool handleControlKey(const QKeyEvent& event);
    bool handleClipboardKey(const QKeyEvent& event);
    bool handleArrangingKey(int key);
    void fillMenu(QMenu& menu);
    void addToMenu(QMenu& menu, const MenuEntry& entry);

    CriteriaEntries entries_;
    bool all_ = true;
    CriteriaHistory history_;
};

} // namespace ov
