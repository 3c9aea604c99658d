// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "environment.h"
#include "temporary_store.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

// A sound server of the test's own, and what it plays.

namespace ov::tests {

// A child process; ended by the destructor at the latest.
class Process {
public:
    // Its standard output goes to `output`, or nowhere; it gets HOME and the runtime folder.
    Process(std::vector<std::string> arguments, const std::string& home, int output = -1) {
        std::vector<char*> pointers;
        pointers.reserve(arguments.size() + 1);
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        id_ = fork(); // NOLINT(*-prefer-member-initializer): the pointers come first
        if (id_ != 0)
            return;
        const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
        dup2(nowhere, 0);
        dup2(output >= 0 ? output : nowhere, 1);
        dup2(nowhere, 2);
        setenv("HOME", home.c_str(), 1);
        setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
        setenv("PULSE_RUNTIME_PATH", home.c_str(), 1);
        execvp(pointers[0], pointers.data());
        _exit(127);
    }
    ~Process() { end(SIGKILL); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool isRunning() {
        if (id_ > 0 && waitpid(id_, nullptr, WNOHANG) == id_)
            id_ = -1;
        return id_ > 0;
    }
    void end(int signal) {
        if (id_ <= 0)
            return;
        kill(id_, signal);
        waitpid(std::exchange(id_, -1), nullptr, 0);
    }

private:
    pid_t id_ = -1;
};

// PulseAudio with nothing but a sink that leads nowhere. While it lives this process plays there.
class SoundServer {
public:
    static constexpr int rate = 48000;

    SoundServer()
        // The sink first: once the socket is there, everything is.
        : process_({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm",
                    "--use-pid-file=no", "-L",
                    "module-null-sink sink_name=nowhere format=float32le channels=2 rate=" +
                        std::to_string(rate),
                    "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + socket()},
                   home()) {
        while (process_.isRunning() && !answers())
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    bool isRunning() { return process_.isRunning(); }
    // As a device that is unplugged.
    void vanish() { process_.end(SIGKILL); }
    std::string home() const { return folder_.folder().native(); }

private:
    std::string socket() const { return folder_.native("native"); }
    bool answers() const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        socket().copy(address.sun_path, sizeof address.sun_path - 1);
        const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const bool connected =
            connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        close(connection);
        return connected;
    }

    TemporaryStore folder_;
    Process process_;
    Environment server_{"PULSE_SERVER", "unix:" + socket()};
    Environment driver_{"SDL_AUDIODRIVER", "pulseaudio"};
};

// Records what the server plays, mono at its rate.
class Recorder {
public:
    explicit Recorder(const SoundServer& server) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        process_ = std::make_unique<Process>(
            std::vector<std::string>{"parec", "--raw", "--device=nowhere.monitor",
                                     "--format=float32le", "--channels=1", "--latency-msec=5",
                                     "--rate=" + std::to_string(SoundServer::rate)},
            server.home(), ends[1]);
        close(ends[1]);
        thread_ = std::thread([this, from = ends[0]] { read(from); });
        // Runs already, so that the sink works in small pieces.
        waitForMore(SoundServer::rate / 50);
        if (ended_) {
            thread_.join();
            throw std::runtime_error("nothing can be recorded");
        }
    }
    ~Recorder() {
        process_->end(SIGKILL);
        thread_.join();
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    std::size_t count() const {
        const std::lock_guard<std::mutex> lock(mutex_);
        return samples_.size();
    }
    std::vector<float> samples(std::size_t from, std::size_t to) const {
        const std::lock_guard<std::mutex> lock(mutex_);
        return {samples_.begin() + static_cast<std::ptrdiff_t>(from),
                samples_.begin() + static_cast<std::ptrdiff_t>(std::min(to, samples_.size()))};
    }
    // When that sample came, as long as it did.
    std::chrono::steady_clock::time_point arrival(std::size_t sample) const {
        const std::lock_guard<std::mutex> lock(mutex_);
        return std::find_if(arrivals_.begin(), arrivals_.end(),
                            [sample](const auto& entry) { return entry.first > sample; })
            ->second;
    }
    // Waits until that many more have come, or the server is gone.
    void waitForMore(std::size_t samples) const {
        const std::size_t target = count() + samples;
        while (count() < target && !ended_)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

private:
    void read(int from) {
        std::array<float, 1024> buffer{};
        std::size_t filled = 0; // bytes
        ssize_t got = 0;
        while ((got = ::read(from, reinterpret_cast<char*>(buffer.data()) + filled,
                             sizeof buffer - filled)) > 0) {
            filled += static_cast<std::size_t>(got);
            const std::size_t whole = filled / sizeof(float);
            {
                const std::lock_guard<std::mutex> lock(mutex_);
                samples_.insert(samples_.end(), buffer.begin(), buffer.begin() + whole);
                arrivals_.emplace_back(samples_.size(), std::chrono::steady_clock::now());
            }
            filled %= sizeof(float);
            std::copy_n(reinterpret_cast<char*>(buffer.data() + whole), filled,
                        reinterpret_cast<char*>(buffer.data()));
        }
        ended_ = true;
        close(from);
    }

    mutable std::mutex mutex_; // guards samples and arrivals
    std::vector<float> samples_;
    std::vector<std::pair<std::size_t, std::chrono::steady_clock::time_point>> arrivals_;
    std::atomic<bool> ended_{false};
    std::unique_ptr<Process> process_;
    std::thread thread_;
};

} // namespace ov::tests
