// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateEdit>
#include <optional>

namespace ov {

// A date picker into which one may also type a day as people say it: "yesterday", "-7", "21.11.",
// "21.11.26" (readTypedDate). A letter, "+" or "-", or a digit in place of the first part of the
// date begins such a text; it becomes the date when Enter is pressed or the keyboard goes
// elsewhere.
class DateBox final : public QDateEdit {
    Q_OBJECT

public:
    explicit DateBox(QWidget* parent = nullptr);

    // Makes the date of what is typed. False when it means no day: it is left as it stands.
    bool takeTyped();

Q_SIGNALS:
    // A key changed the text; the date may follow later.
    void typed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QValidator::State validate(QString& input, int& position) const override;
    QDateTime dateTimeFromText(const QString& text) const override;

private:
    bool beginsWords(const QKeyEvent& key) const;
    bool isTyping() const;
    void type(QKeyEvent& key);
    QDate readDay(const QString& text) const;

    bool typing_ = false;
};

} // namespace ov
