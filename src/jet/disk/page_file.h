// The pages of one database file: reading them, changing them in a unit of work, and the locks
// around both.
//
// One PageFile serves every handle that this process has on one file (same device and inode), so
// that a unit of work is seen by all of them and by nobody else until it commits.
//
// Invariants:
//   1. A page is read only inside a ReadScope or a WriteScope. Inside a scope the file does not
//      change under the reader (shared lock); what was cached before is dropped when it has.
//   2. A page is changed only inside a WriteScope, on a copy in memory; commit alone touches the
//      file.
//   3. Commit writes all changed pages or none, whatever interrupts it: the old pages stand in a
//      journal beside the file until the new ones are synced (journal.h).
//   4. The journal of an unfinished commit, found at the start of any scope, is rolled back first.
//   5. Write scopes nest. The outermost one is the unit of work: it alone writes, and once an inner
//      one has ended without commit it can only be undone.
//   6. When a unit does not reach the file, its pages are as before first; then what was kept by
//      onRollback() runs, the last first.
// Nothing here knows rows or tables; which page is free is the business of the global usage map.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "jet/disk/page.h"

namespace stelvan::jet {

class FileSystem;  // file_system.h: the seam at which tests make the medium fail

class PageFile : public std::enable_shared_from_this<PageFile> {
public:
    /// The shared page file of `path`. Throws FileNotFound, BadPath, PermissionDenied, Locked, Io.
    /// Does not look at the content beyond the size; recognition is header.h.
    static std::shared_ptr<PageFile> open(const std::filesystem::path& path, Access access);
    static std::shared_ptr<PageFile> open(const std::filesystem::path& path, Access access,
                                          FileSystem& files);

    /// Creates `path` (which must not exist) holding `pages` (a whole number of pages), synced,
    /// folder too.
    static void create(const std::filesystem::path& path, std::span<const std::uint8_t> pages);

    virtual ~PageFile() = default;

    /// Absolute, symbolic links of the file itself followed.
    [[nodiscard]] virtual const std::filesystem::path& path() const = 0;
    /// ReadWrite where one of the handles asked for it and the file and its folder let it be
    /// written.
    [[nodiscard]] virtual Access access() const = 0;

    /// Bytes in the file; a damaged one may end within a page. Inside a scope.
    [[nodiscard]] virtual std::uint64_t byteSize() const = 0;

    /// Whole pages in the file, including pages appended in the open unit of work. Inside a scope.
    [[nodiscard]] virtual PageNumber pageCount() const = 0;

    /// The present bytes of a page: the unit of work's copy where there is one. The span stays
    /// valid, and its bytes unchanged but for edits of the same page, until the outermost scope
    /// ends (scans release earlier, see release()). Throws Corrupt (with the page) for a page
    /// beyond the end, and Io.
    [[nodiscard]] virtual PageBytes read(PageNumber page) = 0;

    /// Lets the cache reuse the memory of pages read so far in this scope that nobody changed;
    /// spans handed out before become invalid. Long scans call it now and then so that memory stays
    /// bounded.
    virtual void release() = 0;

    /// The bytes of a page for changing. Needs a WriteScope (Misuse otherwise). Valid until the
    /// scope ends.
    [[nodiscard]] virtual WritablePageBytes edit(PageNumber page) = 0;

    /// Appends a zeroed page and returns its number. Needs a WriteScope.
    virtual PageNumber append() = 0;

    /// A number that changes whenever another process has changed the file, and when a unit of work
    /// that had changed pages was rolled back. Inside a scope. Callers keep decoded definitions as
    /// long as it stays the same.
    [[nodiscard]] virtual std::uint64_t version() const = 0;

    /// A number for what the file holds now: no other content, of this or another file, has had it
    /// in this process. Never twice the same while a unit of work is open. Inside a scope.
    [[nodiscard]] std::uint64_t moment() const { return inUnit() ? nextMoment() : moment_; }

    /// How often it was seen that another process had changed the file: units of work of this
    /// process do not count. Inside a scope.
    [[nodiscard]] std::uint64_t changesByOthers() const { return byOthers_; }

    /// Is a unit of work open?
    [[nodiscard]] bool inUnit() const { return writers_ > 0; }

    /// Keeps what is to be taken back in memory when the open unit of work does not reach the file;
    /// forgets it where none is open. `undo` must not throw, and may be run while scopes end.
    void onRollback(std::function<void()> undo);

protected:
    PageFile() = default;
    /// The content is another one.
    void noteChange() { moment_ = nextMoment(); }
    void noteChangeByOthers() { ++byOthers_; }
    friend class ReadScope;
    friend class WriteScope;
    virtual void beginRead() = 0;
    virtual void endRead() = 0;

    /// A unit of work, for those who store pages: begun, then written or undone, then ended. A unit
    /// that could not be written is undone.
    virtual void beginUnit() = 0;
    virtual void writeUnit() = 0;
    virtual void undoUnit() noexcept = 0;
    virtual void endUnit() noexcept = 0;

private:
    void beginWrite();
    void commitWrite();
    void rollBackWrite() noexcept;
    [[nodiscard]] static std::uint64_t nextMoment();

    int writers_ = 0;      // open write scopes, each in the one before
    bool doomed_ = false;  // an inner one ended without commit
    std::vector<std::function<void()>> undo_;
    std::uint64_t moment_ = nextMoment();
    std::uint64_t byOthers_ = 0;
};

/// Holds the shared lock while it lives; nests.
class ReadScope {
public:
    explicit ReadScope(std::shared_ptr<PageFile> file) : file_(std::move(file)) {
        file_->beginRead();
    }
    ~ReadScope() { file_->endRead(); }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

private:
    std::shared_ptr<PageFile> file_;
};

/// One unit of work. Nests: an inner scope joins the outer one, its commit only counts; the
/// outermost commit writes. Ending without commit rolls back; an inner scope that ends without
/// commit dooms the outer one, whose commit then throws Misuse after rolling back.
class WriteScope {
public:
    /// Throws Locked (after a brief wait), ReadOnly, PermissionDenied, Io.
    explicit WriteScope(std::shared_ptr<PageFile> file) : file_(std::move(file)) {
        file_->beginWrite();
    }
    ~WriteScope() {
        if (file_ != nullptr) file_->rollBackWrite();
    }
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

    /// Throws DiskFull, ReadOnly, Locked, Io; the file is then as before the unit of work, or,
    /// where the medium has broken for good, will be as before or as after when it is next opened.
    void commit() {
        const std::shared_ptr<PageFile> file = std::move(file_);
        file_ = nullptr;
        file->commitWrite();
    }

private:
    std::shared_ptr<PageFile> file_;
};

}  // namespace stelvan::jet
