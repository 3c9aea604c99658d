// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "tests/failing_reads.h"

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace ov::tests {

namespace {

struct BadPart {
    dev_t device = 0;
    ino_t file = 0;
    FailingReads::How how{};
    std::int64_t from = 0;
};

struct Disk {
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<BadPart> bad;
    bool met = false;
    bool keptSomebody = false;
};

Disk& disk() {
    static Disk theDisk;
    return theDisk;
}

bool isOn(int file, const BadPart& bad) {
    struct stat info {};
    return fstat(file, &info) == 0 && info.st_dev == bad.device && info.st_ino == bad.file;
}

// How many bytes can be read there, after a wait if need be; none: the read fails.
std::size_t readable(int file, std::size_t count, off_t offset) {
    std::unique_lock<std::mutex> lock(disk().mutex);
    const auto bad = disk().bad;
    if (!bad || !isOn(file, *bad) || offset + static_cast<off_t>(count) <= bad->from)
        return count;
    if (offset < bad->from)
        return static_cast<std::size_t>(bad->from - offset);
    disk().met = true;
    disk().changed.notify_all();
    if (bad->how == FailingReads::How::fail)
        return 0;
    const bool goesOn = disk().changed.wait_for(lock, std::chrono::seconds(30),
                                                [] { return !disk().bad.has_value(); });
    disk().keptSomebody = disk().keptSomebody || !goesOn;
    return goesOn ? count : 0;
}

ssize_t readAt(int file, void* target, std::size_t count, off_t offset) {
    const std::size_t possible = count == 0 ? 0 : readable(file, count, offset);
    if (possible == 0 && count > 0) {
        errno = EIO;
        return -1;
    }
    return syscall(SYS_pread64, file, target, possible, offset);
}

} // namespace

FailingReads::FailingReads(const std::string& native, How how, std::int64_t from) {
    struct stat info {};
    if (stat(native.c_str(), &info) != 0)
        throw std::runtime_error("no file " + native);
    const std::lock_guard<std::mutex> lock(disk().mutex);
    disk().bad = BadPart{info.st_dev, info.st_ino, how, from};
    disk().met = disk().keptSomebody = false;
}

FailingReads::~FailingReads() {
    const std::lock_guard<std::mutex> lock(disk().mutex);
    disk().bad.reset();
    disk().changed.notify_all();
}

void FailingReads::waitUntilMet() {
    std::unique_lock<std::mutex> lock(disk().mutex);
    disk().changed.wait(lock, [] { return std::exchange(disk().met, false); });
}

bool FailingReads::keptSomebody() {
    const std::lock_guard<std::mutex> lock(disk().mutex);
    return disk().keptSomebody;
}

} // namespace ov::tests

// These stand before the system's in the program that they are linked into.
extern "C" {
ssize_t readAtOr(int file, void* target, std::size_t count, off_t offset) __asm__("pread");
ssize_t readAtOr64(int file, void* target, std::size_t count, off_t offset) __asm__("pread64");

ssize_t readAtOr(int file, void* target, std::size_t count, off_t offset) {
    return ov::tests::readAt(file, target, count, offset);
}
ssize_t readAtOr64(int file, void* target, std::size_t count, off_t offset) {
    return ov::tests::readAt(file, target, count, offset);
}
}
