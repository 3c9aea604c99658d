// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "export/print/file_dialog.h"

#include "platform/files.h"
#include "support/language/text_ids.h"
#include "support/patient_files.h"
#include "widgets/captions.h"
#include "widgets/text.h"

#include <QFile>
#include <QFileDialog>

namespace ov::exporting::print {

namespace {

QString fileFilter(const FormatInfo& info) {
    const auto ending =
        QLatin1String(info.ending.data(), static_cast<qsizetype>(info.ending.size()));
    return QStringLiteral("%1 (*%2)").arg(widgets::text(info.description), ending);
}

// The kind of file that is chosen stays the same.
void showWords(QFileDialog& dialog, std::optional<Format> only) {
    QStringList filters;
    for (const FormatInfo& info : formats())
        if (!only || info.format == *only)
            filters << fileFilter(info);
    const auto place = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(place));
    widgets::setCaption(dialog, text_id::exportTitle);
}

std::string nativeOf(const QString& fileName) {
    return QFile::encodeName(fileName).toStdString();
}

// As the user typed it, with the ending of the chosen format unless it has one that is known.
std::string withEnding(std::string native, const QString& filter, Format& format) {
    for (const FormatInfo& info : formats())
        if (filter == fileFilter(info))
            format = info.format;
    if (const auto typed = formatOfFile(native))
        format = *typed;
    else
        native.append(formatInfo(format).ending);
    return native;
}

} // namespace

std::optional<ExportTarget> askForTarget(const ExportQuestion& question, QWidget* owner) {
    QFileDialog dialog(owner);
    dialog.setObjectName(QStringLiteral("ExportFile"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked once the ending is known
    showWords(dialog, question.only);
    widgets::followLanguage(dialog, [&] { showWords(dialog, question.only); });
    dialog.selectNameFilter(fileFilter(formatInfo(question.usual)));
    // Qt looks at it on this thread.
    if (!question.folder.empty() && patient::directoryExists(question.folder))
        dialog.setDirectory(widgets::nativePathText(question.folder));
    QString name = question.name;
    dialog.selectFile(name.replace(QLatin1Char('/'), QLatin1Char('-')));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    ExportTarget target{{}, question.usual};
    target.path = platform::fromNativePath(withEnding(nativeOf(dialog.selectedFiles().value(0)),
                                                      dialog.selectedNameFilter(), target.format));
    return target;
}

} // namespace ov::exporting::print
