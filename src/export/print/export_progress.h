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
    ExportProgress(std::int32_t textId, QWidget* owner, std::function<bool()> isEnding);

    // For the next part of the work, `rows` being those of this part and of all that follow. It
    // begins where the part before ended, which may have been sooner than it could: then there is
    // more room for the rest. It answers false when the user wants to stop, or the window goes
    // away.
    GoOn part(std::int64_t rows);

private:
    bool goOn(double done);

    QProgressDialog dialog_;
    std::function<bool()> isEnding_;
    double done_ = 0;           // of the whole
    std::int64_t nextLook_ = 0; // coarse milliseconds
};

} // namespace ov::exporting::print
