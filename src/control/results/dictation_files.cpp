// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Hands dictations out as files: to the clipboard, to a drag, to the file manager.

#include "control/results/dictation_files.h"

#include "control/results/result_list.h"
#include "platform/files.h"
#include "platform/user_interface.h"
#include "support/modFilePath.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDrag>
#include <QMimeData>

namespace ov {

QUrl fileUrl(const std::string& path) {
    const QByteArray native = QByteArray::fromStdString(platform::toNativePath(path));
    return QUrl::fromEncoded("file://" + native.toPercentEncoding("/!$&'()*+,;=:@"));
}

// File managers of GNOME and its like paste nothing without a form of their own.
QMimeData* fileContent(const QList<QUrl>& files) {
    QByteArray copied = "copy";
    for (const QUrl& file : files)
        copied += '\n' + file.toEncoded();
    auto* content = new QMimeData;
    content->setUrls(files);
    content->setData(QStringLiteral("x-special/gnome-copied-files"), copied);
    return content;
}

void ResultList::copySelectedFiles(const std::function<bool()>& goOn) {
    QList<QUrl> files;
    selection_.forEachRow([&](int row) {
        files.append(fileUrl(model_->path(row)));
        platform::processMessagesNowAndThen();
        return goOn();
    });
    if (!files.isEmpty() && goOn())
        QApplication::clipboard()->setMimeData(fileContent(files));
}

// Asking for the cells of all that is selected, as views do, could take minutes.
void ResultList::startDrag(Qt::DropActions /*actions*/) {
    Q_EMIT dragRequested();
}

void ResultList::dragSelectedFiles() {
    if (!QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) // released meanwhile
        return;
    constexpr qsizetype most = 5000;
    QList<QUrl> files;
    selection_.forEachRow([&](int row) {
        files.append(fileUrl(model_->path(row)));
        return files.size() <= most;
    });
    if (files.isEmpty() || files.size() > most) {
        platform::userInterface().beep();
        return;
    }
    auto* drag = new QDrag(this); // deletes itself
    drag->setMimeData(fileContent(files));
    drag->exec(Qt::CopyAction);
}

void ResultList::openFolder() const {
    if (const std::string path = selection_.path(); !path.empty())
        QDesktopServices::openUrl(fileUrl(std::string(modFilePath::directoryPart(path))));
}

} // namespace ov
