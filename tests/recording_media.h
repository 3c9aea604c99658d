// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/media.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Media commands of a test: keeps what was sent and answers as told. Installed while it lives.

namespace ov::tests {

class RecordingMedia final : public platform::MediaCalls {
public:
    struct Answer {
        std::uint32_t code = 0;
        std::string reply;
    };

    RecordingMedia() : before_(platform::installMediaCalls(this)) {}
    ~RecordingMedia() override { platform::installMediaCalls(before_); }
    RecordingMedia(const RecordingMedia&) = delete;
    RecordingMedia& operator=(const RecordingMedia&) = delete;

    std::uint32_t sendString(std::string_view command, std::span<char> reply) override {
        fields.emplace_back(command);
        sent.push_back(withoutPadding(command));
        replySizes.push_back(reply.size());
        const Answer answer = answers[sent.back()];
        copy(answer.reply, reply);
        return answer.code;
    }
    bool getErrorString(std::uint32_t code, std::span<char> text) override {
        errorSize = text.size();
        if (const auto found = errors.find(code); found != errors.end())
            copy(found->second, text);
        return errors.contains(code);
    }
    std::size_t getShortPathName(std::string_view path, std::span<char> buffer) override {
        pathSize = buffer.size();
        const std::string& name = shortPaths[std::string(path)];
        copy(name, buffer);
        return name.size();
    }
    void killTimer(void* window, std::uint32_t timer) override {
        killedTimers.emplace_back(window, timer);
    }

    std::map<std::string, Answer> answers; // by command; else success without a reply
    std::map<std::uint32_t, std::string> errors;
    std::map<std::string, std::string> shortPaths;

    std::vector<std::string> fields; // commands as they came
    std::vector<std::string> sent;   // the same without the blanks at the end
    std::vector<std::size_t> replySizes;
    std::size_t errorSize = 0;
    std::size_t pathSize = 0;
    std::vector<std::pair<void*, std::uint32_t>> killedTimers;

private:
    static std::string withoutPadding(std::string_view text) {
        return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
    }
    static void copy(std::string_view text, std::span<char> buffer) {
        std::copy_n(text.begin(), std::min(text.size(), buffer.size()), buffer.begin());
    }

    MediaCalls* before_;
};

} // namespace ov::tests
