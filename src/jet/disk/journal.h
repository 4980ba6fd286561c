// The rollback journal: the pages that a commit is about to overwrite, kept beside the database
// until it is done.
//
// It is written and synced (its folder too) before the first byte of the database changes, and
// removed after the last. So a journal that is found says what to put back, unless
//   - it is torn (its checksum fails): then the database was not touched yet, or
//   - the database's commit slot holds the value after the commit: then the commit was complete, or
//   - another commit slot has changed: then another engine has written since, and the journal is
//   history.
//
//   OFFSET  SIZE  MEANING
//        0     8  "STVJRNL1"
//        8     8  checksum of all that follows
//       16     8  salt: two journals of the same pages differ
//       24     8  size of the database before the commit
//       32     4  number of pages n
//       36     2  the commit slot of the one who writes, after the commit
//       40   512  all commit slots before it
//      552   4*n  the numbers of the pages; zeros up to a whole page
//      ...        the pages as they were
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "jet/disk/commit_slots.h"
#include "jet/disk/file_system.h"
#include "jet/disk/page.h"

namespace stelvan::jet {

class Journal {
public:
    /// The journal of the database at `database`: "gem.mdb-journal" for gem.mdb.
    Journal(FileSystem& files, const std::filesystem::path& database);

    /// What a commit changes besides pages.
    struct Facts {
        std::uint64_t sizeBefore = 0;
        CommitSlots slotsBefore{};
        std::uint16_t slotAfter = 0;  // of our slot, the first

        [[nodiscard]] std::uint16_t slotBefore() const { return ownSlot(slotsBefore); }
    };
    /// The bytes of a page before the commit.
    struct Image {
        PageNumber page = 0;
        const std::uint8_t* bytes = nullptr;
    };

    /// What a journal holds; its images are read one by one.
    class Saved {
    public:
        [[nodiscard]] const Facts& facts() const { return facts_; }
        [[nodiscard]] std::span<const PageNumber> pages() const { return pages_; }
        /// The old bytes of pages()[position].
        void image(std::size_t position, WritablePageBytes into) const;

    private:
        friend class Journal;
        std::unique_ptr<OpenFile> file_;
        Facts facts_;
        std::vector<PageNumber> pages_;
        PageNumber firstImage_ = 0;  // where the images begin, in pages of the journal
    };

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] bool present() const { return files_.status(path_).has_value(); }

    /// When it returns, the journal will be there after a power failure. Throws DiskFull, Io, ...;
    /// what it leaves behind then counts as torn.
    void write(const Facts& facts, std::span<const Image> images, std::uint32_t permissions);

    /// Nothing where it is torn or gone.
    [[nodiscard]] std::optional<Saved> read() const;

    void remove() { files_.remove(path_); }

private:
    FileSystem& files_;
    std::filesystem::path path_;
};

}  // namespace stelvan::jet
