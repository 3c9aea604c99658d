// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dialogs/value_suggestions.h"
#include "dictation/filter/entered_value.h"

#include <QCompleter>
#include <QLineEdit>
#include <functional>
#include <memory>
#include <optional>

class QKeyEvent;

namespace ov {

// Offers values of the field whose value is being typed in a line of the quick form, below it. Up
// and Down choose one, Enter and Tab take it; without a choice these do what they do in the line.
class FilterSuggestions final : public QObject {
    Q_OBJECT

public:
    using MakeSource = std::function<std::unique_ptr<ValueSource>()>;

    // Belongs to `line` from then on. The source is made when a value is typed, and again when one
    // comes back to the line.
    FilterSuggestions(QLineEdit& line, MakeSource makeSource);

    // Gives the source up: what it looks at is another now.
    void forget();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::optional<modDictation::EnteredValue> entered() const;
    bool isOpen() const;
    void offer();
    void showValues();
    void stop();
    void take(const QString& value);
    bool pressed(QKeyEvent& key);

    QLineEdit& line_;
    const MakeSource makeSource_;
    std::unique_ptr<ValueSource> source_; // nullptr until needed
    ValueSuggestions values_;
    std::unique_ptr<QCompleter> completer_;
    std::int32_t field_;  // of the values offered; noField: none are
    QString chosen_;      // in the list; empty: none is
    bool taking_ = false; // what changes in the line is not typed
};

} // namespace ov
