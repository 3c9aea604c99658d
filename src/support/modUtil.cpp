// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modUtil.h"

#include <utility>

namespace ov::modUtil {

namespace {

struct State {
    std::string title;
};

State& state() {
    thread_local State threadState;
    return threadState;
}

platform::MessageBox titled(platform::MessageBox box) {
    if (box.title.empty())
        box.title = state().title.empty() ? "OVSearch" : state().title;
    return box;
}

platform::MessageAnswer show(platform::MessageBox box) {
    return platform::userInterface().showMessage(titled(std::move(box)));
}

} // namespace

void SetMessageTitle(std::string title) {
    state().title = std::move(title);
}

void ShowMessage(std::string text, platform::MessageIcon icon, std::string title, void* owner) {
    show({.text = std::move(text), .title = std::move(title), .icon = icon, .owner = owner});
}

void Tell(std::string text, platform::MessageIcon icon) {
    platform::userInterface().tell(titled({.text = std::move(text), .title = {}, .icon = icon}));
}

bool AskYesNo(std::string text, std::string title, void* owner) {
    return show({.text = std::move(text),
                 .title = std::move(title),
                 .icon = platform::MessageIcon::question,
                 .buttons = platform::MessageButtons::yesNo,
                 .defaultAnswer = platform::MessageAnswer::no,
                 .owner = owner}) == platform::MessageAnswer::yes;
}

void reset() {
    state() = {};
}

} // namespace ov::modUtil
