// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "support/modUtil.h"

#include "support/language/modLanguage.h"

#include <span>
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

std::string titleOr(const std::string& wanted) {
    if (!wanted.empty())
        return wanted;
    return state().title.empty() ? "OVSearch" : state().title;
}

platform::MessageBox worded(Message message, std::string title, platform::MessageBox box) {
    box.translate = [message = std::move(message),
                     title = std::move(title)](platform::MessageBox& open) {
        open.text = message.text();
        open.title = titleOr(title);
    };
    box.translate(box);
    return box;
}

platform::MessageAnswer show(Message message, std::string title, platform::MessageBox box) {
    return platform::userInterface().showMessage(
        worded(std::move(message), std::move(title), std::move(box)));
}

} // namespace

Message::Message(std::int32_t textId, std::vector<std::string> arguments)
    : textId_(textId), arguments_(std::move(arguments)) {}

Message::Message(std::string words) : arguments_{std::move(words)} {}

Message Message::around(std::int32_t textId, Message inner) {
    Message message(textId);
    message.inner_.push_back(std::move(inner));
    return message;
}

std::string Message::text() const {
    if (textId_ == 0)
        return arguments_.front();
    if (!inner_.empty())
        return modLanguage::GetText(textId_, {inner_.front().text()});
    return arguments_.empty() ? modLanguage::GetText(textId_)
                              : modLanguage::GetText(textId_, arguments_);
}

void SetMessageTitle(std::string title) {
    state().title = std::move(title);
}

void ShowMessage(Message message, platform::MessageIcon icon, std::string title, void* owner) {
    platform::MessageBox box;
    box.icon = icon;
    box.owner = owner;
    show(std::move(message), std::move(title), std::move(box));
}

void Tell(Message message, platform::MessageIcon icon) {
    platform::MessageBox box;
    box.icon = icon;
    platform::userInterface().tell(worded(std::move(message), {}, std::move(box)));
}

bool AskYesNo(Message message, std::string title, void* owner) {
    platform::MessageBox box;
    box.icon = platform::MessageIcon::question;
    box.buttons = platform::MessageButtons::yesNo;
    box.defaultAnswer = platform::MessageAnswer::no;
    box.owner = owner;
    return show(std::move(message), std::move(title), std::move(box)) ==
           platform::MessageAnswer::yes;
}

void reset() {
    state() = {};
}

} // namespace ov::modUtil
