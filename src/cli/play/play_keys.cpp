// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "cli/play/play_keys.h"

#include "platform/terminal/terminal.h"

#include <utility>

namespace ov::cli {

namespace {

constexpr char escape = '\x1B';
// Those of the window. Where the keys are read, Enter is another character.
constexpr char controlJ = '\x0A';
constexpr char controlL = '\x0C';
constexpr char controlT = '\x14';
constexpr std::string_view f7 = "[18~";

std::optional<PlayKey> keyOf(char typed) {
    switch (typed) {
    case ' ':
        return PlayKey::pause;
    case 's':
        return PlayKey::stop;
    case 'a':
        return PlayKey::again;
    case 'p':
        return PlayKey::previous;
    case 'n':
        return PlayKey::next;
    case '-':
    case '_':
        return PlayKey::slower;
    case '+':
    case '=': // the same key without Shift
        return PlayKey::faster;
    case 'l':
    case controlL:
        return PlayKey::mark;
    case 'g':
    case controlJ:
        return PlayKey::goTo;
    case 't':
    case controlT:
        return PlayKey::timeStamp;
    case 'q':
        return PlayKey::quit;
    case platform::TerminalKeys::controlC:
        return PlayKey::interrupt;
    default:
        return std::nullopt;
    }
}

// With Ctrl or alone, as terminals send them in either mode: "[C", "OC", "[1;5C".
std::optional<PlayKey> keyOfSequence(const std::string& sequence) {
    if (sequence == f7)
        return PlayKey::again;
    if (sequence.ends_with('C'))
        return PlayKey::on;
    return sequence.ends_with('D') ? std::optional(PlayKey::back) : std::nullopt;
}

} // namespace

std::optional<PlayKey> PlayKeys::take(char typed) {
    if (!sequence_.empty())
        return takeSequence(typed);
    if (typed != escape)
        return keyOf(typed);
    sequence_ = typed;
    return std::nullopt;
}

// After the escape stands "[" or "O", else it was the key Esc; a letter or "~" ends it.
std::optional<PlayKey> PlayKeys::takeSequence(char typed) {
    const bool opens = sequence_.size() == 1;
    if (opens && typed != '[' && typed != 'O') {
        sequence_.clear();
        return take(typed);
    }
    sequence_.push_back(typed);
    const bool isEnd = !opens && typed >= '@' && typed <= '~';
    return isEnd ? keyOfSequence(std::exchange(sequence_, {}).substr(1)) : std::nullopt;
}

} // namespace ov::cli
