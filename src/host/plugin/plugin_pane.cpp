// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "host/plugin/plugin_pane.h"

#include "host/plugin/failure.h"
#include "host/plugin/plugin_session.h"

#include <QEvent>
#include <utility>

namespace ov::host {

namespace {

using namespace Qt::StringLiterals;

} // namespace

PluginPane::PluginPane(PluginSession& session, QWidget* parent)
    : QWidget(parent), session_(session), message_(this) {
    setObjectName(u"pluginPane"_s);
    message_.setObjectName(u"message"_s);
    message_.setTextFormat(Qt::RichText);
    message_.setWordWrap(true);
    message_.setAlignment(Qt::AlignCenter);
    message_.setMargin(message_.fontMetrics().height() * 2);
    message_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    message_.hide();
}

PluginPane::~PluginPane() {
    dropControl();
}

void PluginPane::setMessage(const QString& title, const QString& reason, const QString& advice) {
    message_.setText("<h3>%1</h3><p>%2</p><p>%3</p>"_L1.arg(
        title.toHtmlEscaped(), reason.toHtmlEscaped(), advice.toHtmlEscaped()));
    message_.setVisible(!control_);
}

void PluginPane::focusControl() const {
    if (controlWindow_)
        controlWindow_->setFocus();
}

QList<QAction*> PluginPane::actionsOfControl() const {
    return controlWindow_ ? controlWindow_->actions() : QList<QAction*>();
}

void PluginPane::dropControl() {
    controlWindow_ = nullptr;
    // Its end may call back; by then there is no control here.
    const std::shared_ptr<IFormExtension> ended = std::exchange(control_, nullptr);
}

QSize PluginPane::minimumSizeHint() const {
    return controlWindow_ ? controlWindow_->minimumSizeHint() : QSize();
}

std::shared_ptr<IFormExtension> PluginPane::AddPlugInControl(std::string_view progId,
                                                             IPlugin& caller) {
    dropControl();
    std::shared_ptr<IFormExtension> control = session_.createControl(progId, this);
    if (!control)
        return nullptr;
    control_ = control;
    const bool ready =
        guarded([&] { control->IFormExtension_Init(caller, *this); },
                [this](const std::exception_ptr& thrown) { session_.report(thrown); });
    // The window may have been closed while the control asked the user something.
    if (!ready || control_ != control) {
        dropControl();
        return nullptr;
    }
    controlWindow_ = static_cast<QWidget*>(control->IFormExtension_Window());
    if (!controlWindow_)
        return control;
    message_.hide();
    fit();
    controlWindow_->show();
    focusControl(); // its keys work from the start
    updateGeometry();
    return control;
}

void PluginPane::RemovePlugInControl(IPlugin& /*caller*/) {
    dropControl();
}

void PluginPane::ResizePlugInControl(IPlugin& /*caller*/) {
    fit();
}

std::shared_ptr<ov::EventSource> PluginPane::EventSource() {
    return session_.events();
}

void PluginPane::ReportControlReady(IPlugin& /*caller*/) {
    emit controlReady();
}

bool PluginPane::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest)
        updateGeometry(); // the control's smallest size changed
    return QWidget::event(event);
}

void PluginPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    message_.setGeometry(rect());
    emit resized();
}

void PluginPane::fit() {
    if (controlWindow_)
        controlWindow_->setGeometry(rect());
}

} // namespace ov::host
