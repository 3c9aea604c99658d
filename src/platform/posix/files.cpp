// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/file_descriptor.h"

namespace ov::platform {

namespace {

bool namesNothing(std::string_view path) noexcept {
    return path.empty() || path.find('\0') != std::string_view::npos;
}

FileKind kindOfMode(mode_t mode) noexcept {
    if (S_ISREG(mode))
        return FileKind::file;
    return S_ISDIR(mode) ? FileKind::directory : FileKind::other;
}

// Where a link leads to, so that replacing the file keeps the link; the path itself otherwise.
std::string linkTarget(const std::string& native) {
    std::array<char, PATH_MAX> resolved{};
    return realpath(native.c_str(), resolved.data()) != nullptr ? resolved.data() : native;
}

// The temporary file beside a file that is being replaced; removed unless it was renamed.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target) : name_(target + ".XXXXXX") {
        file_ = FileDescriptor(mkostemp(name_.data(), O_CLOEXEC));
    }
    ~TemporaryFile() {
        if (file_.valid() && !renamed_)
            unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool valid() const noexcept { return file_.valid(); }

    bool write(std::string_view content, const std::string& target) {
        struct stat old {};
        const bool exists = stat(target.c_str(), &old) == 0;
        const mode_t mask = exists ? 0 : umask(0);
        if (!exists)
            umask(mask);
        const mode_t mode = exists ? old.st_mode & 07777U : 0666U & ~mask;
        if (exists) // only root can; for anyone else the owner is the same already
            static_cast<void>(!fchown(file_.get(), old.st_uid, old.st_gid));
        return fchmod(file_.get(), mode) == 0 && writeAll(file_.get(), content) &&
               fsync(file_.get()) == 0;
    }

    bool renameTo(const std::string& target) {
        renamed_ = rename(name_.c_str(), target.c_str()) == 0;
        return renamed_;
    }

private:
    std::string name_;
    FileDescriptor file_;
    bool renamed_ = false;
};

void syncDirectoryOf(const std::string& native) {
    const std::size_t slash = native.rfind('/');
    const std::string directory = slash == std::string::npos ? "." : native.substr(0, slash + 1);
    const FileDescriptor handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.valid())
        fsync(handle.get());
}

} // namespace

Status systemError(std::string_view nativePath) {
    const int number = errno;
    std::array<char, 256> buffer{};
    // GNU's strerror_r, which returns the text.
    const char* reason = strerror_r(number, buffer.data(), buffer.size());
    return {number, std::string(nativePath) + ": " + reason};
}

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

bool readAll(int handle, std::size_t expected, std::string& content) {
    constexpr std::size_t minimumRoom = 4096;
    content.clear();
    for (std::size_t used = 0;;) {
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
}

FileKind fileKind(std::string_view path) {
    if (namesNothing(path))
        return FileKind::missing;
    struct stat info {};
    if (stat(toNativePath(path).c_str(), &info) != 0)
        return FileKind::missing;
    return kindOfMode(info.st_mode);
}

bool fileExists(std::string_view path) { return fileKind(path) == FileKind::file; }

bool directoryExists(std::string_view path) { return fileKind(path) == FileKind::directory; }

Status createDirectory(std::string_view path) {
    const std::string native = toNativePath(path);
    if (mkdir(native.c_str(), 0777) != 0)
        return systemError(native);
    return {};
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
        return readAll(file.get(), static_cast<std::size_t>(info.st_size), content)
                   ? Status{}
                   : systemError(native);
    return systemError(native);
}

Status replaceFile(std::string_view path, std::string_view content) {
    const std::string native = linkTarget(toNativePath(path));
    TemporaryFile file(native);
    if (!file.valid() || !file.write(content, native) || !file.renameTo(native))
        return systemError(native);
    syncDirectoryOf(native);
    return {};
}

Status appendToFile(std::string_view path, std::string_view content) {
    const std::string native = toNativePath(path);
    constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC;
    const FileDescriptor file(open(native.c_str(), flags, 0666));
    if (!file.valid() || !writeAll(file.get(), content))
        return systemError(native);
    return {};
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
