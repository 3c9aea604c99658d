// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

namespace ov::widgets {

// The button that a window is about, and looks it, in the desktop's own way. What Enter presses
// stays as it is: a default button would be that of a whole dialog around it.
class MainButton final : public QPushButton {
public:
    explicit MainButton(QWidget* parent);

protected:
    void initStyleOption(QStyleOptionButton* option) const override;
};

} // namespace ov::widgets
