// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QDialogButtonBox;
class QPushButton;

namespace ov {

// A dialog that is made for one use: the caller sets its properties, shows it modally, then reads
// OKPressed() and, when that is true, the properties.
class OneUseDialog : public QDialog {
    Q_OBJECT

public:
    bool OKPressed() const { return result() == Accepted && loaded_; }

    void setVisible(bool visible) override;

protected:
    OneUseDialog(QWidget* parent, const char* name);

    // Makes "cmdOK" and "cmdCancel", in the order of the desktop; Enter presses OK, unless Cancel
    // has the keyboard. They come last in the order of the Tab key, so after all others have been
    // made.
    QDialogButtonBox* makeButtons();
    QPushButton* cmdOK() const { return cmdOK_; }

    // Before it is shown for the first time, with the properties set.
    virtual void load() = 0;
    // Ends by accept() or reject(), or stays. Not called again from inside itself.
    virtual void cmdOK_Click() = 0;
    virtual void retranslate();

private:
    QPushButton* cmdOK_ = nullptr;
    bool loaded_ = false;
    bool busy_ = false;
};

} // namespace ov
