// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/device/wave_devices.h"

#include "platform/files.h"
#include "platform/text.h"
#include "sound/device/wave_errors.h"
#include "sound/opened_ahead.h"
#include "sound/wave_control.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace ov::sound {

namespace {

constexpr std::string_view deviceType = "waveaudio";
constexpr std::string_view typedFile = "waveaudio!";
constexpr std::string_view allDevices = "all";
constexpr std::uint32_t allAsDevice = 279;
constexpr std::chrono::milliseconds pollInterval(5);
constexpr std::chrono::seconds longestGoodbye(1);

using Words = std::vector<WaveWord>;

bool isWord(std::string_view text, std::string_view word) {
    return platform::equalsIgnoringCase(text, word);
}

bool hasWaveEnding(std::string_view file) {
    constexpr std::string_view ending = ".wav";
    return file.size() > ending.size() && isWord(file.substr(file.size() - ending.size()), ending);
}

bool mentionsType(std::string_view rest) {
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        if (isWord(rest.substr(0, end), "type"))
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

void copyText(std::string_view text, std::span<char> buffer) noexcept {
    if (buffer.empty())
        return;
    const std::size_t count = std::min(text.size(), buffer.size() - 1);
    std::copy_n(text.begin(), count, buffer.begin());
    buffer[count] = '\0';
}

// What is opened, and under which name.
struct Opening {
    std::string file; // empty for a device without one
    std::string name;
};

bool opensNoFile(const WaveCommand& command) {
    return isWord(command.device, deviceType) || isWord(command.device, "new") ||
           (command.quoted && command.device.empty());
}

Opening openingOf(const WaveCommand& command, const Words& words) {
    Opening opening;
    if (!opensNoFile(command))
        opening.file =
            isWord(std::string_view(command.device).substr(0, typedFile.size()), typedFile)
                ? command.device.substr(typedFile.size())
                : command.device;
    const WaveWord* alias = findWord(words, "alias");
    opening.name = alias != nullptr ? alias->text : command.device;
    return opening;
}

// Whether it is known to be a sound device that is to be opened.
std::uint32_t checkType(const WaveCommand& command, const Words& words) {
    if (!mentionsType(command.rest)) {
        const bool known =
            isWord(command.device, deviceType) || hasWaveEnding(command.device) ||
            isWord(std::string_view(command.device).substr(0, typedFile.size()), typedFile);
        return known ? media_error::none : media_error::noDeviceType;
    }
    const WaveWord* type = findWord(words, "type");
    return type == nullptr || type->text.empty() || isWord(type->text, deviceType)
               ? media_error::none
               : media_error::deviceNotOpen;
}

} // namespace

WaveDevices::WaveDevices() {
    WaveControl::instance(); // made first, so that it outlives the last player
}

WaveDevices::~WaveDevices() {
    while (!devices_.empty())
        close(devices_.begin());
    const auto deadline = std::chrono::steady_clock::now() + longestGoodbye;
    for (auto& player : closing_) {
        while (!player->isFinished() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(pollInterval);
        // One that is held by a sound service that hangs must not hold the program's end.
        if (!player->isFinished())
            static_cast<void>(player.release());
    }
}

std::uint32_t WaveDevices::sendString(std::string_view command, std::span<char> reply) {
    copyText({}, reply);
    WaveCommand parsed;
    if (const std::uint32_t error = parseCommand(command, parsed); error != media_error::none)
        return error;
    std::string answer;
    std::uint32_t error = media_error::none;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        std::erase_if(closing_, [](const auto& player) { return player->isFinished(); });
        error = execute(parsed, answer);
    }
    if (error != media_error::none)
        return error;
    copyText(answer, reply);
    if (Words words; parsed.verb == WaveVerb::play && parseWords(parsed, words) == 0 &&
                     findWord(words, "wait") != nullptr)
        waitForEnd(platform::upperCase(parsed.device));
    return media_error::none;
}

void WaveDevices::waitForEnd(const std::string& name) {
    for (;;) {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            const auto found = devices_.find(name);
            if (found == devices_.end() || !found->second.device.isPlaying())
                return;
        }
        std::this_thread::sleep_for(pollInterval);
    }
}

std::uint32_t WaveDevices::execute(const WaveCommand& command, std::string& reply) {
    if (command.verb == WaveVerb::open)
        return open(command, reply);
    if (command.verb == WaveVerb::close)
        return close(command);
    if (isWord(command.device, allDevices))
        return allAsDevice;
    const auto found = devices_.find(platform::upperCase(command.device));
    if (found == devices_.end())
        return media_error::deviceNotOpen;
    Words words;
    if (const std::uint32_t error = parseWords(command, words); error != media_error::none)
        return error;
    return found->second.device.execute(command.verb, words, reply);
}

std::uint32_t WaveDevices::open(const WaveCommand& command, std::string& reply) {
    Words words;
    const std::uint32_t wrong = parseWords(command, words);
    if (const std::uint32_t error = checkType(command, words); error != media_error::none)
        return error;
    if (wrong != media_error::none)
        return wrong;
    if (findWord(words, "shareable") != nullptr)
        return media_error::unsupported;
    const Opening opening = openingOf(command, words);
    if (isWord(opening.name, allDevices) || devices_.contains(platform::upperCase(opening.name)))
        return findWord(words, "alias") != nullptr ? media_error::aliasInUse
                                                   : media_error::nameInUse;
    std::unique_ptr<WavePlayer> player;
    if (!opensNoFile(command))
        if (const std::uint32_t error = openFile(opening.file, player); error != media_error::none)
            return error;
    const std::uint32_t number = freeNumber();
    devices_.emplace(platform::upperCase(opening.name),
                     Open{number, WaveDevice(opening.file, std::move(player))});
    reply = std::to_string(number);
    return media_error::none;
}

std::uint32_t WaveDevices::openFile(const std::string& file,
                                    std::unique_ptr<WavePlayer>& player) const {
    const std::string path = shortNames_.fullPath(file);
    auto sound = OpenedAhead::take(path);
    if (!sound) {
        sound.emplace();
        sound->error = WaveFile::open(path, sound->file);
    }
    if (sound->error != media_error::none)
        return sound->error;
    try {
        player = std::make_unique<WavePlayer>(std::move(sound->file));
    } catch (const std::system_error&) { // no thread can be had
        return media_error::noOutput;
    }
    return media_error::none;
}

std::uint32_t WaveDevices::freeNumber() const {
    std::uint32_t number = 1;
    const auto isTaken = [this, &number] {
        return std::any_of(devices_.begin(), devices_.end(),
                           [number](const auto& entry) { return entry.second.number == number; });
    };
    while (isTaken())
        ++number;
    return number;
}

std::uint32_t WaveDevices::close(const WaveCommand& command) {
    Words words;
    if (const std::uint32_t error = parseWords(command, words); error != media_error::none)
        return error;
    if (isWord(command.device, allDevices)) {
        while (!devices_.empty())
            close(devices_.begin());
        return media_error::none;
    }
    const auto found = devices_.find(platform::upperCase(command.device));
    if (found == devices_.end())
        return media_error::deviceNotOpen;
    close(found);
    return media_error::none;
}

void WaveDevices::close(DeviceMap::iterator device) {
    if (std::unique_ptr<WavePlayer> player = device->second.device.release()) {
        player->finish();
        closing_.push_back(std::move(player));
    }
    devices_.erase(device);
}

bool WaveDevices::getErrorString(std::uint32_t code, std::span<char> text) {
    const std::string_view words = mediaErrorText(code);
    if (words.empty())
        return false;
    copyText(words, text);
    return true;
}

std::size_t WaveDevices::getShortPathName(std::string_view path, std::span<char> buffer) {
    const std::string name = shortNames_.shortName(path);
    if (name.size() >= buffer.size())
        return name.empty() ? 0 : name.size() + 1;
    copyText(name, buffer);
    return name.size();
}

void WaveDevices::killTimer(void* /*window*/, std::uint32_t /*timer*/) {}

MediaCalls& systemMediaCalls() {
    static WaveDevices devices;
    return devices;
}

} // namespace ov::sound
