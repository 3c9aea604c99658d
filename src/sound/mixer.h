// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The platform's audio mixer: devices with lines, lines with controls, controls with values.
//
// On Linux there is always one device, "OVSearch". Its wave-output line carries the volume of
// what this program plays (0 to 65535, linear, 65535 is the file as it is) and a peak meter of
// what is heard now (-32768 to 32767, the sample of largest magnitude of the last 50 ms, after the
// volume; 0 in silence). The volume is kept while the program runs. It may be used from any
// thread.
//
// The records have the sizes and the layout that 32-bit programs pass to the system's mixer, so
// a pointer in them is the number of a memory block from globalAlloc.

namespace ov::sound {

using MixerHandle = std::uint32_t;  // 0 is none
using MemoryHandle = std::uint32_t; // 0 is none

namespace mixer_result {
constexpr std::uint32_t success = 0;
constexpr std::uint32_t badDevice = 2;
constexpr std::uint32_t invalidHandle = 5;
constexpr std::uint32_t notSupported = 8;
constexpr std::uint32_t invalidParameter = 11;
constexpr std::uint32_t invalidLine = 1024;
constexpr std::uint32_t invalidControl = 1025;
} // namespace mixer_result

namespace mixer_line {
constexpr std::uint32_t waveOutput = 0x00001008;
constexpr std::uint32_t speakers = 0x00000004;
} // namespace mixer_line

namespace mixer_control {
constexpr std::uint32_t volume = 0x50030001;
constexpr std::uint32_t peakMeter = 0x10020001;
} // namespace mixer_control

namespace mixer_flag {
constexpr std::uint32_t lineByComponent = 3; // getLineInfo
constexpr std::uint32_t oneByType = 2;       // getLineControls
constexpr std::uint32_t value = 0;           // get and setControlDetails
} // namespace mixer_flag

struct MixerCaps {
    std::uint16_t manufacturer = 0;
    std::uint16_t product = 0;
    std::uint32_t driverVersion = 0;
    std::array<char, 32> name{}; // ended by a zero byte
    std::uint32_t support = 0;
    std::uint32_t destinations = 0;
};
static_assert(sizeof(MixerCaps) == 48);

struct MixerLine {
    std::uint32_t size = 0; // of this record, set by the caller
    std::uint32_t destination = 0;
    std::uint32_t source = 0;
    std::uint32_t line = 0;
    std::uint32_t state = 0;
    std::uint32_t user = 0;
    std::uint32_t component = 0; // a mixer_line
    std::uint32_t channels = 0;
    std::uint32_t connections = 0;
    std::uint32_t controls = 0;
    std::array<char, 16> shortName{};
    std::array<char, 64> name{};
    std::uint32_t targetType = 0;
    std::uint32_t targetDevice = 0;
    std::uint16_t targetManufacturer = 0;
    std::uint16_t targetProduct = 0;
    std::uint32_t targetVersion = 0;
    std::array<char, 32> targetName{};
};
static_assert(sizeof(MixerLine) == 168);

struct MixerLineControls {
    std::uint32_t size = 0; // of this record, set by the caller
    std::uint32_t line = 0;
    std::uint32_t controlType = 0; // a mixer_control
    std::uint32_t count = 0;
    std::uint32_t controlSize = 0; // room for each record in the block
    MemoryHandle controls = 0;
};
static_assert(sizeof(MixerLineControls) == 24);

// The system fills the first 148 bytes; programs have always given it room for 152.
struct MixerControl {
    std::uint32_t size = 0;
    std::uint32_t id = 0;
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    std::uint32_t multipleItems = 0;
    std::array<char, 16> shortName{};
    std::array<char, 64> name{};
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::array<std::uint32_t, 4> reservedBounds{};
    std::uint32_t steps = 0;
    std::array<std::uint32_t, 5> reservedMetrics{};
    std::uint32_t reserved = 0;
};
static_assert(sizeof(MixerControl) == 152);
constexpr std::uint32_t smallestControlSize = 148;

struct MixerControlDetails {
    std::uint32_t size = 0; // of this record, set by the caller
    std::uint32_t control = 0;
    std::uint32_t channels = 0;
    std::uint32_t multipleItems = 0;
    std::uint32_t detailSize = 0; // of one value
    MemoryHandle details = 0;
};
static_assert(sizeof(MixerControlDetails) == 24);

// Every call but those on memory returns a mixer_result.
class MixerCalls {
public:
    virtual ~MixerCalls() = default;

    virtual std::uint32_t getNumDevs() = 0; // the number of devices
    virtual std::uint32_t open(MixerHandle& handle, std::uint32_t device, std::uint32_t callback,
                               std::uint32_t instance, std::uint32_t flags) = 0;
    virtual std::uint32_t getDevCaps(MixerHandle handle, MixerCaps& caps, std::uint32_t size) = 0;
    virtual std::uint32_t getLineInfo(MixerHandle handle, MixerLine& line, std::uint32_t flags) = 0;
    virtual std::uint32_t getLineControls(MixerHandle handle, MixerLineControls& controls,
                                          std::uint32_t flags) = 0;
    virtual std::uint32_t getControlDetails(MixerHandle handle, MixerControlDetails& details,
                                            std::uint32_t flags) = 0;
    virtual std::uint32_t setControlDetails(MixerHandle handle, MixerControlDetails& details,
                                            std::uint32_t flags) = 0;
    virtual std::uint32_t close(MixerHandle handle) = 0;

    // Memory for records. A block's place is known by its handle until it is freed.
    virtual MemoryHandle globalAlloc(std::uint32_t flags, std::uint32_t bytes) = 0; // 0: none left
    virtual std::byte* globalLock(MemoryHandle block) = 0; // nullptr for no such block
    virtual void globalFree(MemoryHandle block) = 0;
};

// Installs the calls of this thread; nullptr restores the system's. The caller keeps ownership
// and uninstalls before it ends. Returns what was installed before, nullptr for the system's.
MixerCalls* installMixerCalls(MixerCalls* calls);
MixerCalls& mixerCalls();

// Those of the operating system; one for the process.
MixerCalls& systemMixerCalls();

} // namespace ov::sound
