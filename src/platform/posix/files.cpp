// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "platform/files.h"

#include "platform/posix/file_descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace ov::platform {

namespace {

FileKind kindOfMode(mode_t mode) noexcept {
    if (S_ISREG(mode))
        return FileKind::file;
    return S_ISDIR(mode) ? FileKind::directory : FileKind::other;
}

// False with errno set.
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

// Where a link leads to, also when nothing is there yet; the path itself when it is no link.
std::string linkTarget(std::string native) {
    constexpr int longestChain = 40;
    std::error_code error;
    for (int i = 0; i < longestChain; ++i) {
        const auto target = std::filesystem::read_symlink(native, error);
        if (error)
            break;
        native = std::filesystem::path(native).parent_path() / target;
    }
    return native;
}

// A rename asks for rights on the directory only and would also take the place of a device.
bool mayBeReplaced(const std::string& native, mode_t mode) {
    if (S_ISREG(mode))
        return faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) == 0;
    errno = S_ISDIR(mode) ? EISDIR : EINVAL;
    return false;
}

// The temporary file beside a file that is being replaced; removed unless it was renamed. False
// comes with errno set.
class TemporaryFile {
public:
    // Not mkostemp(): only open() applies the user's mask to `mode`.
    TemporaryFile(const std::string& target, mode_t mode) {
        const std::string prefix = target + "." + std::to_string(getpid()) + ".";
        constexpr int leftovers = 1000; // of crashed processes with the same number
        for (int i = 0; i < leftovers && !file_.valid() && (i == 0 || errno == EEXIST); ++i) {
            name_ = prefix + std::to_string(i);
            file_ =
                FileDescriptor(open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        }
    }
    ~TemporaryFile() {
        if (file_.valid() && !renamed_)
            unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool valid() const noexcept { return file_.valid(); }

    // The owner can be kept by root only, the group by its members; the mode by everyone.
    bool takeRightsOf(const struct stat& old) {
        if (fchown(file_.get(), old.st_uid, old.st_gid) != 0)
            static_cast<void>(!fchown(file_.get(), static_cast<uid_t>(-1), old.st_gid));
        return fchmod(file_.get(), old.st_mode & 07777U) == 0;
    }

    bool write(std::string_view content) {
        return writeAll(file_.get(), content) && fsync(file_.get()) == 0;
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

FileKind fileKind(std::string_view path) {
    struct stat info {};
    if (stat(toNativePath(path).c_str(), &info) != 0)
        return FileKind::missing;
    return kindOfMode(info.st_mode);
}

bool fileExists(std::string_view path) {
    return fileKind(path) == FileKind::file;
}

bool directoryExists(std::string_view path) {
    return fileKind(path) == FileKind::directory;
}

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
        return readAll(file.get(), static_cast<std::size_t>(info.st_size), limit, content)
                   ? Status{}
                   : systemError(native);
    return systemError(native);
}

Status replaceFile(std::string_view path, std::string_view content) {
    const std::string native = linkTarget(toNativePath(path));
    struct stat old {};
    const bool exists = stat(native.c_str(), &old) == 0;
    if (exists ? !mayBeReplaced(native, old.st_mode) : errno != ENOENT)
        return systemError(native);
    TemporaryFile file(native, exists ? 0600 : 0666);
    if (!file.valid() || (exists && !file.takeRightsOf(old)) || !file.write(content) ||
        !file.renameTo(native))
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
