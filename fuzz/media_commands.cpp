// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any lines as media commands, "\1" standing for a short sound file.

#include "platform/files.h"
#include "sound/device/wave_devices.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <vector>

namespace {

using namespace ov::platform;
using namespace ov::sound;

constexpr char fileMark = '\1';

// A twentieth of a second, in memory.
std::string makeSoundFile() {
    const int file = memfd_create("sound", 0);
    SF_INFO info{0, 8000, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0, 0};
    SNDFILE* sound = sf_open_fd(file, SFM_WRITE, &info, SF_FALSE);
    const std::vector<short> samples(400, 1000);
    sf_write_short(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(sound);
    return fromNativePath("/proc/self/fd/" + std::to_string(file));
}

std::string filledIn(std::string_view line) {
    static const std::string soundFile = makeSoundFile();
    std::string command;
    for (const char c : line)
        c == fileMark ? command.append(soundFile) : command.append(1, c);
    return command;
}

void send(WaveDevices& devices, std::string_view line) {
    std::array<char, 128> reply{};
    reply.fill('~');
    const std::uint32_t code = devices.sendString(filledIn(line), reply);
    const std::string_view text(reply.data());
    if (text.size() >= reply.size() || (code != media_error::none && !text.empty()))
        std::abort();
    std::array<char, 128> words{};
    if (code != media_error::none && !devices.getErrorString(code, words))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    // Most of the time nothing plays, which is a lot quicker.
    const bool plays = rest.starts_with('P');
    setenv("SDL_AUDIODRIVER", plays ? "dummy" : "none", 1);
    WaveDevices devices;
    send(devices, "open \1 type waveaudio alias a");
    for (int line = 0; line < 40 && !rest.empty(); ++line) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        send(devices, rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return 0;
}
