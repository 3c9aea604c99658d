// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "sound/media.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The system's media commands, but for those whose answer a test has chosen. Keeps what was sent.
// Installed while it lives, and closes all devices at its end.

namespace ov::tests {

class ScriptedMedia final : public sound::MediaCalls {
public:
    struct Answer {
        std::uint32_t code = 0;
        std::string reply;
    };

    ScriptedMedia() : before_(sound::installMediaCalls(this)) {}
    ~ScriptedMedia() override {
        sendString("close all", {});
        sound::installMediaCalls(before_);
    }
    ScriptedMedia(ScriptedMedia&&) = delete; // nor copied

    std::uint32_t sendString(std::string_view command, std::span<char> reply) override {
        fields.emplace_back(command);
        sent.emplace_back(command.substr(0, command.find_last_not_of(' ') + 1));
        const auto answer = answers.find(sent.back());
        if (answer == answers.end())
            return sound::systemMediaCalls().sendString(command, reply);
        const std::string& text = answer->second.reply;
        if (!reply.empty())
            std::copy_n(text.begin(), std::min(text.size(), reply.size()), reply.begin());
        return answer->second.code;
    }
    bool getErrorString(std::uint32_t code, std::span<char> text) override {
        return sound::systemMediaCalls().getErrorString(code, text);
    }
    std::size_t getShortPathName(std::string_view path, std::span<char> buffer) override {
        return sound::systemMediaCalls().getShortPathName(path, buffer);
    }
    void killTimer(void* window, std::uint32_t timer) override {
        killedTimers.emplace_back(window, timer);
    }

    std::vector<std::string> takeSent() { return std::exchange(sent, {}); }
    // Files opened since the last time.
    std::ptrdiff_t takeOpened() {
        const auto commands = takeSent();
        return std::count_if(commands.begin(), commands.end(),
                             [](const auto& command) { return command.starts_with("open "); });
    }

    std::map<std::string, Answer> answers; // by command
    std::vector<std::string> fields;       // commands as they came
    std::vector<std::string> sent;         // the same without the blanks at the end
    std::vector<std::pair<void*, std::uint32_t>> killedTimers;

private:
    sound::MediaCalls* before_;
};

} // namespace ov::tests
