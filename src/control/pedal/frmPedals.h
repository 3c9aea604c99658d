// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "control/pedal/key_catcher.h"
#include "dialogs/one_use_dialog.h"
#include "playback/panel/pedal/pedal_desk.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QTreeWidget>
#include <memory>
#include <optional>

class QBoxLayout;

namespace ov {

// Which pedal does what, made for one use: show it modally, then read OKPressed(). Shows what is
// received from all devices meanwhile. The caller puts `Assignments` into use.
class frmPedals final : public OneUseDialog {
    Q_OBJECT

public:
    explicit frmPedals(QWidget* parent = nullptr);
    ~frmPedals() override;
    frmPedals(const frmPedals&) = delete;
    frmPedals& operator=(const frmPedals&) = delete;

    PedalAssignments Assignments; // NOLINT(readability-identifier-naming): a property

private:
    void nameAll();
    void buildWindow();
    QBoxLayout* buildActions();
    QBoxLayout* buildJump();
    void connectAll();
    void load() override;
    void retranslate() override;
    void cmdOK_Click() override;

    void fillActions();
    void fillDevices();
    void addDevice(const platform::InputDevice& device);
    void showAdvice();
    void enableButtons();
    void chooseGrab(const QListWidgetItem& item);

    std::optional<PedalAction> chosenAction() const;
    void askForPedal();
    void waitForPedal();
    void giveUp();
    void removePedals();
    void take(const platform::InputPress& press);
    void assign(const platform::InputPress& press);
    void tell(const platform::InputPress& press);

    QString controlName(std::uint32_t control) const;
    QString deviceName(platform::InputKind kind) const;
    QString placesOf(PedalAction action) const;

    QLabel* lblPedalHint_;
    QTreeWidget* lstPedalActions_;
    QPushButton* cmdAssignPedal_;
    QPushButton* cmdRemovePedal_;
    QLabel* lblPedalReceived_;
    QLabel* lblPedalJump_;
    QSpinBox* spnPedalJump_;
    QLabel* lblPedalDevices_;
    QListWidget* lstPedalDevices_;
    QLabel* lblPedalAdvice_;

    std::shared_ptr<PedalDesk> desk_ = PedalDesk::shared();
    std::optional<PedalDesk::Look> look_;
    std::optional<PedalAction> asked_; // the next pedal shall do that
    QTimer quiet_; // while the key that pressed a button may still be on its way
    KeyCatcher keys_;
};

} // namespace ov
