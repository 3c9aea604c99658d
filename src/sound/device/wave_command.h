// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Media commands as text.
//
//   command = verb " " device { " " word }
//   device  = text without blanks | '"' text '"'
//   word    = phrase [ value ]
//
// A verb takes the phrases of its table, of one or more words with one blank between them. Letter
// case is ignored. Between words there may be more blanks, before the device there may not, and
// the end may have any number. A value is a decimal integer, or a text like a device.

namespace ov::sound {

// In the order of the table in wave_command.cpp.
enum class WaveVerb : std::uint8_t {
    open,
    close,
    play,
    pause,
    resume,
    stop,
    seek,
    set,
    status,
    capability,
    info,
    cue
};

struct WaveWord {
    std::string_view phrase; // as the table spells it
    std::int64_t number = 0; // value of a phrase that takes an integer
    std::string text;        // value of a phrase that takes a text
};

struct WaveCommand {
    WaveVerb verb = WaveVerb::open;
    std::string device;
    std::string_view rest; // what follows the device, not taken apart yet
    bool quoted = false;   // the device's name was
};

// Takes verb and device off. Returns a media_error.
std::uint32_t parseCommand(std::string_view text, WaveCommand& command);

// Takes the rest apart by the verb's table. Returns a media_error; the words up to it are kept.
std::uint32_t parseWords(const WaveCommand& command, std::vector<WaveWord>& words);

bool isOneOf(const WaveWord& word, std::initializer_list<std::string_view> phrases) noexcept;

// nullptr when the phrase was not given; the last one counts.
const WaveWord* findWord(std::span<const WaveWord> words, std::string_view phrase) noexcept;

} // namespace ov::sound
