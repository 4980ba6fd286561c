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
        if (!frame->added) images.push_back({frame->page, frame->before->data()});
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
        // The slot first: while it holds the value after, the journal would count as done.
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

bool PageCommit::unfinished(const Journal::Saved& saved) {
    const CommitSlots now = storedSlots();
    const CommitSlots& before = saved.facts().slotsBefore;
    // Any other value than these two: the commit was completed, or the file has lived on without
    // us.
    const bool ownFits = ownSlot(now) == 0 || ownSlot(now) == ownSlot(before);
    return ownFits && std::equal(now.begin() + sizeof(std::uint16_t), now.end(),
                                 before.begin() + sizeof(std::uint16_t));
}

bool PageCommit::mustPutBack() {
    {
        const auto saved = journal_.read();
        if (saved.has_value() && unfinished(*saved)) return true;
    }
    dropJournal();
    return false;
}

void PageCommit::putBack() {
    {
        const auto saved = journal_.read();
        if (!saved.has_value() || !unfinished(*saved)) return;
        std::array<std::uint8_t, kPageSize> page{};
        const std::uint8_t* bytes = page.data();
        for (std::size_t i = 0; i < saved->pages().size(); ++i) {
            saved->image(i, page);
            file_.writePages(saved->pages()[i], std::span(&bytes, 1));
        }
        file_.resize(saved->facts().sizeBefore);
        syncSlot(saved->facts().slotBefore());
    }
    journal_.remove();
    files_.syncFolder(folder_);
}

}  // namespace stelvan::jet
