// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/value_source.h"

#include <QCompleter>
#include <QLineEdit>
#include <QStringListModel>
#include <QTimer>
#include <memory>
#include <vector>

namespace ov {

// Offers values below text boxes: those that hold what is typed, or all on the Down key. They are
// gathered while the event loop has nothing else to do.
class ValueSuggestions final : public QObject {
    Q_OBJECT

public:
    explicit ValueSuggestions(QObject* parent);

    void offerIn(QLineEdit& box);
    // One that has the values, for who offers them in another way. This outlives it.
    std::unique_ptr<QCompleter> makeCompleter();
    // Offers values of the first field, and gathers those of the others too. The source stays the
    // caller's; nullptr and no field: nothing is offered.
    void setFields(ValueSource* source, std::vector<std::int32_t> fields);
    // True when one of the values found so far holds `text`, in any letter case.
    bool isPartOfValue(std::int32_t field, const QString& text) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // More values have been found.
    void grown();

private:
    void lookOn();
    void show();

    ValueSource* source_ = nullptr;
    std::vector<std::int32_t> fields_;
    std::size_t at_ = 0; // the field that is being looked through
    QStringListModel values_;
    QTimer timer_;
};

} // namespace ov
