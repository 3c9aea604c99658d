// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "export/print/print_preview.h"

#include "support/language/text_ids.h"
#include "widgets/captions.h"
#include "widgets/help/guide_window.h"
#include "widgets/help/help_keys.h"
#include "widgets/icons.h"
#include "widgets/text.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>

namespace ov::exporting::print {

namespace {

constexpr double zoomStep = 1.25;
constexpr double lowestResolution = 20;
constexpr double highestResolution = 400;
constexpr int shadow = 3; // pixels around the page

} // namespace

// ---- The page

PageView::PageView(const ListPages& pages, QWidget* parent) : QWidget(parent), pages_(pages) {
    setObjectName(QStringLiteral("PageView"));
    widgets::setSpokenName(*this, text_id::previewPage);
}

void PageView::showPage(int page) {
    page_ = page;
    image_ = {};
    update();
}

void PageView::setResolution(double pixelsPerInch) {
    resolution_ = std::clamp(pixelsPerInch, lowestResolution, highestResolution);
    image_ = {};
    resize(sizeHint());
    update();
}

QSize PageView::sizeHint() const {
    return (pages_.pageSize() * (resolution_ / unitsPerInch)).toSize() +
           QSize(2 * shadow, 2 * shadow);
}

void PageView::render() {
    const double scale = devicePixelRatioF();
    const QSizeF size = pages_.pageSize() * (resolution_ / unitsPerInch) * scale;
    image_ = QImage(size.toSize(), QImage::Format_RGB32);
    image_.setDevicePixelRatio(scale);
    image_.fill(Qt::white);
    QPainter painter(&image_);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    pages_.paint(painter, page_, size / scale);
}

void PageView::paintEvent(QPaintEvent* /*event*/) {
    if (image_.isNull())
        render();
    QPainter painter(this);
    painter.fillRect(rect().adjusted(shadow, shadow, 0, 0), palette().color(QPalette::Shadow));
    painter.drawImage(QPoint(shadow, shadow) / 2, image_);
}

// ---- The window

PrintPreview::PrintPreview(const ListPages& pages, QWidget* parent)
    : QDialog(parent),
      pages_(pages),
      view_(new PageView(pages, this)),
      area_(new QScrollArea(this)),
      number_(new QSpinBox(this)) {
    setObjectName(QStringLiteral("PrintPreview"));
    widgets::addHelpKeys(*this);
    widgets::setChapter(*this, widgets::chapter::lists);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint);
    widgets::setCaption(*this, text_id::previewTitle);
    area_->setObjectName(QStringLiteral("PageArea"));
    area_->setWidget(view_);
    area_->setAlignment(Qt::AlignCenter);
    area_->setBackgroundRole(QPalette::Dark);
    area_->setFocusPolicy(Qt::StrongFocus);
    auto* column = new QVBoxLayout(this);
    column->addLayout(buildTools());
    column->addWidget(area_, 1);
    const auto translate = [this] {
        widgets::translate(*this);
        widgets::explain(*this);
    };
    translate();
    widgets::followLanguage(*this, translate);

    const QSize screen = this->screen()->availableSize();
    constexpr int widest = 1100;
    constexpr int highest = 850;
    resize(std::min(screen.width() * 9 / 10, widest), std::min(screen.height() * 9 / 10, highest));
    area_->setFocus();
    showPage(0);
}

QToolButton* PrintPreview::addTool(QBoxLayout& row, const char* name, const char* iconName,
                                   std::int32_t textId) {
    auto* tool = new QToolButton(this);
    tool->setObjectName(QLatin1String(name));
    tool->setAutoRaise(true);
    tool->setIcon(widgets::icon(iconName));
    widgets::setTip(*tool, textId);
    widgets::setSpokenName(*tool, textId);
    row.addWidget(tool);
    return tool;
}

QPushButton* PrintPreview::addButton(QBoxLayout& row, const char* name, std::int32_t textId) {
    auto* button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    widgets::setCaption(*button, textId);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

QBoxLayout* PrintPreview::buildTools() {
    auto* row = new QHBoxLayout;
    QPushButton* print = addButton(*row, "cmdPrint", text_id::previewPrint);
    print->setIcon(widgets::icon("print"));
    row->addStretch(1);
    previous_ = addTool(*row, "cmdPreviousPage", "left", text_id::previousPage);
    row->addWidget(number_);
    next_ = addTool(*row, "cmdNextPage", "right", text_id::nextPage);
    row->addStretch(1);
    QToolButton* out = addTool(*row, "cmdZoomOut", "", text_id::zoomOut);
    out->setText(QStringLiteral("−"));
    QToolButton* in = addTool(*row, "cmdZoomIn", "", text_id::zoomIn);
    in->setText(QStringLiteral("+"));
    QPushButton* whole = addButton(*row, "cmdWholePage", text_id::wholePage);
    QPushButton* close = addButton(*row, "cmdClose", text_id::previewClose);

    connect(print, &QPushButton::clicked, this, &QDialog::accept);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(in, &QToolButton::clicked, this, [this] { zoom(zoomStep); });
    connect(out, &QToolButton::clicked, this, [this] { zoom(1 / zoomStep); });
    connect(whole, &QPushButton::clicked, this, &PrintPreview::showWholePage);
    connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated, this,
            &QDialog::accept);
    followPages();
    return row;
}

void PrintPreview::followPages() {
    number_->setObjectName(QStringLiteral("PageNumber"));
    widgets::setSpokenName(*number_, text_id::previewPage);
    number_->setRange(1, pages_.count());
    number_->setSuffix(QStringLiteral(" / %1").arg(pages_.count()));
    connect(previous_, &QToolButton::clicked, this, [this] { showPage(view_->page() - 1); });
    connect(next_, &QToolButton::clicked, this, [this] { showPage(view_->page() + 1); });
    connect(number_, &QSpinBox::valueChanged, this, [this](int page) { showPage(page - 1); });
}

void PrintPreview::showPage(int page) {
    page = std::clamp(page, 0, pages_.count() - 1);
    if (page != view_->page())
        area_->verticalScrollBar()->setValue(0);
    view_->showPage(page);
    const QSignalBlocker quiet(number_);
    number_->setValue(page + 1);
    enableTools();
}

void PrintPreview::enableTools() {
    previous_->setEnabled(view_->page() > 0);
    next_->setEnabled(view_->page() + 1 < pages_.count());
}

void PrintPreview::zoom(double factor) {
    wholePage_ = false;
    view_->setResolution(view_->resolution() * factor);
}

void PrintPreview::showWholePage() {
    wholePage_ = true;
    const QSize room = area_->maximumViewportSize() - QSize(2 * shadow, 2 * shadow);
    const QSizeF inches = pages_.pageSize() / unitsPerInch;
    view_->setResolution(std::min(room.width() / inches.width(), room.height() / inches.height()));
}

void PrintPreview::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layout()->activate();
    if (wholePage_)
        showWholePage();
}

void PrintPreview::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_PageUp:
        showPage(view_->page() - 1);
        break;
    case Qt::Key_PageDown:
        showPage(view_->page() + 1);
        break;
    case Qt::Key_Home:
        showPage(0);
        break;
    case Qt::Key_End:
        showPage(pages_.count() - 1);
        break;
    case Qt::Key_Plus:
        zoom(zoomStep);
        break;
    case Qt::Key_Minus:
        zoom(1 / zoomStep);
        break;
    default:
        QDialog::keyPressEvent(event);
    }
}

} // namespace ov::exporting::print
