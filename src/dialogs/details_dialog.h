// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "dictation/dictation_details.h"

#include <QDialog>
#include <cstdint>
#include <string>

class QPushButton;
class QTableWidget;

namespace ov {

// Shows a dictation in full: every field as lists show it and as it stands in the file's name.
// Its rows can be copied.
class DetailsDialog final : public QDialog {
public:
    // `path` of the dictation's file.
    DetailsDialog(std::string path, QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildWindow();
    QPushButton* makeButton(const char* name, std::int32_t textId);
    void fill();
    void resizeColumns();
    void showRow(int row, const modDictation::Detail& detail);
    // The selected rows; without a selection all.
    void copy();

    std::string path_;
    QTableWidget* lstDetails_;
};

} // namespace ov
