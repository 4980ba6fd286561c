// The seam between the file engine and the medium: everything the engine asks of the operating
// system.
//
// The real one is PosixFileSystem; tests put one in its place that stops, tears or loses writes at
// will. All calls either do what they say or throw jet::Error (PermissionDenied, ReadOnly,
// DiskFull, Io, ...). A file's locks belong to the open file, not to the process: they end with it,
// however the process ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>

#include "jet/disk/page.h"

namespace stelvan::jet {

struct FileStatus {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  // nanoseconds
    std::int64_t changed = 0;   // nanoseconds; moves even where `modified` was set back
    std::int64_t asked =
        0;  // of an open file: just before this was read, by the clock of `changed`
    std::uint64_t names = 0;  // folder entries that lead to the file; 0 once it is deleted
    bool regular = false;
    bool folder = false;
    bool writeBits = false;  // anybody at all may write, by the mode
    std::uint32_t permissions = 0;
    std::uint32_t group = 0;  // the group that the middle three bits of them speak of
};

enum class LockMode { Shared, Exclusive };

/// A run of bytes of a file, for locking; may lie beyond its end.
struct ByteRange {
    std::uint64_t first = 0;
    std::uint64_t length = 1;
};

class OpenFile {
public:
    virtual ~OpenFile() = default;

    [[nodiscard]] virtual FileStatus status() = 0;

    /// Fills `into` from `offset`; returns how many bytes there were (fewer only at the end of the
    /// file).
    virtual std::size_t readAt(std::uint64_t offset, std::span<std::uint8_t> into) = 0;

    /// Reads successive pages into separate places; returns how many whole pages there were.
    virtual std::size_t readPages(PageNumber first, std::span<std::uint8_t* const> into);

    virtual void writeAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;

    /// Writes successive pages from separate places.
    virtual void writePages(PageNumber first, std::span<const std::uint8_t* const> pages);

    virtual void resize(std::uint64_t size) = 0;

    /// Returns when content and size are on the medium.
    virtual void sync() = 0;

    /// False where another open file holds a conflicting lock on a byte of the range. Replaces the
    /// lock that this file holds there.
    [[nodiscard]] virtual bool tryLock(ByteRange range, LockMode mode) = 0;
    virtual void unlock(ByteRange range) noexcept = 0;
    /// Does another open file hold a lock in the range that would keep one of this mode out?
    [[nodiscard]] virtual bool lockedElsewhere(ByteRange range, LockMode mode) = 0;
};

class FileSystem {
public:
    enum class Mode { Read, ReadWrite, Create, CreateNew };

    virtual ~FileSystem() = default;

    /// Nothing where there is no such file.
    [[nodiscard]] virtual std::optional<FileStatus> status(const std::filesystem::path& path) = 0;
    /// With Create, a new file gets these permissions, or the usual ones for 0. Throws
    /// FileNotFound, BadPath, PermissionDenied, ReadOnly, DiskFull, Io.
    [[nodiscard]] virtual std::unique_ptr<OpenFile> open(const std::filesystem::path& path,
                                                         Mode mode,
                                                         std::uint32_t permissions = 0) = 0;
    /// Gives a file another name in the same folder; throws BadPath where that name is taken.
    virtual void rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// The same where a file may bear that name: it is replaced in one step.
    virtual void replace(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// Removing what is not there is no error.
    virtual void remove(const std::filesystem::path& path) = 0;
    /// Returns when the entries of the folder (files created, removed) are on the medium.
    virtual void syncFolder(const std::filesystem::path& folder) = 0;
    /// May files be created in the folder?
    [[nodiscard]] virtual bool canCreateIn(const std::filesystem::path& folder) = 0;

    /// The operating system's own.
    static FileSystem& posix();
    /// The one used where none is named: posix(), unless a FileSystemOverride lives.
    static FileSystem& standard();
};

/// Lets everything that opens files use `files` while it lives: the way in for tests.
class FileSystemOverride {
public:
    explicit FileSystemOverride(FileSystem& files);
    ~FileSystemOverride();
    FileSystemOverride(const FileSystemOverride&) = delete;
    FileSystemOverride& operator=(const FileSystemOverride&) = delete;

private:
    FileSystem* previous_;
};

/// The folder that holds `path`: "." for a bare name.
[[nodiscard]] std::filesystem::path folderOf(const std::filesystem::path& path);

}  // namespace stelvan::jet
