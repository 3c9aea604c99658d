// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "widgets/help/guide_window.h"

#include "support/language/help_text_ids.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/resources.h"

#include <QAbstractTextDocumentLayout>
#include <QDialog>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QVBoxLayout>
#include <algorithm>

namespace ov::widgets {

namespace {

constexpr const char* guideName = "frmGuide";

// As web pages name a heading: "Where settings lie" is "where-settings-lie".
QString anchorOf(const QString& heading) {
    return heading.toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
}

void jumpTo(QTextBrowser& page, const QString& anchor) {
    for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || anchorOf(block.text()) != anchor)
            continue;
        page.setTextCursor(QTextCursor(block));
        const QRectF place = page.document()->documentLayout()->blockBoundingRect(block);
        page.verticalScrollBar()->setValue(static_cast<int>(place.top()));
        return;
    }
}

// Pictures are as wide as the page at most.
void fitPictures(QTextDocument& guide, int width) {
    for (QTextBlock block = guide.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
            if (!picture.isValid())
                continue;
            const QImage image(QStringLiteral(":/ovsearch/") + picture.name());
            picture.setWidth(std::min(image.width(), width));
            QTextCursor cursor(&guide);
            cursor.setPosition(part.fragment().position());
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            cursor.setCharFormat(picture);
        }
}

QTextBrowser* openGuide(QWidget& owner) {
    auto* window = new QDialog(&owner);
    window->setObjectName(QLatin1String(guideName));
    window->setAttribute(Qt::WA_DeleteOnClose);
    setCaption(*window, text_id::guideTitle);
    auto* page = new QTextBrowser(window);
    page->setOpenLinks(false); // those to other documents and the network lead nowhere
    page->setSearchPaths({QStringLiteral(":/ovsearch")});
    page->document()->setMarkdown(guideText());
    setSpokenName(*page, text_id::guideTitle);
    QObject::connect(page, &QTextBrowser::anchorClicked, page,
                     [page](const QUrl& link) { jumpTo(*page, link.fragment()); });
    auto* column = new QVBoxLayout(window);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(page);
    constexpr QSize comfortable(720, 600);
    resizeOnScreen(*window, comfortable);
    fitPictures(*page->document(),
                window->width() - 2 * page->verticalScrollBar()->sizeHint().width());
    return page;
}

} // namespace

QString guideText() {
    initResources();
    QFile file(QStringLiteral(":/ovsearch/guide.md"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression remark(QStringLiteral("<!--.*?-->\\s*"),
                                           QRegularExpression::DotMatchesEverythingOption);
    return QString::fromUtf8(file.readAll()).remove(remark);
}

void showGuide(QWidget& owner, const QString& heading) {
    auto* window = owner.findChild<QDialog*>(QLatin1String(guideName), Qt::FindDirectChildrenOnly);
    QTextBrowser* page = window != nullptr ? window->findChild<QTextBrowser*>() : openGuide(owner);
    page->window()->show();
    page->window()->raise();
    page->window()->activateWindow();
    jumpTo(*page, anchorOf(heading));
}

} // namespace ov::widgets
