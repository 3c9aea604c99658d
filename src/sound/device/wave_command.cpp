// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/device/wave_command.h"

#include "sound/media.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ov::sound {

namespace {

enum class Value : std::uint8_t { none, integer, text };

struct Phrase {
    std::string_view text;
    Value value = Value::none;
};

constexpr std::array<Phrase, 6> openPhrases{{{"type", Value::text},
                                             {"alias", Value::text},
                                             {"buffer", Value::integer},
                                             {"shareable"},
                                             {"wait"},
                                             {"notify"}}};
constexpr std::array<Phrase, 2> plainPhrases{{{"wait"}, {"notify"}}};
constexpr std::array<Phrase, 4> playPhrases{
    {{"from", Value::integer}, {"to", Value::integer}, {"wait"}, {"notify"}}};
constexpr std::array<Phrase, 5> seekPhrases{
    {{"to start"}, {"to end"}, {"to", Value::integer}, {"wait"}, {"notify"}}};
constexpr std::array<Phrase, 23> setPhrases{{{"time format milliseconds"},
                                             {"time format ms"},
                                             {"time format samples"},
                                             {"time format bytes"},
                                             {"time format"},
                                             {"any output"},
                                             {"output", Value::integer},
                                             {"any input"},
                                             {"input", Value::integer},
                                             {"audio all off"},
                                             {"audio all on"},
                                             {"door open"},
                                             {"door closed"},
                                             {"tempo", Value::integer},
                                             {"alignment", Value::integer},
                                             {"bitspersample", Value::integer},
                                             {"bytespersec", Value::integer},
                                             {"channels", Value::integer},
                                             {"format tag pcm"},
                                             {"format tag", Value::integer},
                                             {"samplespersec", Value::integer},
                                             {"wait"},
                                             {"notify"}}};
constexpr std::array<Phrase, 22> statusPhrases{{{"length"},
                                                {"position"},
                                                {"mode"},
                                                {"ready"},
                                                {"time format"},
                                                {"media present"},
                                                {"number of tracks"},
                                                {"current track"},
                                                {"start position"},
                                                {"track", Value::integer},
                                                {"channels"},
                                                {"samplespersec"},
                                                {"bitspersample"},
                                                {"bytespersec"},
                                                {"alignment"},
                                                {"format tag"},
                                                {"input"},
                                                {"output"},
                                                {"level"},
                                                {"tempo"},
                                                {"wait"},
                                                {"notify"}}};
constexpr std::array<Phrase, 13> capabilityPhrases{{{"device type"},
                                                    {"has audio"},
                                                    {"has video"},
                                                    {"can play"},
                                                    {"can record"},
                                                    {"can save"},
                                                    {"can eject"},
                                                    {"uses files"},
                                                    {"compound device"},
                                                    {"inputs"},
                                                    {"outputs"},
                                                    {"wait"},
                                                    {"notify"}}};
constexpr std::array<Phrase, 4> infoPhrases{{{"product"}, {"file"}, {"wait"}, {"notify"}}};
constexpr std::array<Phrase, 4> cuePhrases{{{"output"}, {"input"}, {"wait"}, {"notify"}}};

struct VerbTable {
    std::string_view name;
    WaveVerb verb;
    std::span<const Phrase> phrases;
};
constexpr std::array<VerbTable, 12> verbs{{{"open", WaveVerb::open, openPhrases},
                                           {"close", WaveVerb::close, plainPhrases},
                                           {"play", WaveVerb::play, playPhrases},
                                           {"pause", WaveVerb::pause, plainPhrases},
                                           {"resume", WaveVerb::resume, plainPhrases},
                                           {"stop", WaveVerb::stop, plainPhrases},
                                           {"seek", WaveVerb::seek, seekPhrases},
                                           {"set", WaveVerb::set, setPhrases},
                                           {"status", WaveVerb::status, statusPhrases},
                                           {"capability", WaveVerb::capability, capabilityPhrases},
                                           {"info", WaveVerb::info, infoPhrases},
                                           {"cue", WaveVerb::cue, cuePhrases}}};

constexpr char lowerCase(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// Keywords are ASCII.
bool beginsWith(std::string_view text, std::string_view keyword) noexcept {
    return text.size() >= keyword.size() &&
           std::equal(keyword.begin(), keyword.end(), text.begin(),
                      [](char a, char b) { return a == lowerCase(b); });
}

void skipBlanks(std::string_view& text) noexcept {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view takeWord(std::string_view& text) noexcept {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(word.size());
    return word;
}

std::uint32_t takeQuoted(std::string_view& text, std::string& value) {
    const std::size_t end = text.find('"', 1);
    if (end == std::string_view::npos)
        return media_error::missingQuote;
    value = text.substr(1, end - 1);
    text.remove_prefix(end + 1);
    return text.empty() || text.front() == ' ' ? media_error::none : media_error::afterQuote;
}

std::uint32_t takeText(std::string_view& text, std::string& value) {
    if (text.starts_with('"'))
        return takeQuoted(text, value);
    value = takeWord(text);
    return media_error::none;
}

std::uint32_t takeInteger(std::string_view& text, std::int64_t& value) {
    const std::string_view digits = takeWord(text);
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc{} && stop == end ? media_error::none : media_error::badInteger;
}

const Phrase* takePhrase(std::span<const Phrase> table, std::string_view& text) noexcept {
    for (const Phrase& phrase : table) {
        const std::size_t size = phrase.text.size();
        if (!beginsWith(text, phrase.text) || (text.size() > size && text[size] != ' '))
            continue;
        text.remove_prefix(size);
        return &phrase;
    }
    return nullptr;
}

std::uint32_t takeValue(const Phrase& phrase, std::string_view& text, WaveWord& word) {
    if (phrase.value == Value::none)
        return media_error::none;
    skipBlanks(text);
    return phrase.value == Value::integer ? takeInteger(text, word.number)
                                          : takeText(text, word.text);
}

} // namespace

std::uint32_t parseCommand(std::string_view text, WaveCommand& command) {
    text = text.substr(0, text.find('\0'));
    if (text.empty())
        return media_error::missingCommand;
    const std::string_view name = takeWord(text);
    if (name.empty())
        return media_error::unrecognizedCommand;
    if (text.find_first_not_of(' ') == std::string_view::npos)
        return media_error::missingDeviceName;
    const auto* table = std::find_if(verbs.begin(), verbs.end(), [name](const VerbTable& verb) {
        return name.size() == verb.name.size() && beginsWith(name, verb.name);
    });
    if (table == verbs.end())
        return media_error::unrecognizedCommand;
    command.verb = table->verb;
    text.remove_prefix(1);
    command.quoted = text.starts_with('"');
    const std::uint32_t error = takeText(text, command.device);
    command.rest = text;
    return error;
}

std::uint32_t parseWords(const WaveCommand& command, std::vector<WaveWord>& words) {
    std::string_view text = command.rest;
    for (skipBlanks(text); !text.empty(); skipBlanks(text)) {
        const Phrase* phrase =
            takePhrase(verbs[static_cast<std::size_t>(command.verb)].phrases, text);
        if (phrase == nullptr)
            return media_error::unrecognizedCommand;
        WaveWord word{phrase->text, 0, {}};
        if (const std::uint32_t error = takeValue(*phrase, text, word); error != media_error::none)
            return error;
        words.push_back(std::move(word));
    }
    return media_error::none;
}

bool isOneOf(const WaveWord& word, std::initializer_list<std::string_view> phrases) noexcept {
    return std::find(phrases.begin(), phrases.end(), word.phrase) != phrases.end();
}

const WaveWord* findWord(std::span<const WaveWord> words, std::string_view phrase) noexcept {
    const auto found = std::find_if(words.rbegin(), words.rend(), [phrase](const WaveWord& word) {
        return word.phrase == phrase;
    });
    return found == words.rend() ? nullptr : &*found;
}

} // namespace ov::sound
