// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QComboBox;

namespace ov {

// Typing into a list, open or not, chooses the entry that is meant: the one that is called so
// before those that begin so, these before those with a word that begins so, these before any that
// holds it; letter case does not matter. Blanks are typed like letters, and open the list only when
// nothing has been typed before. The same letter again goes on to the next entry. After a pause
// (QApplication::keyboardInputInterval) one begins anew.
class TypeAhead final : public QObject {
public:
    // Belongs to `list` from then on.
    explicit TypeAhead(QComboBox& list);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool type(const QString& text);
    int entryMeant() const;
    int nextEntryWith(QChar letter) const;
    int current() const;
    void choose(int entry);

    QComboBox& list_;
    QString typed_;
    QElapsedTimer sinceKey_;
};

} // namespace ov
