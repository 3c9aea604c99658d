// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/user_interface.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// The person of a test: installed while it lives, it keeps the boxes that it was shown, answers
// them, and counts the rest.

namespace ov::tests {

class RecordingInterface final : public platform::UserInterface {
public:
    explicit RecordingInterface(std::function<void()> onPump = {})
        : onPump_(std::move(onPump)), before_(platform::installUserInterface(this)) {}
    ~RecordingInterface() override { platform::installUserInterface(before_); }
    RecordingInterface(const RecordingInterface&) = delete;
    RecordingInterface& operator=(const RecordingInterface&) = delete;

    platform::MessageAnswer showMessage(const platform::MessageBox& box) override {
        boxes.push_back(box);
        return saysYes ? platform::MessageAnswer::yes : box.defaultAnswer;
    }
    void processMessages() override {
        ++pumped;
        if (onPump_)
            onPump_();
    }
    void beep() override { ++beeps; }

    // "exclamation, OVSearch: <text>" for each box.
    std::vector<std::string> boxLines() const {
        constexpr const char* icons[] = {"information", "exclamation", "question"};
        std::vector<std::string> lines;
        for (const platform::MessageBox& box : boxes)
            lines.push_back(std::string(icons[static_cast<std::size_t>(box.icon)]) + ", " +
                            box.title + ": " + box.text);
        return lines;
    }

    // Of one box and no other.
    std::string onlyText() const { return boxes.size() == 1 ? boxes[0].text : "not one box"; }

    std::vector<platform::MessageBox> boxes;
    bool saysYes = false;
    int pumped = 0;
    int beeps = 0;

private:
    std::function<void()> onPump_;
    platform::UserInterface* before_;
};

} // namespace ov::tests
