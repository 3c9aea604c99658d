// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/device/short_names.h"
#include "sound/device/wave_device.h"
#include "sound/media.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The media commands of a system without a media service: any number of devices of the type
// "waveaudio", each under its alias. May be called from any thread, one command at a time.
//
// A device is opened by "open FILE type waveaudio alias NAME". Without a type the file's ending
// has to be ".wav"; "waveaudio!FILE" names both; "waveaudio", "new" and "" open no file. Without
// an alias the file is the name. The reply is the smallest free number. "wait" at a play waits for
// its end; "notify" is taken and does nothing. "close all" always succeeds.

namespace ov::sound {

class WaveDevices final : public MediaCalls {
public:
    WaveDevices();
    ~WaveDevices() override;
    WaveDevices(const WaveDevices&) = delete;
    WaveDevices& operator=(const WaveDevices&) = delete;

    std::uint32_t sendString(std::string_view command, std::span<char> reply) override;
    bool getErrorString(std::uint32_t code, std::span<char> text) override;
    std::size_t getShortPathName(std::string_view path, std::span<char> buffer) override;
    void killTimer(void* window, std::uint32_t timer) override;

private:
    struct Open {
        std::uint32_t number = 0;
        WaveDevice device;
    };
    using DeviceMap = std::map<std::string, Open, std::less<>>; // by upper-case name

    std::uint32_t execute(const WaveCommand& command, std::string& reply);
    std::uint32_t open(const WaveCommand& command, std::string& reply);
    std::uint32_t openFile(const std::string& file, std::unique_ptr<WavePlayer>& player) const;
    std::uint32_t freeNumber() const;
    std::uint32_t close(const WaveCommand& command);
    void close(DeviceMap::iterator device);
    void waitForEnd(const std::string& name);

    ShortNames shortNames_;
    std::mutex mutex_; // guards what follows
    DeviceMap devices_;
    std::vector<std::unique_ptr<WavePlayer>> closing_; // their outputs take a while to close
};

} // namespace ov::sound
