// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "sound/module/sdl_output.h"

#include <SDL.h>
#include <atomic>
#include <chrono>
#include <condition_variable>
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

// Keeps SDL's audio part open; SDL counts its users.
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
        ready_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
    }
    ~AudioSystem() {
        if (const SdlLock lock; ready_ && lock)
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    AudioSystem(const AudioSystem&) = delete;
    AudioSystem& operator=(const AudioSystem&) = delete;

    bool ready() const noexcept { return ready_; }

private:
    bool ready_ = false;
};

// Ours, those included that are being closed.
std::atomic<int>& outputsInUse() {
    static std::atomic<int> count{0};
    return count;
}

class SdlOutput final : public WaveOutput {
public:
    SdlOutput(int rate, int channels, int device, WaveSource& source) {
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
            const char* name = device < 0 ? nullptr : SDL_GetAudioDeviceName(device, 0);
            SDL_AudioSpec obtained{};
            device_ = SDL_OpenAudioDevice(name, 0, &wanted, &obtained, 0);
        }
        if (device_ == 0)
            return;
        ++outputsInUse();
        SDL_PauseAudioDevice(device_, 0);
    }
    ~SdlOutput() override {
        if (device_ == 0)
            return;
        SDL_CloseAudioDevice(device_);
        --outputsInUse();
    }

    bool isOpen() const noexcept { return device_ != 0; }
    bool lost() const noexcept override {
        return SDL_GetAudioDeviceStatus(device_) == SDL_AUDIO_STOPPED;
    }

private:
    static void fillFrom(void* source, Uint8* bytes, int length) {
        const auto count = static_cast<std::size_t>(length) / sizeof(float);
        static_cast<WaveSource*>(source)->fill({reinterpret_cast<float*>(bytes), count});
    }

    AudioSystem system_;
    SDL_AudioDeviceID device_ = 0;
};

} // namespace

int outputCount() {
    const AudioSystem system;
    const SdlLock lock;
    return system.ready() && lock ? SDL_GetNumAudioDevices(0) : 0;
}

void leaveThread() noexcept {
    SDL_TLSCleanup(); // SDL does so for its own threads only
}

std::unique_ptr<WaveOutput> openOutput(int rate, int channels, int device, WaveSource& source) {
    // Some outputs can be opened only once, and the one before may take a moment to close.
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    for (;;) {
        auto output = std::make_unique<SdlOutput>(rate, channels, device, source);
        if (output->isOpen())
            return output;
        if (outputsInUse() == 0 || std::chrono::steady_clock::now() > deadline)
            return nullptr;
        std::this_thread::sleep_for(retryInterval);
    }
}

} // namespace ov::sound::loaded
