// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/module/sdl_output.h"

#include "platform/threads/this_thread.h"

#include <SDL.h>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <iterator>
#include <mutex>
#include <thread>

namespace ov::sound::loaded {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWait = 800ms;
constexpr auto retryInterval = 5ms;

// SDL's audio part is not ready for two threads. A desktop whose sound service hangs holds the one
// that asked, for ever; nobody else shall be held with it.
class SdlLock {
public:
    SdlLock() {
        std::unique_lock<std::mutex> lock(turn().mutex);
        mine_ = turn().over.wait_for(lock, longestWait, [] { return !turn().taken; });
        if (mine_)
            turn().taken = true;
    }
    ~SdlLock() {
        if (!mine_)
            return;
        const std::lock_guard<std::mutex> lock(turn().mutex);
        turn().taken = false;
        turn().over.notify_one();
    }
    SdlLock(const SdlLock&) = delete;
    SdlLock& operator=(const SdlLock&) = delete;

    explicit operator bool() const noexcept { return mine_; }

private:
    // Not a std::timed_mutex, whose waits the thread sanitizer does not see.
    struct Turn {
        std::mutex mutex;
        std::condition_variable over;
        bool taken = false;
    };
    // Never destroyed: one who is held comes back after the program's end.
    static Turn& turn() {
        static auto& theTurn = *new Turn;
        return theTurn;
    }

    bool mine_ = false;
};

// Keeps SDL's audio part open while somebody uses it. Not by SDL_InitSubSystem, which asks the
// session bus for what only windows need, and waits for one that hangs.
class AudioSystem {
public:
    AudioSystem() {
        const SdlLock lock;
        if (!lock)
            return;
        // Ctrl-C is not SDL's.
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "OVSearch");
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "Dictation");
        ready_ = users() > 0 || SDL_AudioInit(SDL_getenv("SDL_AUDIODRIVER")) == 0;
        users() += ready_ ? 1 : 0;
    }
    ~AudioSystem() {
        if (const SdlLock lock; ready_ && lock && --users() == 0)
            SDL_AudioQuit();
    }
    AudioSystem(const AudioSystem&) = delete;
    AudioSystem& operator=(const AudioSystem&) = delete;

    bool ready() const noexcept { return ready_; }

private:
    static int& users() { // under the lock
        static int count = 0;
        return count;
    }

    bool ready_ = false;
};

// Ours, those included that are being closed.
std::atomic<int>& outputsInUse() {
    static std::atomic<int> count{0};
    return count;
}

// Under the lock; the system's own.
std::vector<std::string> listedNames() {
    std::vector<std::string> names;
    const int count = SDL_GetNumAudioDevices(0);
    for (int i = 0; i < count; ++i)
        if (const char* name = SDL_GetAudioDeviceName(i, 0))
            names.emplace_back(name);
    return names;
}

class SdlOutput final : public WaveOutput {
public:
    SdlOutput(int rate, int channels, const OutputWish& which, WaveSource& source) {
        if (!system_.ready())
            return;
        SDL_AudioSpec wanted{};
        wanted.freq = rate;
        wanted.format = AUDIO_F32SYS;
        wanted.channels = static_cast<Uint8>(channels);
        wanted.samples = static_cast<Uint16>(chunkFrames(rate));
        wanted.callback = fillFrom;
        wanted.userdata = &source;
        if (const SdlLock lock; lock) {
            const std::string name = nameOf(which);
            SDL_AudioSpec obtained{};
            if (!isMissing_)
                device_ = SDL_OpenAudioDevice(name.empty() ? nullptr : name.c_str(), 0, &wanted,
                                              &obtained, 0);
            if (device_ != 0)
                ++outputsInUse(); // before another one is refused for it
        }
        if (device_ != 0)
            SDL_PauseAudioDevice(device_, 0);
    }
    ~SdlOutput() override {
        if (device_ == 0)
            return;
        SDL_CloseAudioDevice(device_);
        --outputsInUse();
    }

    bool isOpen() const noexcept { return device_ != 0; }
    bool isMissing() const noexcept { return isMissing_; }
    bool lost() const noexcept override {
        return SDL_GetAudioDeviceStatus(device_) == SDL_AUDIO_STOPPED;
    }

private:
    // Empty: the usual one, also for a number that has gone.
    std::string nameOf(const OutputWish& which) {
        if (which.name.empty() && which.number < 0)
            return {};
        const std::vector<std::string> names = listedNames();
        isMissing_ = !which.name.empty() && std::ranges::find(names, which.name) == names.end();
        if (!which.name.empty())
            return which.name;
        return which.number < std::ssize(names) ? names[static_cast<std::size_t>(which.number)]
                                                : std::string();
    }

    static void fillFrom(void* source, Uint8* bytes, int length) {
        thread_local const bool isForward = platform::stepForward();
        static_cast<void>(isForward);
        const auto count = static_cast<std::size_t>(length) / sizeof(float);
        static_cast<WaveSource*>(source)->fill({reinterpret_cast<float*>(bytes), count});
    }

    AudioSystem system_;
    SDL_AudioDeviceID device_ = 0;
    bool isMissing_ = false; // what was wished for is not there
};

} // namespace

std::vector<std::string> outputNames() {
    const AudioSystem system;
    const SdlLock lock;
    return system.ready() && lock ? listedNames() : std::vector<std::string>();
}

void leaveThread() noexcept {
    SDL_TLSCleanup(); // SDL does so for its own threads only
}

std::unique_ptr<WaveOutput> openOutput(int rate, int channels, const OutputWish& which,
                                       WaveSource& source) {
    // Some outputs can be opened only once, and the one before may take a moment to close.
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    for (;;) {
        const bool isInUse = outputsInUse() > 0; // it may be closed while this one is refused
        auto output = std::make_unique<SdlOutput>(rate, channels, which, source);
        if (output->isOpen())
            return output;
        if (output->isMissing() || !(isInUse || outputsInUse() > 0) ||
            std::chrono::steady_clock::now() > deadline)
            return nullptr;
        std::this_thread::sleep_for(retryInterval);
    }
}

} // namespace ov::sound::loaded
