// The rollback journal: the pages that a commit is about to overwrite, kept beside the database
// until it is done.
//
// It is written and synced (its folder too, once) before the first byte of the database changes. It
// then stays beside the file while the process has that open: the next commit writes over it from
// its start, and since its length stays, a sync has nothing but data to write. Its first bytes say
// how far its commit has got; only the first stage is synced, a later one that is lost is made up
// for by what the database's commit slots say. So a journal that is found says what to put back,
// unless
//   - it says itself that its commit is finished, or
//   - it is torn (its checksum fails, as that of one half written over does): then the database was
//     not touched yet, or
//   - the database's commit slot holds the value after the commit: then the commit was complete, or
//   - another commit slot has changed: then another engine has written since, and the journal is
//     history, or
//   - a page of which it holds both states has a byte that is of neither: then it is another file,
//     or another state of it.
// Whoever keeps a journal holds a shared lock on its first byte, and removes it on leaving unless
// others do.
//
//   OFFSET  SIZE  MEANING
//        0     8  the stage: "STVJRNL1" pending, "STVJRNLW" pages written, "STVJRNLF" finished
//        8     8  checksum of all that follows
//       16     8  salt: two journals of the same pages differ
//       24     8  size of the database before the commit
//       32     4  number of pages n
//       36     2  the commit slot of the one who writes, after the commit
//       38     2  number of pages e whose new state is here, too
//       40   512  all commit slots before it
//      552   4*n  the numbers of the pages; zeros up to a whole page
//      ...        the pages as they were
//      ...        the first e of them as they will be
//      ...        what earlier commits have left
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

    /// How far the commit has got.
    enum class Stage {
        Pending,       // nothing is known of the database's pages
        PagesWritten,  // all new pages are on the medium; the commit slot perhaps not
        Finished       // so is the commit slot: the journal says nothing any more
    };

    /// What a commit changes besides pages.
    struct Facts {
        std::uint64_t sizeBefore = 0;
        CommitSlots slotsBefore{};
        std::uint16_t slotAfter = 0;  // of our slot, the first
        [[nodiscard]] std::uint16_t slotBefore() const { return ownSlot(slotsBefore); }
    };

    /// A page as it was and as it will be; the bytes must live until the end of the commit.
    struct Image {
        PageNumber page = 0;
        const std::uint8_t* bytes = nullptr;
        const std::uint8_t* after = nullptr;
    };

    /// What a journal holds; its images are read one by one.
    class Saved {
    public:
        [[nodiscard]] const Facts& facts() const { return facts_; }
        [[nodiscard]] Stage stage() const { return stage_; }
        [[nodiscard]] std::span<const PageNumber> pages() const { return pages_; }
        /// The old bytes of pages()[position].
        void image(std::size_t position, WritablePageBytes into) const;
        /// Of so many pages, the first, the new bytes are there, too.
        [[nodiscard]] std::size_t evidence() const { return evidence_; }
        void after(std::size_t position, WritablePageBytes into) const;

    private:
        friend class Journal;
        [[nodiscard]] bool sumIsRight(std::uint64_t expected,
                                      std::span<const std::uint8_t> head) const;
        void load(std::size_t place, WritablePageBytes into) const;

        std::unique_ptr<OpenFile> file_;
        Facts facts_;
        Stage stage_ = Stage::Pending;
        std::vector<PageNumber> pages_;
        std::size_t evidence_ = 0;
        std::size_t firstImage_ = 0;  // where the images begin, in pages of the journal
    };

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] bool present() const { return files_.status(path_).has_value(); }

    /// Pending from here on. When it returns, the journal will be there after a power failure.
    /// Throws DiskFull, Io, ...; what it leaves behind then counts as torn. Needs the exclusive
    /// lock on the database. The journal stays open.
    void write(const Facts& facts, std::span<const Image> images, std::uint32_t permissions);

    /// Notes how far the commit has got, in the journal that write() wrote; not synced.
    void note(Stage stage);
    /// The same, and waits for the medium.
    void noteForSure(Stage stage);

    /// Nothing where it is torn or gone.
    [[nodiscard]] std::optional<Saved> read() const;

    /// Is there one that says that its commit is finished?
    [[nodiscard]] bool finished() const;
    /// Does anybody, this process too, keep it for later commits?
    [[nodiscard]] bool kept() const;

    /// Is it open in this process?
    [[nodiscard]] bool open() const { return file_ != nullptr; }
    /// May it stay beside a database of this status between commits: is it not too long, and can
    /// whoever reads the database read it, too? Needs an open one.
    [[nodiscard]] bool mayBeKept(const FileStatus& database) const;
    /// Closes it, and removes it if its commit is finished and nobody else keeps it. Needs the
    /// writers' turn.
    void leave();

    /// Needs a lock on the database that keeps writers out.
    void remove();

private:
    void ensureOpen(std::uint32_t permissions);
    [[nodiscard]] bool isTheOneBeside() const;

    FileSystem& files_;
    std::filesystem::path path_;
    std::unique_ptr<OpenFile> file_;  // from the first commit on
    bool folderSynced_ = false;       // since it was opened
};

}  // namespace stelvan::jet
