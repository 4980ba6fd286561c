// How a unit of work reaches the file: all of it or nothing, whatever interrupts.
//
//   1. the old pages go to the journal, synced; where it is new, its folder too
//   2. the commit slot on page 0 becomes 0 ("being written"), the new pages are written, all is
//   synced; the journal notes it
//   3. the commit slot becomes its old value + 1, synced: from here on the unit is done
//   4. the journal notes that, and stays for the next unit
// Three syncs of data alone. A fault before 3 is through puts the old pages back; where even that
// fails, the journal stays as it is for the next one who opens the file. Between 2 and 3 a program
// that dies has as good as done it: whoever comes next sets the slot. The notes are not synced:
// they matter when a program dies and its journal stays while others, who know nothing of it,
// change the file. The caller holds the exclusive lock throughout.
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
    /// Does that journal tell of a unit that must be undone or completed? If not, and nobody keeps
    /// it, it is removed where that is possible. A shared lock is enough.
    [[nodiscard]] bool mustSettle();
    /// Puts the old pages back, or sets the commit slot. Throws DiskFull, ReadOnly, Io; can be
    /// repeated.
    void settle();

    /// Is there a journal that stays between units?
    [[nodiscard]] bool keepsJournal() const { return journal_.open(); }
    /// Gives it up. Needs the writers' turn.
    void leave() { journal_.leave(); }

private:
    /// What a journal that is found asks for.
    enum class Duty { None, PutBack, Complete };

    [[nodiscard]] CommitSlots storedSlots();
    void writeSlot(std::uint16_t value);
    void syncSlot(std::uint16_t value);
    void writePages(std::span<PageCache::Frame* const> changed);
    void undo(std::span<const Journal::Image> images, const Journal::Facts& facts);
    void dropJournal();
    void finishJournal();
    [[nodiscard]] Duty dutyOf(const Journal::Saved& saved);
    [[nodiscard]] bool slotsFit(const Journal::Saved& saved);
    [[nodiscard]] bool pagesFit(const Journal::Saved& saved);
    void putBack(const Journal::Saved& saved);

    OpenFile& file_;
    FileSystem& files_;
    Journal journal_;
    std::filesystem::path folder_;
    bool settled_ = true;
};

}  // namespace stelvan::jet
