// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/posix/file_descriptor.h"
#include "platform/terminal/terminal.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>

namespace ov::platform {

namespace {

// False at the end, and with errno set when that is a failure. Waits by poll(), which no signal
// restarts.
bool readSome(int handle, std::string& content) {
    std::array<char, 65536> buffer; // NOLINT(*-member-init): filled by read
    pollfd waiting{handle, POLLIN, 0};
    errno = 0;
    if (poll(&waiting, 1, -1) < 0)
        return false;
    const ssize_t got = read(handle, buffer.data(), buffer.size());
    if (got > 0)
        content.append(buffer.data(), static_cast<std::size_t>(got));
    return got > 0 || errno == EAGAIN;
}

} // namespace

Status readInput(const std::string& native, std::string& content, std::uint64_t limit) {
    content.clear();
    const bool isStandard = native == "-";
    const std::string name = isStandard ? "standard input" : native;
    // Non-blocking, as a pipe that nobody has opened for writing would not let go of a signal.
    const FileDescriptor file(isStandard ? -1
                                         : open(native.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!isStandard && !file.valid())
        return systemError(name);
    while (readSome(isStandard ? STDIN_FILENO : file.get(), content))
        if (content.size() > limit) {
            errno = EFBIG;
            break;
        }
    return errno == 0 ? Status{} : systemError(name);
}

} // namespace ov::platform
