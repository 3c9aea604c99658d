// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/threads/errand.h"

#include <QMenu>
#include <QTimer>
#include <optional>
#include <string>
#include <vector>

class QActionGroup;

namespace ov {

// The sound outputs to choose from. Asks for them anew each time that it opens, on a thread of its
// own: a sound service may be slow, or hang. What is chosen counts for the whole process.
class OutputMenu final : public QMenu {
    Q_OBJECT

public:
    explicit OutputMenu(QWidget* parent);

    // Empty: the usual one.
    static void setOutput(const std::string& name);

    // Now and then while something plays: tells once, at `place`, that the chosen output is not
    // there and the usual one plays.
    void tellWhenMissing(QWidget& place);

Q_SIGNALS:
    // The user chose another.
    void outputChosen(const std::string& name);

private:
    void ask();
    void takeNames();
    void fill();
    void add(const QString& text, const std::string& name);

    QActionGroup* choices_ = nullptr;
    QTimer timer_;
    std::optional<platform::Errand<std::vector<std::string>>> asked_; // not answered yet
    std::vector<std::string> names_;                                  // as they were last told
    std::string told_;                                                // which is missing
};

} // namespace ov
