// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/user_interface.h"

#include <cstdint>
#include <string>
#include <vector>

// Message boxes. Called on the user-interface thread.

namespace ov::modUtil {

// Keeps the title of the boxes of this thread that are asked for without one: text 1000 of the
// language file, once that is loaded. While it is empty the title is "OVSearch".
void SetMessageTitle(std::string title);

// What a box says: a text of the language files, which follows a change of language while the box
// is open, or words that stay.
class Message {
public:
    Message(std::int32_t textId, std::vector<std::string> arguments = {});
    Message(std::string words);
    Message(const char* words) : Message(std::string(words)) {}
    // A text whose argument is another message.
    static Message around(std::int32_t textId, Message inner);
    std::string text() const; // in the current language

private:
    std::int32_t textId_ = 0;
    std::vector<std::string> arguments_; // of the text; without a text, the words
    std::vector<Message> inner_;         // the argument in place of these
};

// A box with an OK button; blocks until it is answered. `owner` is the face's own window handle; a
// box without one is topmost.
void ShowMessage(Message message, platform::MessageIcon icon = platform::MessageIcon::information,
                 std::string title = {}, void* owner = nullptr);

// The same for what comes up where nobody can wait: returns at once, and no message is handled
// meanwhile.
void Tell(Message message, platform::MessageIcon icon = platform::MessageIcon::information);

// A question with Yes and No, which blocks until it is answered, No being the default. True for
// Yes.
bool AskYesNo(Message message, std::string title = {}, void* owner = nullptr);

// For tests: forgets the title.
void reset();

} // namespace ov::modUtil
