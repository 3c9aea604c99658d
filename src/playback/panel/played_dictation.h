// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>
#include <string>

namespace ov {

// Says author and subject of the dictation in the player; a click asks for its row.
class PlayedDictation final : public QToolButton {
public:
    explicit PlayedDictation(QWidget* parent);

    // Empty: there is none, and nothing is shown.
    void setPath(const std::string& path);
    const std::string& path() const { return path_; }
    // Author and subject, or its name.
    const QString& words() const { return words_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    std::string path_;
    QString words_;
};

} // namespace ov
