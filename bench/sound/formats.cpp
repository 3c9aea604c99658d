// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "bench/sound/formats.h"

#include "playback/modMultimedia.h"
#include "sound/wave_overview.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <sys/resource.h>

namespace ov::bench {

using namespace modMultimedia;

namespace {

long residentKilobytes() {
    std::ifstream status("/proc/self/statm");
    long total = 0;
    long resident = 0;
    status >> total >> resident;
    return resident * 4;
}

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

} // namespace

void measureFormat(const char* name, const tests::WaveKind& kind, const Samples& minute,
                   const tests::TemporaryStore& store) {
    const std::string file = std::string(name) + ".WAV";
    {
        SF_INFO info{0, kind.rate, 1, SF_FORMAT_WAV | kind.format, 0, 0};
        SNDFILE* sound = sf_open(store.native(file).c_str(), SFM_WRITE, &info);
        for (int i = 0; i < twoHours / 60; ++i)
            sf_writef_float(sound, minute.data(), static_cast<sf_count_t>(minute.size()));
        sf_close(sound);
    }
    const long before = residentKilobytes();
    const double open = timed([&] { MciOpen("Format", store.path(file), "waveaudio"); });
    const std::int32_t length = MciGetLength("Format");
    double worst = 0;
    for (int i = 0; i < 8; ++i) {
        worst = std::max(worst, timed([&] { MciSeek("Format", 7'000'000 / 8 * i); }) +
                                    timed([&] { MciPlay("Format", -1, -1, -1); }));
        pause(150);
    }
    const long grown = residentKilobytes() - before;
    const double processor = processorSeconds();
    pause(1000);
    std::printf("two hours of %-9s open %.1f ms, seek and play answer in %.1f ms, length %d ms, "
                "%ld kB more, %.1f %% of a processor\n",
                name, open, worst, length, grown, (processorSeconds() - processor) * 100);
    MciClose("Format");
    std::vector<sound::WavePeaks> peaks;
    const double overview =
        timed([&] { sound::readWaveOverview(store.path(file), {1000}, std::stop_token(), peaks); });
    std::printf("%-22s overview %.0f ms\n", "", overview);
}

} // namespace ov::bench
