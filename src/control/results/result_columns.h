// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "control/control_settings.h"
#include "control/results/column_layout.h"

#include <QHeaderView>
#include <QTimer>
#include <cstdint>
#include <vector>

class QTableView;

namespace ov {

class ResultModel;

// The header of the result list: shows its columns as the user left them and remembers how they
// are left.
class ResultColumns final : public QObject {
    Q_OBJECT

public:
    ResultColumns(QTableView& view, ResultModel& model);

    void setSettings(const ControlSettings& settings);
    // What has not been written yet, before the list goes away.
    void saveSettings();

    // Takes the columns of the search field table and shows them in their places and widths.
    void apply();

    // As a user would drag it; what cannot be done is not done.
    void fitWidth(int column);
    void moveBy(int column, int places);
    // All as on the first day.
    void reset();

    // From left to right, without the hidden ones.
    std::vector<int> shown() const;
    std::vector<std::int32_t> shownFields() const;

Q_SIGNALS:
    void clicked(int column);
    // For the column that a click at this place of the screen was on; -1 beside all.
    void menuRequested(int column, QPoint place);

private:
    void setUpHeader();
    void applyWidths();
    void place();
    void resized(int column, int oldSize, int newSize);
    void changedByUser();
    std::int32_t fieldOf(int column) const;
    double pixelsPerTwip() const;
    int pixelsOf(std::int32_t twips) const;
    std::int32_t twipsOf(int pixels) const;

    QTableView& view_;
    QHeaderView& header_;
    ResultModel& model_;
    ControlSettings settings_;
    ColumnLayout layout_;
    QTimer save_;
    bool applying_ = false; // columns are being made, nobody is dragging them
};

} // namespace ov
