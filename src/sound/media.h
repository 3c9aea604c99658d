// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// Media commands: a device is opened under an alias and driven by texts such as "play PBWave from 0
// to 2000". Where the system has none they drive a device of our own, see device/wave_devices.h.
//
// Ours also plays slower or faster at the same pitch: "set PBWave tempo 150" (50 to 200 percent,
// at once), "status PBWave tempo". Lengths and positions stay those of the file. Other devices
// refuse it (261).
//
// Sound is made behind the calls: they answer at once, from any thread. Only a play may take a
// moment, a second at most, when the sound service of the desktop does not answer. Devices belong
// to the process: "close all" closes those of every thread.

namespace ov::sound {

// Answers of a command; 0 is success. The texts come from MediaCalls::getErrorString.
namespace media_error {
constexpr std::uint32_t none = 0;
constexpr std::uint32_t unrecognizedCommand = 261;
constexpr std::uint32_t hardware = 262; // the output vanished in play
constexpr std::uint32_t deviceNotOpen = 263;
constexpr std::uint32_t nameInUse = 265; // a file opened twice without an alias
constexpr std::uint32_t noDriver = 266;  // see soundLoadFailure()
constexpr std::uint32_t missingCommand = 267;
constexpr std::uint32_t badInteger = 270;
constexpr std::uint32_t missingParameter = 273;
constexpr std::uint32_t unsupported = 274;
constexpr std::uint32_t fileNotFound = 275;
constexpr std::uint32_t noDeviceType = 281;
constexpr std::uint32_t outOfRange = 282;
constexpr std::uint32_t aliasInUse = 289;
constexpr std::uint32_t missingDeviceName = 292;
constexpr std::uint32_t missingQuote = 294;
constexpr std::uint32_t invalidFile = 296;
constexpr std::uint32_t wrongOrder = 302;
constexpr std::uint32_t afterQuote = 305;
constexpr std::uint32_t noOutput = 326; // nothing can play now
constexpr std::uint32_t cannotRead = 348;
} // namespace media_error

// Why our device cannot be loaded, with the file; empty when it can be.
std::string soundLoadFailure();

class MediaCalls {
public:
    virtual ~MediaCalls() = default;

    // Carries out a command. The reply is ended by a zero byte and cut to the buffer; an empty
    // buffer means that nobody asks for it. After a failure the reply is empty.
    virtual std::uint32_t sendString(std::string_view command, std::span<char> reply) = 0;

    // The text of an answer, ended by a zero byte and cut to the buffer. False, with the buffer
    // untouched, for a number that has none.
    virtual bool getErrorString(std::uint32_t code, std::span<char> text) = 0;

    // A path for the file that has no blanks and is short enough for a command; media commands
    // take it, files.h need not. Returns its length without the zero byte that ends it, 0 when
    // there is no such file or directory, and the size needed when the buffer is too small.
    virtual std::size_t getShortPathName(std::string_view path, std::span<char> buffer) = 0;

    // Ends a timer of a window. Without window timers there is nothing to end.
    virtual void killTimer(void* window, std::uint32_t timer) = 0;
};

// Installs the calls of this thread; nullptr restores the system's. The caller keeps ownership
// and uninstalls before it ends. Returns what was installed before, nullptr for the system's.
MediaCalls* installMediaCalls(MediaCalls* calls);
MediaCalls& mediaCalls();

// Those of the operating system; one for the process.
MediaCalls& systemMediaCalls();

} // namespace ov::sound
