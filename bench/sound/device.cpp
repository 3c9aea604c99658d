// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

// How quickly the sound device answers, and how well it knows what is heard: plays a two-hour
// file into a sound server of its own and looks at what was recorded when.

#include "bench/sound/formats.h"
#include "bench/sound/recording.h"
#include "playback/modMultimedia.h"
#include "tests/sound_signal.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace ov::bench;
using namespace ov::modMultimedia;

constexpr const char* alias = "PBWave";
constexpr int rate = 16000;
constexpr int busyLoops = 4;

void measureAnswers(const Recorder& recorder) {
    Figures play;
    Figures calls;
    Figures silence;
    for (int i = 0; i < 20; ++i) {
        std::size_t start = recorder.count();
        auto asked = Clock::now();
        const std::int32_t place = 1000 * ((i * 337) % (twoHours - 60));
        calls.values.push_back(timed([&] { MciSeek(alias, place); }));
        calls.values.push_back(timed([&] { MciPlay(alias, -1, -1, -1); }));
        play.values.push_back(
            milliseconds(recorder.arrival(waitForSound(recorder, start)) - asked));
        pause(300);
        start = recorder.count();
        asked = Clock::now();
        calls.values.push_back(timed([&] { i % 2 == 0 ? MciPause(alias) : MciStop(alias); }));
        const std::size_t last = waitForSilence(recorder, start);
        silence.values.push_back(last > start ? milliseconds(recorder.arrival(last - 1) - asked)
                                              : 0);
        pause(i % 3 == 0 ? 500 : 0); // the output has been closed by then
    }
    play.print("seek anywhere and play to first sound", "at most 60");
    silence.print("pause or stop to silence", "at most two chunks, 52");
    calls.print("the calls themselves", "never wait for sound");
}

// Seeks while playing: a place that is marked by being loud where all else is soft.
void measureSeekInPlay(const Recorder& recorder) {
    Figures seek;
    for (int i = 0; i < 10; ++i) {
        MciSeekAndPlay(alias, 1000 * (600 + 30 * i));
        pause(200);
        const std::size_t start = recorder.count();
        const auto asked = Clock::now();
        MciSeekAndPlay(alias, 1000 * (twoHours - 50)); // the loud end
        for (bool found = false; !found; pause(1)) {
            const Samples heard = recorder.samples(start, recorder.count());
            const auto loud = std::find_if(heard.begin(), heard.end(),
                                           [](float s) { return std::fabs(s) > 0.9F; });
            if ((found = loud != heard.end()))
                seek.values.push_back(milliseconds(
                    recorder.arrival(start + static_cast<std::size_t>(loud - heard.begin())) -
                    asked));
        }
    }
    MciStop(alias);
    seek.print("seek in play to the new place", "at most two chunks, 52");
}

// Compares positions that were told with what arrived from the server at that time.
void measurePosition(const Recorder& recorder, const Samples& file) {
    struct Told {
        Clock::time_point time;
        double position; // seconds
    };
    std::vector<Told> told;
    const std::size_t start = recorder.count();
    MciPlay(alias, -1, 0, -1);
    for (int i = 0; i < 150; ++i) {
        pause(20);
        told.push_back({Clock::now(), MciGetPosition(alias) / 1000.0});
    }
    MciStop(alias);
    waitForSilence(recorder, start);
    const Samples heard = recorder.samples(start, recorder.count());
    Figures late;
    double sum = 0;
    for (std::size_t i = 5; i < told.size(); i += 10) {
        const auto place = static_cast<std::size_t>(told[i].position * perSecond);
        const auto match = findPiece(std::span(file).subspan(place, perSecond / 5), heard,
                                     place > perSecond ? place - perSecond : 0, place + perSecond);
        const double error = milliseconds(told[i].time - recorder.arrival(start + match.place));
        late.values.push_back(std::fabs(error));
        sum += error;
    }
    late.print("position told, off by", "at most 50");
    std::printf("%-34s %.1f ms\n", "  told after what is heard, mean",
                sum / static_cast<double>(late.values.size()));
}

// Keeps the processors busy while it lives.
class BusyLoops {
public:
    explicit BusyLoops(int count) {
        for (int i = 0; i < count; ++i)
            loops_.push_back(std::make_unique<ov::tests::Process>("sh -c 'while :; do :; done'"));
    }

private:
    std::vector<std::unique_ptr<ov::tests::Process>> loops_;
};

// Pieces of silence of a millisecond and more within a sound that has none.
void printGaps(const char* name, Samples heard) {
    heard.erase(heard.begin(),
                heard.begin() + static_cast<std::ptrdiff_t>(ov::tests::startOfSound(heard)));
    std::size_t gaps = 0;
    std::size_t lost = 0;
    std::size_t silent = 0;
    for (const float sample : heard) {
        if (std::fabs(sample) < 1e-3F) {
            ++silent;
            continue;
        }
        gaps += silent >= perSecond / 1000 ? 1 : 0;
        lost += silent >= perSecond / 1000 ? silent : 0;
        silent = 0;
    }
    std::printf("%-34s %zu gaps, %.0f ms in all\n", name, gaps,
                static_cast<double>(lost) * 1000 / perSecond);
}

// Against the player that comes with the sound server, in turn.
void measureGaps(const Recorder& recorder, const ov::tests::TemporaryStore& store) {
    constexpr int seconds = 20;
    const std::string file = store.native("tone.WAV");
    ov::tests::writeWave(file, {SF_FORMAT_PCM_16, rate},
                         Samples(static_cast<std::size_t>(seconds) * rate, 0.25F));
    const BusyLoops load(busyLoops);
    for (int i = 0; i < 2; ++i) {
        std::size_t start = recorder.count();
        MciOpen(alias, store.path("tone.WAV"), "waveaudio");
        MciPlay(alias, -1, 0, -1);
        while (MciGetMode(alias) == "playing")
            pause(20);
        waitForSilence(recorder, start);
        MciClose(alias);
        printGaps("busy machine, this device", recorder.samples(start, recorder.count()));
        start = recorder.count();
        ov::tests::Process player("paplay " + file);
        while (player.isRunning())
            pause(20);
        waitForSilence(recorder, start);
        printGaps("busy machine, paplay", recorder.samples(start, recorder.count()));
    }
}

// The last minute is as loud as nothing before it.
void writeTwoHours(const std::string& path, const Samples& minute) {
    SF_INFO info{0, rate, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0, 0};
    SNDFILE* sound = sf_open(path.c_str(), SFM_WRITE, &info);
    const auto frames = static_cast<sf_count_t>(minute.size());
    for (int i = 0; i < twoHours / 60 - 1; ++i)
        sf_writef_float(sound, minute.data(), frames);
    sf_writef_float(sound, Samples(minute.size(), 0.95F).data(), frames);
    sf_close(sound);
}

void measure() {
    const Recorder recorder;
    const ov::tests::TemporaryStore store;
    Samples minute = ov::tests::sweep(rate, std::size_t{60} * rate);
    writeTwoHours(store.native("two hours.WAV"), minute);
    std::printf("%-34s %.1f ms   (at most 20)\n", "open two hours",
                timed([&] { MciOpen(alias, store.path("two hours.WAV"), "waveaudio"); }));
    measureAnswers(recorder);
    measureSeekInPlay(recorder);
    measurePosition(recorder, resampled(minute, rate, perSecond));
    MciClose(alias);
    measureGaps(recorder, store);
    minute.resize(static_cast<std::size_t>(60) * 8000);
    measureFormat("PCM", {SF_FORMAT_PCM_16, 8000}, minute, store);
    measureFormat("GSM 6.10", {SF_FORMAT_GSM610, 8000}, minute, store);
    measureFormat("IMA ADPCM", {SF_FORMAT_IMA_ADPCM, 8000}, minute, store);
    measureFormat("mu-law", {SF_FORMAT_ULAW, 8000}, minute, store);
}

} // namespace

int main() {
    std::printf("compiler %s%s\n", __VERSION__,
#ifdef NDEBUG
                "");
#else
                ", WITHOUT OPTIMISATION");
#endif
    try {
        ov::tests::SoundServer server;
        if (server.isRunning()) {
            measure();
            return 0;
        }
        std::puts("no sound server can be started");
    } catch (const std::exception& error) {
        std::puts(error.what());
    }
    return 1;
}
