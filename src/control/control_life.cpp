// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How the control ends, and how the host holds it.

#include "control/ctrlOVSearch.h"
#include "control/host_trap.h"
#include "playback/modMultimedia.h"

#include <QDialog>
#include <QMenu>
#include <QPointer>
#include <QThread>
#include <utility>

namespace ov {

namespace {

class ControlHandle final : public IFormExtension {
public:
    explicit ControlHandle(QWidget* parent) : control_(new ctrlOVSearch(parent)) {}
    ~ControlHandle() override {
        if (control_)
            control_->letGo();
    }
    ControlHandle(const ControlHandle&) = delete;
    ControlHandle& operator=(const ControlHandle&) = delete;

    void IFormExtension_Init(IPlugin& plugIn, IHostForm& form) override {
        if (control_)
            control_->IFormExtension_Init(plugIn, form); // may end this object
    }
    WindowHandle IFormExtension_Window() noexcept override {
        return control_ && !control_->isEnding() ? static_cast<QWidget*>(control_) : nullptr;
    }

private:
    QPointer<ctrlOVSearch> control_; // empty when it ended with the window around it
};

} // namespace

std::shared_ptr<IFormExtension> makeControl(WindowHandle parent) {
    return std::make_shared<ControlHandle>(static_cast<QWidget*>(parent));
}

void ctrlOVSearch::letGo() {
    if (isEnding())
        return;
    const Frame frame(*this);
    UserControl_Terminate();
    hide();
    setParent(nullptr); // the host's window may go before a search has come back
}

void ctrlOVSearch::leaveFrame() {
    if (--frames_ > 0 || !isEnding())
        return;
    // An event handler below may still be that of one of our widgets. Without a loop that runs
    // nobody would delete the control later.
    if (commands_.isRunning() || QThread::currentThread()->loopLevel() > 0)
        deleteLater();
    else
        delete this;
}

// A window tells that it is destroyed before it destroys its children: early enough to step out.
void ctrlOVSearch::followParent() {
    disconnect(parentGone_);
    if (parentWidget() != nullptr)
        parentGone_ = connect(parentWidget(), &QObject::destroyed, this, &ctrlOVSearch::letGo);
}

void ctrlOVSearch::UserControl_Terminate() {
    if (isEnding())
        return;
    const StateRules before = rulesOf(std::exchange(state_, ControlState::ending));
    if (m_cEventSource)
        m_cEventSource->unsubscribe(*this);
    stop_.request_stop();
    counting_.giveUp();
    const QList<QDialog*> dialogs = findChildren<QDialog*>();
    for (QDialog* dialog : dialogs)
        dialog->reject();
    const QList<QMenu*> menus = findChildren<QMenu*>();
    for (QMenu* menu : menus)
        menu->close();
    windowInterface_->closeBoxes(this);
    bus_ = nullptr;
    playerChoices_.keepNow();
    endPlayer();
    if (before.hasContents) {
        if (const auto saved = criteriaFile_.save(view_.lvSearchCriteria->entries()); !saved.ok())
            WriteErrorLog(saved, "SaveCriteria");
        view_.lvSearchResult->saveSettings();
        if (const auto share = view_.criteriaRoom->draggedShare())
            settings_.setCriteriaShare(*share);
    }
    if (before.tellsHost)
        trapped("UserControl_Terminate", [] {
            modOVPlugIn::ProgressClear(); // nobody else does, once the search finds us gone
            return 0;
        });
    plugIn_ = nullptr; // the host's objects may go from now on
    m_icExtendableForm = nullptr;
}

// The level timer is ended twice and the status timer not at all, which ends with the control.
void ctrlOVSearch::endPlayer() const {
    view_.picPlayer->PlayerStop();
    view_.picPlayer->stopLevelTimer();
    view_.picPlayer->stopLevelTimer();
    modMultimedia::MciCloseAll();
    view_.picPlayer->releaseMixer();
}

} // namespace ov
