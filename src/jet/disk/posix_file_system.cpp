// The operating system's files: positioned reads and writes, data syncs, open-file-description
// locks.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <string>
#include <system_error>
#include <utility>

#include "jet/disk/error.h"
#include "jet/disk/file_system.h"
#include "jet/disk/page.h"

namespace stelvan::jet {

namespace {

namespace fs = std::filesystem;

ErrorKind kindOf(int number) {
    switch (number) {
        case ENOENT:
            return ErrorKind::FileNotFound;
        case ENOTDIR:
        case EISDIR:
        case EEXIST:
        case ENAMETOOLONG:
        case ELOOP:
            return ErrorKind::BadPath;
        case EACCES:
        case EPERM:
            return ErrorKind::PermissionDenied;
        case EROFS:
        case ETXTBSY:
            return ErrorKind::ReadOnly;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return ErrorKind::DiskFull;
        default:
            return ErrorKind::Io;
    }
}

[[noreturn]] void fail(const fs::path& path, const std::string& what, int number = errno) {
    throw Error(kindOf(number), "'" + path.string() + "' could not be " + what + ": " +
                                    std::system_category().message(number) + ".")
        .about(path.string());
}

constexpr std::int64_t nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

/// The time as the system writes it into files: it stands still for some milliseconds, then leaps.
std::int64_t fileClock() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return nanoseconds(now);
}

FileStatus toStatus(const struct stat& raw) {
    FileStatus status;
    status.device = raw.st_dev;
    status.inode = raw.st_ino;
    status.size = static_cast<std::uint64_t>(raw.st_size);
    status.modified = nanoseconds(raw.st_mtim);
    status.changed = nanoseconds(raw.st_ctim);
    status.names = raw.st_nlink;
    status.regular = S_ISREG(raw.st_mode);
    status.folder = S_ISDIR(raw.st_mode);
    status.writeBits = (raw.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
    status.permissions = raw.st_mode & 0777;
    status.group = raw.st_gid;
    return status;
}

constexpr short lockType(LockMode mode) {
    return mode == LockMode::Shared ? F_RDLCK : F_WRLCK;
}

struct flock lockRequest(short type, ByteRange range) {
    struct flock request {};
    request.l_type = type;
    request.l_whence = SEEK_SET;
    request.l_start = static_cast<off_t>(range.first);
    request.l_len = static_cast<off_t>(range.length);
    return request;
}

/// Runs a call again while a signal interrupts it.
template <typename Call>
auto uninterrupted(Call&& call) {
    while (true) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) return result;
    }
}

class PosixFile final : public OpenFile {
public:
    PosixFile(int descriptor, fs::path path) : descriptor_(descriptor), path_(std::move(path)) {}
    ~PosixFile() override { ::close(descriptor_); }
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    FileStatus status() override {
        const std::int64_t asked = fileClock();
        struct stat raw {};
        if (::fstat(descriptor_, &raw) != 0) fail(path_, "examined");
        FileStatus status = toStatus(raw);
        status.asked = asked;
        return status;
    }

    std::size_t readAt(std::uint64_t offset, std::span<std::uint8_t> into) override {
        std::size_t done = 0;
        while (done < into.size()) {
            const ssize_t got = uninterrupted([&] {
                return ::pread(descriptor_, into.data() + done, into.size() - done,
                               static_cast<off_t>(offset + done));
            });
            if (got < 0) fail(path_, "read");
            if (got == 0) break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

    std::size_t readPages(PageNumber first, std::span<std::uint8_t* const> into) override {
        std::array<iovec, kBatch> parts{};
        const std::size_t count = std::min(into.size(), parts.size());
        for (std::size_t i = 0; i < count; ++i) parts[i] = {into[i], kPageSize};
        const off_t offset = static_cast<off_t>(first) * static_cast<off_t>(kPageSize);
        const ssize_t got = uninterrupted(
            [&] { return ::preadv(descriptor_, parts.data(), static_cast<int>(count), offset); });
        if (got == static_cast<ssize_t>(count * kPageSize) && count == into.size()) return count;
        return OpenFile::readPages(first, into);  // a short read, or many pages: one by one
    }

    void writeAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t put = uninterrupted([&] {
                return ::pwrite(descriptor_, bytes.data() + done, bytes.size() - done,
                                static_cast<off_t>(offset + done));
            });
            if (put < 0) fail(path_, "written");
            if (put == 0) fail(path_, "written", ENOSPC);
            done += static_cast<std::size_t>(put);
        }
    }

    void writePages(PageNumber first, std::span<const std::uint8_t* const> pages) override {
        std::array<iovec, kBatch> parts{};
        while (!pages.empty()) {
            const std::size_t count = std::min(pages.size(), parts.size());
            // iovec serves reading as well and so takes no pointer to const; pwritev only reads.
            for (std::size_t i = 0; i < count; ++i)
                parts[i] = {const_cast<std::uint8_t*>(pages[i]), kPageSize};
            const off_t offset = static_cast<off_t>(first) * static_cast<off_t>(kPageSize);
            const ssize_t put = uninterrupted([&] {
                return ::pwritev(descriptor_, parts.data(), static_cast<int>(count), offset);
            });
            // A short write or an error: page by page, which goes on or names the reason.
            if (put != static_cast<ssize_t>(count * kPageSize))
                OpenFile::writePages(first, pages.first(count));
            first += static_cast<PageNumber>(count);
            pages = pages.subspan(count);
        }
    }

    void resize(std::uint64_t size) override {
        if (uninterrupted([&] { return ::ftruncate(descriptor_, static_cast<off_t>(size)); }) != 0)
            fail(path_, "resized");
    }

    void sync() override {
        if (uninterrupted([&] { return ::fdatasync(descriptor_); }) != 0) fail(path_, "synced");
    }

    bool tryLock(ByteRange range, LockMode mode) override {
        struct flock request = lockRequest(lockType(mode), range);
        if (uninterrupted([&] { return ::fcntl(descriptor_, F_OFD_SETLK, &request); }) == 0)
            return true;
        if (errno == EAGAIN || errno == EACCES) return false;
        fail(path_, "locked");
    }

    void unlock(ByteRange range) noexcept override {
        struct flock request = lockRequest(F_UNLCK, range);
        uninterrupted([&] { return ::fcntl(descriptor_, F_OFD_SETLK, &request); });
    }

    bool lockedElsewhere(ByteRange range, LockMode mode) override {
        struct flock request = lockRequest(lockType(mode), range);
        if (uninterrupted([&] { return ::fcntl(descriptor_, F_OFD_GETLK, &request); }) != 0)
            fail(path_, "examined for locks");
        return request.l_type != F_UNLCK;
    }

private:
    static constexpr std::size_t kBatch = 64;

    int descriptor_;
    fs::path path_;
};

class PosixFileSystem final : public FileSystem {
public:
    std::optional<FileStatus> status(const fs::path& path) override {
        struct stat raw {};
        if (::stat(path.c_str(), &raw) == 0) return toStatus(raw);
        if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
        fail(path, "examined");
    }

    std::unique_ptr<OpenFile> open(const fs::path& path, Mode mode,
                                   std::uint32_t permissions) override {
        // Not blocking, so that a pipe under the name cannot hang the program.
        constexpr int common = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
        constexpr mode_t kUsual = 0666;
        int flags = common;
        switch (mode) {
            case Mode::Read:
                flags |= O_RDONLY;
                break;
            case Mode::ReadWrite:
                flags |= O_RDWR;
                break;
            case Mode::Create:
                flags |= O_RDWR | O_CREAT;
                break;
            case Mode::CreateNew:
                flags |= O_RDWR | O_CREAT | O_EXCL;
                break;
        }
        const mode_t bits = permissions != 0 ? permissions : kUsual;
        const int descriptor = uninterrupted([&] { return ::open(path.c_str(), flags, bits); });
        if (descriptor < 0) fail(path, (flags & O_CREAT) != 0 ? "created" : "opened");
        auto file = std::make_unique<PosixFile>(descriptor, path);
        // Exactly these, whatever the user's mask: others must be able to read what is kept for
        // them. On a file of somebody else this is refused, and not needed.
        if (permissions != 0 && ::fchmod(descriptor, bits) != 0 && errno != EPERM)
            fail(path, "prepared");
        return file;
    }

    void rename(const fs::path& from, const fs::path& to) override {
        if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
            return;
        // Some media know only the rename that replaces.
        if (errno == EINVAL && !status(to).has_value() && ::rename(from.c_str(), to.c_str()) == 0)
            return;
        fail(to, "created");
    }

    void replace(const fs::path& from, const fs::path& to) override {
        if (::rename(from.c_str(), to.c_str()) != 0) fail(to, "replaced");
    }

    void remove(const fs::path& path) override {
        if (::unlink(path.c_str()) != 0 && errno != ENOENT) fail(path, "removed");
    }

    void syncFolder(const fs::path& folder) override {
        const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (descriptor < 0) fail(folder, "opened");
        const int result = uninterrupted([&] { return ::fsync(descriptor); });
        const int number = errno;
        ::close(descriptor);
        // Some network folders cannot be synced at all and say so; their server keeps the order.
        if (result != 0 && number != EINVAL) fail(folder, "synced", number);
    }

    bool canCreateIn(const fs::path& folder) override {
        struct stat raw {};
        if (::stat(folder.c_str(), &raw) != 0) return false;
        // The superuser may write everywhere; a folder that nobody may write to is still meant to
        // stay so.
        return toStatus(raw).writeBits && ::access(folder.c_str(), W_OK | X_OK) == 0;
    }
};

}  // namespace

FileSystem& FileSystem::posix() {
    static PosixFileSystem files;
    return files;
}

}  // namespace stelvan::jet
