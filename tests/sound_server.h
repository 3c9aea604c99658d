// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/environment.h"
#include "tests/temporary_store.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

// A sound server of the test's own, and what it plays.

namespace ov::tests {

// A shell's command in a process of its own, which is ended by the destructor at the latest.
class Process {
public:
    explicit Process(const std::string& command) : id_(fork()) {
        if (id_ != 0)
            return;
        execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), nullptr);
        _exit(127);
    }
    ~Process() { end(); }
    Process(Process&&) = delete; // nor copied

    bool isRunning() {
        if (id_ > 0 && waitpid(id_, nullptr, WNOHANG) == id_)
            id_ = -1;
        return id_ > 0;
    }
    void send(int signal) const {
        if (id_ > 0)
            kill(id_, signal);
    }
    void end() {
        if (id_ <= 0)
            return;
        kill(id_, SIGKILL);
        waitpid(std::exchange(id_, -1), nullptr, 0);
    }

private:
    pid_t id_;
};

// PulseAudio with nothing but a sink that leads nowhere. While it lives this process and those that
// it starts play there.
class SoundServer {
public:
    static constexpr int rate = 48000;

    SoundServer() {
        while (process_.isRunning() && std::system("pactl info >/dev/null 2>&1") != 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    bool isRunning() { return process_.isRunning(); }
    // As a device that is unplugged.
    void vanish() { process_.end(); }
    // Answers nobody until it goes on.
    void hang() const { process_.send(SIGSTOP); }
    void goOn() const { process_.send(SIGCONT); }

    // A further sink, "elsewhere", that calls itself so; what is usual stays so.
    static bool plugIn(const std::string& description) {
        return tell("load-module module-null-sink sink_name=elsewhere format=float32le channels=2"
                    " rate=" +
                    std::to_string(rate) + " 'sink_properties=device.description=" + description +
                    "'") &&
               tell("set-default-sink nowhere");
    }
    // That goes alone.
    static bool pullOut() {
        return tell("unload-module $(pactl list short modules |"
                    " sed -n '/sink_name=elsewhere/s/\\t.*//p')");
    }

private:
    static bool tell(const std::string& command) {
        return std::system(("pactl " + command + " >/dev/null 2>&1").c_str()) == 0;
    }

    TemporaryStore store_;
    Environment home_{"HOME", store_.folder().native()};
    Environment runtime_{"XDG_RUNTIME_DIR", store_.folder().native()};
    Environment pulse_{"PULSE_RUNTIME_PATH", store_.folder().native()};
    Environment server_{"PULSE_SERVER", "unix:" + store_.native("native")};
    Environment driver_{"SDL_AUDIODRIVER", "pulseaudio"};
    // The sink first: once the socket is there, everything is.
    Process process_{"pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm"
                     " --use-pid-file=no -L 'module-null-sink sink_name=nowhere format=float32le"
                     " channels=2 rate=" +
                     std::to_string(rate) +
                     "' -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
                     store_.native("native") + "' >" + store_.native("log") + " 2>&1"};
};

// Records what the server plays, mono at its rate.
class Recorder {
public:
    // Runs already at its end, so that the sink works in small pieces.
    explicit Recorder(const std::string& sink = "nowhere") : sink_(sink) {
        waitForMore(SoundServer::rate / 50);
        if (!process_.isRunning())
            throw std::runtime_error("nothing can be recorded");
    }

    std::size_t count() const {
        return static_cast<std::size_t>(fs::file_size(file_) / sizeof(float));
    }
    std::vector<float> samples(std::size_t from, std::size_t to) const {
        std::vector<float> found(std::min(to, count()) - from);
        std::ifstream file(file_, std::ios::binary);
        file.seekg(static_cast<std::streamoff>(from * sizeof(float)));
        file.read(reinterpret_cast<char*>(found.data()),
                  static_cast<std::streamsize>(found.size() * sizeof(float)));
        return found;
    }
    // Waits until that many more have come, or the server is gone.
    void waitForMore(std::size_t samples) {
        const std::size_t target = count() + samples;
        while (count() < target && process_.isRunning())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

private:
    TemporaryStore store_;
    std::string sink_;
    std::string file_ = store_.add("sound").native("sound");
    Process process_{"parec --raw --device=" + sink_ +
                     ".monitor --format=float32le --channels=1"
                     " --latency-msec=5 --rate=" +
                     std::to_string(SoundServer::rate) + " >>" + file_ + " 2>" +
                     store_.native("log")};
};

} // namespace ov::tests
