// The page file that stands on a real file: scopes, cache, locks, and the commit that changes the
// file.
//
// Outermost scope: take the locks, roll back what a dead writer left, drop the cache if the file is
// not as it was when last seen. A unit of work collects changed pages in the cache; its commit
// writes them by way of a PageCommit. Everything is released when the last scope ends.
#pragma once

#include <memory>
#include <optional>

#include "jet/disk/commit_slots.h"
#include "jet/disk/file_locks.h"
#include "jet/disk/file_system.h"
#include "jet/disk/page.h"
#include "jet/disk/page_cache.h"
#include "jet/disk/page_commit.h"
#include "jet/disk/page_file.h"
#include "jet/disk/read_ahead.h"

namespace stelvan::jet {

class StoredPages final : public PageFile {
public:
    /// Opens `path`, whose status is this. Write access that is wanted and not to be had is no
    /// error here.
    StoredPages(FileSystem& files, std::filesystem::path path, const FileStatus& status,
                Access wanted);
    ~StoredPages() override;
    StoredPages(const StoredPages&) = delete;
    StoredPages& operator=(const StoredPages&) = delete;

    /// Another handle joins and wants this access; in force from the next outermost scope on.
    void want(Access access);

    [[nodiscard]] const std::filesystem::path& path() const override { return path_; }
    [[nodiscard]] Access access() const override;
    [[nodiscard]] std::uint64_t byteSize() const override { return size_; }
    [[nodiscard]] PageNumber pageCount() const override { return pages_; }
    [[nodiscard]] PageBytes read(PageNumber page) override {
        return PageBytes(frameOf(page).bytes);
    }
    void release() override { cache_.release(); }
    [[nodiscard]] WritablePageBytes edit(PageNumber page) override;
    PageNumber append() override;
    [[nodiscard]] std::uint64_t version() const override { return version_; }

protected:
    void beginRead() override;
    void endRead() override;
    void beginUnit() override;
    void writeUnit() override;
    void undoUnit() noexcept override;
    void endUnit() noexcept override;

private:
    /// What tells whether the file is as it was when last seen.
    struct Stamp {
        std::uint64_t size = 0;
        std::int64_t modified = 0;
        std::int64_t changed = 0;
        CommitSlots commitSlots{};
        /// Taken in the tick of the clock in which the file was changed: another change in the same
        /// tick would leave the dates as they are, so they prove nothing.
        bool young = false;
        friend bool operator==(const Stamp& a, const Stamp& b) {
            return a.size == b.size && a.modified == b.modified && a.changed == b.changed &&
                   a.commitSlots == b.commitSlots;
        }
    };

    [[nodiscard]] PageCache::Frame& frameOf(PageNumber page) {
        PageCache::Frame* frame = page < pages_ ? cache_.find(page) : nullptr;
        return frame != nullptr ? *frame : load(page);
    }
    PageCache::Frame& load(PageNumber page);
    [[noreturn]] void throwBeyondEnd(PageNumber page) const;

    void enter(bool withTurn);
    void settle(bool withTurn);
    void leave() noexcept;
    [[nodiscard]] Stamp currentStamp();
    void lookAfresh(bool withTurn);
    void requireWritable();
    void requireWhole() const;
    void writeChanges();

    FileSystem& files_;
    std::filesystem::path path_;
    std::unique_ptr<OpenFile> file_;
    std::optional<FileLocks> locks_;
    std::optional<PageCommit> commit_;
    PageCache cache_;
    bool wanted_ = false;     // some handle asked for write access
    bool writable_ = false;   // the file is open for writing
    bool unsettled_ = false;  // a failed commit could not put the old pages back
    int readers_ = 0;         // open read scopes
    Stamp stamp_;
    std::uint64_t size_ = 0;
    PageNumber pages_ = 0;
    ReadAhead readAhead_;
    std::uint64_t version_ = 1;
};

}  // namespace stelvan::jet
