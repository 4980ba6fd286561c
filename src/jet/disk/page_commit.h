// How a unit of work reaches the file: all of it or nothing, whatever interrupts.
//
//   1. the old pages go to the journal, synced, its folder too
//   2. the commit slot on page 0 becomes 0 ("being written"), the new pages are written, all is
//   synced
//   3. the commit slot becomes its old value + 1, synced: from here on the unit is done
//   4. the journal is removed
// A fault before 3 is through puts the old pages back; where even that fails, the journal stays for
// the next one who opens the file. The caller holds the exclusive lock throughout.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "jet/disk/commit_slots.h"
#include "jet/disk/file_system.h"
#include "jet/disk/journal.h"
#include "jet/disk/page_cache.h"

namespace stelvan::jet {

class PageCommit {
public:
    PageCommit(FileSystem& files, OpenFile& file, const std::filesystem::path& database)
        : file_(file), files_(files), journal_(files, database), folder_(folderOf(database)) {}

    /// Writes `changed` (ascending; a changed page 0 shows the commit slot as 0). Throws DiskFull,
    /// ReadOnly, Io; the file is then as before, or will be when it is next looked at (see
    /// leftOver()).
    void write(std::span<PageCache::Frame* const> changed, const Journal::Facts& facts);

    /// False after a failed write() that could not put the old pages back itself.
    [[nodiscard]] bool settled() const { return settled_; }

    /// Is there a journal beside the file that has to be looked at?
    [[nodiscard]] bool leftOver() const { return journal_.present(); }
    /// Does that journal hold pages that must be put back? If not, it is removed where that is
    /// possible. A shared lock is enough.
    [[nodiscard]] bool mustPutBack();
    /// Puts them back. Throws DiskFull, ReadOnly, Io; can be repeated.
    void putBack();

private:
    [[nodiscard]] CommitSlots storedSlots();
    void writeSlot(std::uint16_t value);
    void syncSlot(std::uint16_t value);
    void writePages(std::span<PageCache::Frame* const> changed);
    void undo(std::span<const Journal::Image> images, const Journal::Facts& facts);
    void dropJournal();
    [[nodiscard]] bool unfinished(const Journal::Saved& saved);

    OpenFile& file_;
    FileSystem& files_;
    Journal journal_;
    std::filesystem::path folder_;
    bool settled_ = true;
};

}  // namespace stelvan::jet
