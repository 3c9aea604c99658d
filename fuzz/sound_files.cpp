// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// Any bytes as a sound file: opened, measured, drawn, sought in and read at any speed.

#include "platform/files.h"
#include "sound/media.h"
#include "sound/wave_feeder.h"
#include "sound/wave_file.h"
#include "sound/wave_overview.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

using namespace ov::platform;
using namespace ov::sound;

void require(bool condition) {
    if (!condition)
        std::abort();
}

// A file that lies in memory alone.
class MemoryFile {
public:
    explicit MemoryFile(std::span<const std::uint8_t> bytes) : file_(memfd_create("sound", 0)) {
        require(write(file_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    }
    ~MemoryFile() { close(file_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string native() const { return "/proc/self/fd/" + std::to_string(file_); }

private:
    int file_;
};

void checkLayout(const WaveLayout& layout) {
    for (const TimeFormat format :
         {TimeFormat::milliseconds, TimeFormat::samples, TimeFormat::bytes}) {
        const std::int64_t length = layout.toUnits(layout.length, format);
        require(length >= 0);
        for (const std::int64_t value : {std::int64_t{0}, length / 3, length}) {
            const double frame = layout.fromUnits(value, format);
            require(frame >= 0 && frame <= layout.length);
        }
    }
}

void feed(WaveFile& file, double from, int tempo) {
    constexpr int mostPieces = 200; // a small file may promise hours
    WaveFeeder feeder(file);
    feeder.start(from, file.layout().length, tempo);
    std::vector<float> samples(512);
    for (int i = 0; i < mostPieces; ++i) {
        const WaveFeeder::Piece piece = feeder.read(samples);
        require(piece.to >= piece.from && piece.frames <= samples.size());
        if (piece.last)
            break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile memory({data, size});
    std::unique_ptr<WaveFile> file;
    if (WaveFile::open(memory.native(), file) != media_error::none)
        return 0;
    checkLayout(file->layout());
    const double length = file->layout().length;
    feed(*file, 0, usualTempo);
    feed(*file, length / 2, fastestTempo);
    feed(*file, length, usualTempo);
    feed(*file, length / 3, slowestTempo);
    std::vector<WavePeaks> peaks;
    if (file->frames() < 1'000'000) {
        // The decoder may find in the middle that it cannot go on.
        const bool drawn = readWaveOverview(fromNativePath(memory.native()), {100}, {}, peaks);
        require(peaks.size() == (drawn ? 100U : 0U));
    }
    return 0;
}
