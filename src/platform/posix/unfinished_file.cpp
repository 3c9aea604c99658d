// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/posix/unfinished_file.h"

#include <climits>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace ov::platform {

namespace {

constexpr std::string_view beginning = ".ovsearch-";
constexpr std::string_view ending = ".part";

// Who writes a file, as its name says.
struct Writer {
    std::string machine;
    std::string boot;
    std::string space; // of process ids: a container has its own
    std::string process;
    std::string start; // ticks since the machine started
    bool operator==(const Writer&) const = default;
};

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string hash(std::string_view text) {
    std::uint64_t value = 0xCBF29CE484222325U; // FNV-1a
    for (const char c : text)
        value = (value ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return {digits.data(), end.ptr};
}

std::string machine() {
    std::array<char, 256> name{};
    static_cast<void>(gethostname(name.data(), name.size() - 1));
    return hash(name.data() + contentOf("/etc/machine-id"));
}

std::string space() {
    struct stat info {};
    return stat("/proc/self/ns/pid", &info) == 0 ? std::to_string(info.st_ino) : "0";
}

// Empty for a process that is gone or hidden. The name before it may hold anything.
std::string startOf(const std::string& process) {
    const std::string line = contentOf("/proc/" + process + "/stat");
    std::size_t at = line.rfind(')');
    constexpr int fieldsBetween = 20;
    for (int i = 0; i < fieldsBetween && at != std::string::npos; ++i)
        at = line.find(' ', at + 1);
    return at == std::string::npos ? "" : line.substr(at + 1, line.find(' ', at + 1) - at - 1);
}

Writer thisProcess() {
    static const std::string thisMachine = machine();
    static const std::string thisBoot = hash(contentOf("/proc/sys/kernel/random/boot_id"));
    static const std::string thisSpace = space();
    const std::string process = std::to_string(getpid()); // another one after a fork
    return {thisMachine, thisBoot, thisSpace, process, startOf(process)};
}

std::string nameStart(const Writer& writer) {
    return std::string(beginning) + writer.machine + '-' + writer.boot + '-' + writer.space + '-' +
           writer.process + '-' + writer.start + '-';
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// Nothing for a name of any other form.
std::optional<Writer> writerOf(const std::string& name) {
    if (!name.starts_with(beginning) || !name.ends_with(ending))
        return std::nullopt;
    std::array<std::string, 6> parts;
    std::size_t at = beginning.size();
    for (std::string& part : parts) {
        const std::size_t end = name.find_first_of("-.", at);
        part = name.substr(at, end - at);
        at = end + 1;
    }
    Writer writer{parts[0], parts[1], parts[2], parts[3], parts[4]};
    const bool sound = isNumber(writer.process) && isNumber(writer.start) && isNumber(parts[5]) &&
                       nameStart(writer) + parts[5] + std::string(ending) == name;
    return sound ? std::optional(writer) : std::nullopt;
}

bool isRunning(const Writer& writer) {
    const auto process = static_cast<pid_t>(std::strtol(writer.process.c_str(), nullptr, 10));
    if (process <= 0 || (kill(process, 0) != 0 && errno == ESRCH))
        return false;
    const std::string start = startOf(writer.process);
    return start.empty() || start == writer.start;
}

std::time_t whenTheMachineStarted() {
    timespec sinceThen{};
    clock_gettime(CLOCK_BOOTTIME, &sinceThen);
    return std::time(nullptr) - sinceThen.tv_sec;
}

// When in doubt, it is not gone.
bool isGone(const Writer& writer, const Writer& self, const std::string& file) {
    struct stat info {};
    if (writer.machine != self.machine || lstat(file.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return false;
    if (writer.boot != self.boot) // or another machine that has been given the same name
        return info.st_mtime < whenTheMachineStarted();
    return writer.space == self.space && !self.start.empty() && !isRunning(writer);
}

// ---- What a signal handler can reach

struct Place {
    std::atomic<bool> taken = false;
    std::atomic<bool> filled = false;
    std::array<char, PATH_MAX> name{};
};

std::array<Place, 8>& places() noexcept {
    static std::array<Place, 8> all;
    return all;
}

} // namespace

std::string unfinishedName(const std::string& directory, int number) {
    return directory + nameStart(thisProcess()) + std::to_string(number) + std::string(ending);
}

void removeAbandonedFiles(const std::string& directory) {
    namespace fs = std::filesystem;
    std::error_code error;
    for (fs::directory_iterator at(directory, error), end; !error && at != end;
         at.increment(error)) {
        const std::string name = at->path().filename().native();
        const auto writer = writerOf(name);
        if (writer && isGone(*writer, thisProcess(), at->path().native()))
            unlink(at->path().c_str());
    }
}

UnfinishedMark::UnfinishedMark(std::string_view name) noexcept {
    for (std::size_t i = 0; i < places().size() && place_ < 0; ++i) {
        Place& place = places()[i];
        if (name.size() >= place.name.size() || place.taken.exchange(true))
            continue;
        *std::ranges::copy(name, place.name.begin()).out = '\0';
        place.filled = true;
        place_ = static_cast<int>(i);
    }
}

UnfinishedMark::~UnfinishedMark() {
    if (place_ < 0)
        return;
    Place& place = places()[static_cast<std::size_t>(place_)];
    place.filled = false;
    place.taken = false;
}

void removeUnfinishedFiles() noexcept {
    for (const Place& place : places())
        if (place.filled)
            unlink(place.name.data());
}

} // namespace ov::platform
