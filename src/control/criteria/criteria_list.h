// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QTreeWidget>
#include <string>
#include <string_view>
#include <vector>

namespace ov {

// The list of the criteria of a search. An entry keeps its criteria string; what it shows is
// made from that.
class CriteriaList final : public QTreeWidget {
    Q_OBJECT

public:
    explicit CriteriaList(QWidget* parent);

    bool hasCriteria() const { return topLevelItemCount() > 0; }
    // In list order.
    std::vector<std::string> criteria() const;

    void add(const std::string& criteriaString);
    // Adds it, or finds the entry that has it already; the entry is selected and scrolled to.
    // False when it was there.
    bool addOnce(const std::string& criteriaString);
    // Gives the selected entry another string. When another entry has that string already, the
    // selected one is removed and the other is selected instead; false then.
    bool replaceSelected(const std::string& criteriaString);
    // Selects the next entry, or the one before when it was the last.
    void removeSelected();

    bool hasSelected() const { return selectedEntry() != nullptr; }
    // Empty without one.
    std::string selected() const;

    // Shows the entries in the current language and country.
    void retranslate();

Q_SIGNALS:
    void addRequested();
    void editRequested();
    void deleteRequested();
    void selectionMoved();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QTreeWidgetItem* selectedEntry() const;
    QTreeWidgetItem* find(const std::string& criteriaString) const;
    void show(QTreeWidgetItem& entry);
};

} // namespace ov
