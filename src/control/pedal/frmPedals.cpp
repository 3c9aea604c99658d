// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "control/pedal/frmPedals.h"

#include "support/language/pedal_text_ids.h"
#include "widgets/captions.h"
#include "widgets/first_size.h"
#include "widgets/spoken.h"
#include "widgets/text.h"

#include <QSignalBlocker>
#include <algorithm>
#include <system_error>
#include <utility>

namespace ov {

namespace {

std::uint32_t numberOf(platform::InputKind kind) {
    return static_cast<std::uint32_t>(kind.vendor) << 16U | kind.product;
}

QString actionName(PedalAction action) {
    for (const PedalActionText& known : pedalActions())
        if (known.action == action)
            return widgets::text(known.text);
    return {};
}

} // namespace

void frmPedals::load() {
    look_.emplace(*desk_);
    spnPedalJump_->setValue(Assignments.jumpSeconds());
    retranslate();
    lstPedalActions_->setCurrentItem(lstPedalActions_->topLevelItem(0));
    constexpr QSize comfortable(600, 560);
    widgets::resizeOnScreen(*this, comfortable);
    lstPedalActions_->setFocus();
}

void frmPedals::retranslate() {
    widgets::translate(*this);
    lstPedalActions_->setHeaderLabels(
        {widgets::text(text_id::pedalActionColumn), widgets::text(text_id::pedalColumn)});
    fillActions();
    fillDevices();
    giveUp();
}

void frmPedals::cmdOK_Click() {
    accept();
}

// ---- What there is

void frmPedals::fillActions() {
    for (const PedalActionText& known : pedalActions()) {
        const int row = static_cast<int>(&known - pedalActions().data());
        if (row == lstPedalActions_->topLevelItemCount())
            lstPedalActions_->addTopLevelItem(new QTreeWidgetItem);
        QTreeWidgetItem& item = *lstPedalActions_->topLevelItem(row);
        item.setText(0, widgets::text(known.text));
        item.setText(1, placesOf(known.action));
        item.setData(0, Qt::UserRole, static_cast<int>(known.action));
    }
    lstPedalActions_->resizeColumnToContents(0);
    enableButtons();
}

// A pedal may be several devices to the system, which is one to people.
void frmPedals::fillDevices() {
    const int row = lstPedalDevices_->currentRow();
    const QSignalBlocker quiet(lstPedalDevices_);
    lstPedalDevices_->clear();
    for (const platform::InputDevice& device : desk_->situation().devices)
        addDevice(device);
    lstPedalDevices_->setCurrentRow(std::min(row, lstPedalDevices_->count() - 1));
    showAdvice();
}

void frmPedals::addDevice(const platform::InputDevice& device) {
    QString text = widgets::toQt(device.name + " (" + kindText(device.kind) + ")");
    if (device.problem.kind() == platform::Status::Kind::denied)
        text += QStringLiteral(": ") + widgets::text(text_id::pedalMayNotBeRead);
    else if (device.problem.number() == static_cast<int>(std::errc::device_or_resource_busy))
        text += QStringLiteral(": ") + widgets::text(text_id::pedalIsTaken);
    else if (!device.problem.ok())
        text += QStringLiteral(": ") + widgets::toQt(device.problem.text());
    else if (desk_->isLetGo(device.kind))
        text += QStringLiteral(": ") + widgets::text(text_id::pedalLetGo);
    if (!lstPedalDevices_->findItems(text, Qt::MatchExactly).isEmpty())
        return;
    auto* item = new QListWidgetItem(text, lstPedalDevices_);
    item->setData(Qt::UserRole, numberOf(device.kind));
    item->setCheckState(Assignments.isGrabbed(device.kind) ? Qt::Checked : Qt::Unchecked);
}

void frmPedals::chooseGrab(const QListWidgetItem& item) {
    const std::uint32_t number = item.data(Qt::UserRole).toUInt();
    Assignments.setGrabbed(
        {static_cast<std::uint16_t>(number >> 16U), static_cast<std::uint16_t>(number & 0xffffU)},
        item.checkState() == Qt::Checked);
    const QSignalBlocker quiet(lstPedalDevices_);
    for (int row = 0; row < lstPedalDevices_->count(); ++row)
        if (QListWidgetItem& other = *lstPedalDevices_->item(row);
            other.data(Qt::UserRole) == item.data(Qt::UserRole))
            other.setCheckState(item.checkState());
}

void frmPedals::showAdvice() {
    const platform::InputSituation& situation = desk_->situation();
    QString advice;
    if (!situation.problem.ok())
        advice = widgets::text(text_id::pedalsUnreadable, {situation.problem.description()});
    else if (situation.devices.empty())
        advice = widgets::text(text_id::noPedalFound);
    for (const platform::InputDevice& device : situation.devices)
        if (device.problem.kind() == platform::Status::Kind::denied)
            advice = widgets::text(text_id::pedalsDenied);
    const bool isNews = advice != lblPedalAdvice_->text();
    lblPedalAdvice_->setText(advice);
    lblPedalAdvice_->setVisible(!advice.isEmpty());
    if (isNews && !advice.isEmpty())
        widgets::announce(*lblPedalAdvice_);
}

QString frmPedals::controlName(std::uint32_t control) const {
    platform::Status status;
    const platform::InputModule* module = platform::inputModule(status);
    return module != nullptr ? widgets::toQt(module->controlName(control))
                             : QString::number(control);
}

QString frmPedals::deviceName(platform::InputKind kind) const {
    for (const platform::InputDevice& device : desk_->situation().devices)
        if (device.kind == kind)
            return widgets::toQt(device.name);
    return widgets::toQt(kindText(kind));
}

QString frmPedals::placesOf(PedalAction action) const {
    QStringList names;
    for (const auto& [place, does] : Assignments.places())
        if (does == action)
            names += controlName(place.control) + QStringLiteral(" (") + deviceName(place.kind) +
                     QLatin1Char(')');
    return names.join(QStringLiteral(", "));
}

// ---- Which does what

std::optional<PedalAction> frmPedals::chosenAction() const {
    const QTreeWidgetItem* item = lstPedalActions_->currentItem();
    return item == nullptr ? std::nullopt : pedalActionOf(item->data(0, Qt::UserRole).toInt());
}

void frmPedals::enableButtons() {
    const auto action = chosenAction();
    const bool hasPedals = action && !placesOf(*action).isEmpty();
    cmdAssignPedal_->setEnabled(action.has_value());
    if (!hasPedals && cmdRemovePedal_->hasFocus())
        lstPedalActions_->setFocus();
    cmdRemovePedal_->setEnabled(hasPedals);
}

// The key that asked for it may be one that is read.
void frmPedals::askForPedal() {
    asked_ = chosenAction();
    keys_.start();
    quiet_.start();
}

void frmPedals::waitForPedal() {
    if (!asked_) {
        keys_.stop();
        return;
    }
    lblPedalReceived_->setText(
        widgets::text(text_id::pressPedalNow, {widgets::toUtf8(actionName(*asked_))}));
    widgets::announce(*lblPedalReceived_);
}

void frmPedals::giveUp() {
    asked_.reset();
    quiet_.stop();
    keys_.stop();
    lblPedalReceived_->setText(widgets::text(text_id::noPedalReceived));
}

void frmPedals::removePedals() {
    const auto places = Assignments.places();
    for (const auto& [place, does] : places)
        if (does == chosenAction())
            Assignments.remove(place);
    fillActions();
}

void frmPedals::take(const platform::InputPress& press) {
    if (!press.down || quiet_.isActive())
        return;
    if (asked_)
        assign(press);
    else
        tell(press);
}

// What a pedal types may come to the window after that.
void frmPedals::assign(const platform::InputPress& press) {
    const PedalAction action = *std::exchange(asked_, std::nullopt);
    Assignments.assign({press.kind, press.control}, action);
    fillActions();
    lblPedalReceived_->setText(
        widgets::text(text_id::pedalAssigned, {widgets::toUtf8(controlName(press.control)),
                                               widgets::toUtf8(actionName(action))}));
    widgets::announce(*lblPedalReceived_);
    quiet_.start();
}

void frmPedals::tell(const platform::InputPress& press) {
    const std::string control = widgets::toUtf8(controlName(press.control));
    const std::string device = widgets::toUtf8(deviceName(press.kind));
    const auto action = Assignments.actionOf({press.kind, press.control});
    lblPedalReceived_->setText(
        action ? widgets::text(text_id::pedalReceivedFor,
                               {control, device, widgets::toUtf8(actionName(*action))})
               : widgets::text(text_id::pedalReceived, {control, device}));
    widgets::announce(*lblPedalReceived_);
}

} // namespace ov
