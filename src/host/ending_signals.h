// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QTimer>

class QWidget;

namespace ov::host {

// Closes the window when a signal asks the program to end, as its user would, so that the plug-in
// keeps settings and leaves no unfinished file. A second signal ends the program at once.
class EndingSignals {
public:
    explicit EndingSignals(QWidget& window);

    // Once everything is put away: ends by the signal, if there was one, so that whoever sent it
    // learns that it was obeyed.
    static void passOn();

private:
    QTimer look_; // a signal handler may do nothing but note
};

} // namespace ov::host
