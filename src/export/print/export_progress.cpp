// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/export_progress.h"

#include "platform/threads/coarse_clock.h"
#include "platform/user_interface.h"
#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <algorithm>
#include <utility>

namespace ov::exporting::print {

namespace {

constexpr int steps = 1000;
constexpr int patience = 400; // milliseconds before the dialog comes up
constexpr std::int64_t lookInterval = 50;

std::int32_t titleOf(std::int32_t textId) {
    switch (textId) {
    case text_id::printing:
        return text_id::printTitle;
    case text_id::layingOutPages:
        return text_id::previewTitle;
    default:
        return text_id::exportTitle;
    }
}

void showWords(QProgressDialog& dialog, std::int32_t textId) {
    dialog.setWindowTitle(widgets::text(titleOf(textId)));
    dialog.setLabelText(widgets::text(textId));
    dialog.setCancelButtonText(widgets::text(text_id::cancel));
}

} // namespace

ExportProgress::ExportProgress(std::int32_t textId, QWidget* owner, std::function<bool()> isEnding)
    : dialog_(QString(), QString(), 0, steps, owner), isEnding_(std::move(isEnding)) {
    dialog_.setObjectName(QStringLiteral("ExportProgress"));
    showWords(dialog_, textId);
    widgets::followLanguage(dialog_, [this, textId] { showWords(dialog_, textId); });
    dialog_.setWindowModality(Qt::WindowModal);
    dialog_.setMinimumDuration(patience);
    dialog_.setAutoReset(false);
    dialog_.setAutoClose(false);
    dialog_.setValue(0);
}

GoOn ExportProgress::part(std::int64_t rows) {
    const double step = (1 - done_) / static_cast<double>(std::max<std::int64_t>(rows, 1));
    return [this, before = done_, step](std::int64_t rowsDone) {
        return goOn(before + step * static_cast<double>(rowsDone));
    };
}

bool ExportProgress::goOn(double done) {
    done_ = done;
    if (const std::int64_t now = platform::coarseMilliseconds(); now >= nextLook_) {
        nextLook_ = now + lookInterval;
        dialog_.setValue(static_cast<int>(done * steps));
    }
    platform::processMessagesNowAndThen();
    return !dialog_.wasCanceled() && !isEnding_();
}

} // namespace ov::exporting::print
