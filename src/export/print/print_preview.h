// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "export/print/list_pages.h"

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolButton>
#include <QWidget>

class QBoxLayout;
class QPushButton;

namespace ov::exporting::print {

// One page, drawn when it is seen.
class PageView final : public QWidget {
    Q_OBJECT

public:
    // `pages` is borrowed and has been laid out.
    PageView(const ListPages& pages, QWidget* parent);

    void showPage(int page); // from 0
    int page() const { return page_; }
    // Screen pixels to the inch of paper.
    void setResolution(double pixelsPerInch);
    double resolution() const { return resolution_; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void render();

    const ListPages& pages_;
    QImage image_; // of the page as it is shown
    int page_ = 0;
    double resolution_ = 96;
};

// Shows the pages as they will be printed. Only the page that is seen is drawn, so that a long
// list comes up as fast as a short one. Accepted when the user wants to print.
class PrintPreview final : public QDialog {
    Q_OBJECT

public:
    PrintPreview(const ListPages& pages, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QBoxLayout* buildTools();
    void followPages();
    QPushButton* addButton(QBoxLayout& row, const char* name, std::int32_t textId);
    QToolButton* addTool(QBoxLayout& row, const char* name, const char* iconName,
                         std::int32_t textId);
    void showPage(int page);
    void zoom(double factor);
    void showWholePage();
    void enableTools();

    const ListPages& pages_;
    PageView* view_;
    QScrollArea* area_;
    QSpinBox* number_;
    QToolButton* previous_ = nullptr;
    QToolButton* next_ = nullptr;
    bool wholePage_ = true; // follows the size of the window
};

} // namespace ov::exporting::print
