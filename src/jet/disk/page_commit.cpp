#include "jet/disk/page_commit.h"

#include <algorithm>
#include <array>
#include <string>

#include "jet/disk/bytes.h"
#include "jet/disk/commit_slots.h"
#include "jet/disk/page.h"

namespace stelvan::jet {

CommitSlots PageCommit::storedSlots() {
    CommitSlots slots{};
    (void)file_.readAt(commit_slots::kOffset, slots);
    return slots;
}

void PageCommit::writeSlot(std::uint16_t value) {
    std::array<std::uint8_t, sizeof value> bytes{};
    putU16(bytes, 0, value);
    file_.writeAt(commit_slots::kOffset, bytes);
}

void PageCommit::syncSlot(std::uint16_t value) {
    writeSlot(value);
    file_.sync();
}

void PageCommit::write(std::span<PageCache::Frame* const> changed, const Journal::Facts& facts) {
    std::vector<Journal::Image> images;
    for (const PageCache::Frame* frame : changed)
        if (!frame->added)
            images.push_back({frame->page, frame->before->data(), frame->bytes.data()});
    settled_ = true;
    try {
        journal_.write(facts, images, file_.status().permissions);
    } catch (...) {
        dropJournal();
        throw;
    }
    try {
        writeSlot(0);
        writePages(changed);
        file_.sync();
        journal_.note(Journal::Stage::PagesWritten);
        syncSlot(facts.slotAfter);
    } catch (const Error& fault) {
        undo(images, facts);
        if (settled_) throw;
        throw Error(fault.kind(),
                    std::string(fault.what()) +
                        " The change is undone, or completed if it was as good as done, when "
                        "the file is next opened.");
    } catch (...) {
        undo(images, facts);
        throw;
    }
    finishJournal();
}

void PageCommit::finishJournal() {
    try {
        journal_.note(Journal::Stage::Finished);
        if (journal_.mayBeKept(file_.status())) return;
    } catch (const Error&) {
        // It cannot be kept then; without its note the commit slot tells.
    }
    dropJournal();
}

void PageCommit::dropJournal() {
    try {
        journal_.remove();
    } catch (const Error&) {
        // It stays, and says nothing: it is torn, or the commit slot tells that it is done with.
    }
}

void PageCommit::writePages(std::span<PageCache::Frame* const> changed) {
    std::vector<const std::uint8_t*> run;
    PageNumber first = 0;
    for (const PageCache::Frame* frame : changed) {
        if (!run.empty() && frame->page != first + run.size()) {
            file_.writePages(first, run);
            run.clear();
        }
        if (run.empty()) first = frame->page;
        run.push_back(frame->bytes.data());
    }
    if (!run.empty()) file_.writePages(first, run);
}

void PageCommit::undo(std::span<const Journal::Image> images, const Journal::Facts& facts) {
    try {
        // First it must not count as good as done; nor, while the slot holds the value after, as
        // done.
        journal_.noteForSure(Journal::Stage::Pending);
        syncSlot(0);
        for (const Journal::Image& image : images)
            file_.writePages(image.page, std::span(&image.bytes, 1));
        file_.resize(facts.sizeBefore);
        syncSlot(facts.slotBefore());
        journal_.remove();
        files_.syncFolder(folder_);
    } catch (const Error&) {
        settled_ = false;
        // The journal still holds everything; the fault that brought us here is the one to report.
    }
}

bool PageCommit::slotsFit(const Journal::Saved& saved) {
    const CommitSlots now = storedSlots();
    const CommitSlots& before = saved.facts().slotsBefore;
    // Any other value of our own than these two: the commit was completed, or the file has lived
    // on without us.
    const bool pending = saved.stage() == Journal::Stage::Pending;
    const bool ownFits = ownSlot(now) == 0 || (pending && ownSlot(now) == ownSlot(before));
    return ownFits && std::equal(now.begin() + sizeof(std::uint16_t), now.end(),
                                 before.begin() + sizeof(std::uint16_t));
}

// Each byte is the old or the new one; where all pages were written, the new one. Our own slot goes
// its own way.
bool PageCommit::pagesFit(const Journal::Saved& saved) {
    std::array<std::uint8_t, kPageSize> before{};
    std::array<std::uint8_t, kPageSize> after{};
    std::array<std::uint8_t, kPageSize> now{};
    for (std::size_t i = 0; i < saved.evidence(); ++i) {
        const PageNumber page = saved.pages()[i];
        saved.after(i, after);
        saved.image(i, before);
        if (saved.stage() == Journal::Stage::PagesWritten) before = after;
        if (file_.readAt(std::uint64_t{page} * kPageSize, now) < kPageSize) return false;
        if (page == 0) setCommitSlot(now, commitSlot(after));
        for (std::size_t at = 0; at < kPageSize; ++at)
            if (now[at] != before[at] && now[at] != after[at]) return false;
    }
    return true;
}

PageCommit::Duty PageCommit::dutyOf(const Journal::Saved& saved) {
    const bool finished = saved.stage() == Journal::Stage::Finished;
    if (finished || !slotsFit(saved) || !pagesFit(saved)) return Duty::None;
    return saved.stage() == Journal::Stage::Pending ? Duty::PutBack : Duty::Complete;
}

bool PageCommit::mustSettle() {
    if (journal_.finished() && journal_.kept()) return false;
    {
        const auto saved = journal_.read();
        if (saved.has_value() && dutyOf(*saved) != Duty::None) return true;
    }
    dropJournal();
    return false;
}

void PageCommit::settle() {
    {
        const auto saved = journal_.read();
        const Duty duty = saved.has_value() ? dutyOf(*saved) : Duty::None;
        if (duty == Duty::None) return;
        if (duty == Duty::Complete) {
            syncSlot(saved->facts().slotAfter);
        } else {
            putBack(*saved);
        }
    }
    journal_.remove();
    files_.syncFolder(folder_);
}

void PageCommit::putBack(const Journal::Saved& saved) {
    std::array<std::uint8_t, kPageSize> page{};
    const std::uint8_t* bytes = page.data();
    for (std::size_t i = 0; i < saved.pages().size(); ++i) {
        saved.image(i, page);
        file_.writePages(saved.pages()[i], std::span(&bytes, 1));
    }
    file_.resize(saved.facts().sizeBefore);
    syncSlot(saved.facts().slotBefore());
}

}  // namespace stelvan::jet
