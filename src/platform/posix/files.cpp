// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"

#include "platform/directories.h"
#include "platform/file_replacement.h"
#include "platform/posix/file_descriptor.h"
#include "platform/posix/file_times.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ov::platform {

namespace {

FileKind kindOfMode(mode_t mode) noexcept {
    if (S_ISREG(mode))
        return FileKind::file;
    return S_ISDIR(mode) ? FileKind::directory : FileKind::other;
}

// Reads to the end; `expected` is the size to reserve. False with errno set, also when there are
// more than `limit` bytes: a file may grow, and one that the system makes up says it is empty.
bool readAll(int handle, std::size_t expected, std::uint64_t limit, std::string& content) {
    constexpr std::size_t minimumRoom = 4096;
    std::size_t used = 0;
    while (used <= limit) {
        content.resize(std::max(used + minimumRoom, expected + 1));
        const ssize_t got = read(handle, content.data() + used, content.size() - used);
        if (got < 0 && errno == EINTR)
            continue;
        used += got > 0 ? static_cast<std::size_t>(got) : 0;
        if (got <= 0) {
            content.resize(got < 0 ? 0 : used);
            return got == 0;
        }
    }
    content.clear();
    errno = EFBIG;
    return false;
}

} // namespace

bool writeAll(int handle, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(handle, content.data(), content.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

std::string nativeDirectoryOf(const std::string& native) {
    const std::size_t slash = native.rfind('/');
    return slash == std::string::npos ? "./" : native.substr(0, slash + 1);
}

Status systemError(std::string_view nativePath) {
    const int number = errno;
    std::array<char, 256> buffer{};
    // GNU's strerror_r, which returns the text.
    const char* reason = strerror_r(number, buffer.data(), buffer.size());
    return {number, std::string(nativePath), reason};
}

FileKind fileKind(std::string_view path) {
    struct stat info {};
    if (stat(toNativePath(path).c_str(), &info) != 0)
        return FileKind::missing;
    return kindOfMode(info.st_mode);
}

FileStamp fileStamp(std::string_view path) {
    struct stat info {};
    if (stat(toNativePath(path).c_str(), &info) != 0)
        return {};
    return {static_cast<std::uint64_t>(info.st_size), nanoseconds(info.st_mtim)};
}

Status readFileStamp(std::string_view path, FileStamp& stamp) {
    const std::string native = toNativePath(path);
    if (access(native.c_str(), F_OK) != 0)
        return systemError(native);
    stamp = fileStamp(path);
    return {};
}

bool fileExists(std::string_view path) {
    return fileKind(path) == FileKind::file;
}

bool directoryExists(std::string_view path) {
    return fileKind(path) == FileKind::directory;
}

Status createDirectory(std::string_view path, Access access) {
    const std::string native = toNativePath(path);
    if (mkdir(native.c_str(), modeFor(access, 0777)) != 0)
        return systemError(native);
    return {};
}

Status createDirectories(std::string_view directory, Access access) {
    Status status;
    for (std::size_t at = directory.find('\\', 1); status.ok() && at != std::string_view::npos;
         at = directory.find('\\', at + 1))
        if (const std::string_view above = directory.substr(0, at + 1); !directoryExists(above))
            status = createDirectory(above, access);
    return status;
}

Status removeFile(std::string_view path) {
    const std::string native = toNativePath(path);
    if (unlink(native.c_str()) != 0)
        return systemError(native);
    return {};
}

Status readFile(std::string_view path, std::string& content, std::uint64_t limit) {
    content.clear();
    const std::string native = toNativePath(path);
    // Non-blocking, so that a pipe in a file's place cannot hold us up.
    const FileDescriptor file(open(native.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat info {};
    if (!file.valid() || fstat(file.get(), &info) != 0)
        return systemError(native);
    if (!S_ISREG(info.st_mode))
        errno = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
    else if (static_cast<std::uint64_t>(info.st_size) > limit)
        errno = EFBIG;
    else
        return readAll(file.get(), static_cast<std::size_t>(info.st_size), limit, content)
                   ? Status{}
                   : systemError(native);
    return systemError(native);
}

Status replaceFile(std::string_view path, std::string_view content, Access access) {
    FileReplacement file;
    Status status = file.open(path, access);
    if (status.ok())
        status = file.write(content);
    return status.ok() ? file.commit() : status;
}

Status appendToFile(std::string_view path, std::string_view content, Access access) {
    const std::string native = toNativePath(path);
    constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC;
    const FileDescriptor file(open(native.c_str(), flags, modeFor(access, 0666)));
    if (!file.valid() || !writeAll(file.get(), content))
        return systemError(native);
    return {};
}

Status refuseForeign(std::string_view path) {
    const std::string native = toNativePath(path);
    struct stat info {};
    if (stat(native.c_str(), &info) != 0)
        return errno == ENOENT ? Status() : systemError(native);
    return info.st_uid == geteuid() ? Status() : Status(EPERM, native, "is somebody else's");
}

// By the path: to open and close it would take the locks away that this program has on it.
Status keepToOwner(std::string_view path) {
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    const std::string native = toNativePath(path);
    struct stat info {};
    if (stat(native.c_str(), &info) != 0)
        return errno == ENOENT ? Status() : systemError(native);
    if (Status foreign = refuseForeign(path); !foreign.ok() || (info.st_mode & others) == 0)
        return foreign;
    return chmod(native.c_str(), info.st_mode & ~others & ALLPERMS) == 0 ? Status()
                                                                         : systemError(native);
}

Status listNames(std::string_view directory, std::vector<std::string>& names) {
    names.clear();
    DirectoryReader reader;
    if (Status opened = reader.open(directory); !opened.ok())
        return opened;
    for (DirectoryEntry entry; reader.next(entry);)
        names.emplace_back(entry.name);
    std::sort(names.begin(), names.end());
    return reader.status();
}

} // namespace ov::platform
