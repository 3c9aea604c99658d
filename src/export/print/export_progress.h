// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/rows.h"

#include <QProgressDialog>
#include <cstdint>
#include <functional>

namespace ov::exporting::print {

// Shows how far an export is once it takes a while, keeps the window alive and lets the user stop.
class ExportProgress {
public:
    // `isEnding` tells that the window goes away.
    ExportProgress(std::int32_t textId, std::int64_t rows, QWidget* owner,
                   std::function<bool()> isEnding);

    // False when the user wants to stop, or the window goes away.
    bool goOn(std::int64_t rowsDone);
    // That for a part of the work, before which so many rows are done.
    GoOn part(std::int64_t before) {
        return [this, before](std::int64_t rowsDone) { return goOn(before + rowsDone); };
    }

private:
    QProgressDialog dialog_;
    std::function<bool()> isEnding_;
    std::int64_t rows_;
    std::int64_t nextLook_ = 0; // coarse milliseconds
};

} // namespace ov::exporting::print
