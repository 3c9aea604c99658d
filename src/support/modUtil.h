// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/user_interface.h"

#include <string>

// Message boxes. Called on the user-interface thread.

namespace ov::modUtil {

// Keeps the title of the boxes of this thread that are asked for without one: text 1000 of the
// language file, once that is loaded. While it is empty the title is "OVSearch".
void SetMessageTitle(std::string title);

// A box with an OK button; blocks until it is answered. `owner` is the face's own window handle; a
// box without one is topmost.
void ShowMessage(std::string text, platform::MessageIcon icon = platform::MessageIcon::information,
                 std::string title = {}, void* owner = nullptr);

// The same for what comes up where nobody can wait: returns at once, and no message is handled
// meanwhile.
void Tell(std::string text, platform::MessageIcon icon = platform::MessageIcon::information);

// A question with Yes and No, which blocks until it is answered, No being the default. True for
// Yes.
bool AskYesNo(std::string text, std::string title = {}, void* owner = nullptr);

// For tests: forgets the title.
void reset();

} // namespace ov::modUtil
