// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/input/input_devices.h"
#include "playback/pedal/grab_guard.h"
#include "playback/pedal/pedal_feet.h"

#include <QObject>
#include <QTimer>
#include <memory>
#include <vector>

class QWidget;

namespace ov {

// Where the pedals stand: one for all players of a thread, since a foot means one of them, that
// which was used last. Devices are read only while a pedal has something to do, or somebody looks.
class PedalDesk final : public QObject,
                        public std::enable_shared_from_this<PedalDesk>,
                        private platform::InputListener {
    Q_OBJECT

public:
    static std::shared_ptr<PedalDesk> shared();
    ~PedalDesk() override;
    PedalDesk(const PedalDesk&) = delete;
    PedalDesk& operator=(const PedalDesk&) = delete;

    // Until it is removed `player` obeys whenever the window of `panel` becomes the active one, or
    // it is used.
    void add(QWidget& panel, PedalledPlayer& player);
    void use(PedalledPlayer& player);
    void remove(PedalledPlayer& player);

    const PedalAssignments& assignments() const noexcept { return feet_.assignments(); }
    void setAssignments(const PedalAssignments& assignments);

    // While it lives all devices are read, and pedals do nothing.
    class Look {
    public:
        explicit Look(PedalDesk& desk);
        ~Look();
        Look(const Look&) = delete;
        Look& operator=(const Look&) = delete;

    private:
        std::shared_ptr<PedalDesk> desk_;
    };

    // As it was told last; its problem is also that nothing can be read at all.
    const platform::InputSituation& situation() const noexcept { return situation_; }
    // Whether it was grabbed, and is no more because it is a keyboard to type on.
    bool isLetGo(platform::InputKind kind) const { return guard_.isLetGo(kind); }

Q_SIGNALS:
    void received(const platform::InputPress& press);
    void changed(); // the situation, or what is let go of

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    PedalDesk();
    // On the devices' thread.
    void pressed(const platform::InputPress& press) override;
    void situationChanged(const platform::InputSituation& situation) override;

    void take(const platform::InputPress& press);
    void takeSituation(const platform::InputSituation& situation);
    void wish();
    void watch();
    void timeWinding();

    struct Known {
        QWidget* panel;
        PedalledPlayer* player;
    };
    std::vector<Known> players_; // the one that was used last is the last
    PedalFeet feet_;
    GrabGuard guard_;
    QTimer winding_;
    int looks_ = 0;
    platform::InputSituation situation_;
    std::unique_ptr<platform::InputDevices> devices_; // calls the rest
};

} // namespace ov
