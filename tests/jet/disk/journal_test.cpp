// The rollback journal: what is found beside a file and what is made of it.
#include "jet/disk/journal.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <string>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/commit_slots.h"
#include "jet/disk/page_file.h"
#include "jet/pages/header.h"
#include "tests/support/models.h"

namespace stelvan::jet {
namespace {

namespace fs = std::filesystem;

class JournalBeside : public ::testing::Test {
protected:
    static constexpr PageNumber kCount = 6;
    static constexpr std::uint16_t kSlotBefore = 0x0105;
    static constexpr std::uint16_t kSlotAfter = 0x0106;

    void SetUp() override {
        std::vector<std::uint8_t> bytes(kCount * kPageSize, 0xAA);
        putU16(bytes, commit_slots::kOffset, kSlotBefore);
        PageFile::create(path_, bytes);
        old_.fill(0x55);
        new_.fill(0xAA);
    }

    /// A journal as the commit of pages 2 and 3 of a file of five pages writes it: the file holds
    /// them as they are to be.
    void writeJournal() {
        const std::array<Journal::Image, 2> images{
            {{2, old_.data(), new_.data()}, {3, old_.data(), new_.data()}}};
        CommitSlots slots{};
        slots.fill(0xAA);
        putU16(slots, 0, kSlotBefore);
        journal_.write({5 * kPageSize, slots, kSlotAfter}, images, 0640);
    }

    void setSlot(std::uint16_t value, int user = 0) const {
        std::fstream file(path_, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(commit_slots::kOffset) + 2 * user);
        file.write(reinterpret_cast<const char*>(&value), sizeof value);
    }

    void damageJournal(std::uint64_t offset) const {
        std::fstream file(journal_.path(), std::ios::binary | std::ios::in | std::ios::out);
        file.seekg(static_cast<std::streamoff>(offset));
        const int byte = file.get();
        file.seekp(static_cast<std::streamoff>(offset));
        file.put(static_cast<char>(byte ^ 1));
    }

    void setByte(std::uint64_t at, int byte) const {
        std::fstream file(path_, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(at));
        file.put(static_cast<char>(byte));
    }
    std::uint16_t storedSlot() const {
        const std::string content = contentOf(path_);
        return u16At(Bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size()),
                     commit_slots::kOffset);
    }
    static std::string contentOf(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void write(const fs::path& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }

    /// The first bytes of pages 1, 2 and 3 as the next one who opens the file sees them.
    std::vector<int> opened() const {
        const auto file = PageFile::open(path_, Access::ReadOnly);
        const ReadScope scope(file);
        return {file->read(1)[0], file->read(2)[0], file->read(3)[0],
                static_cast<int>(file->pageCount())};
    }
    const std::vector<int> untouched_{0xAA, 0xAA, 0xAA, kCount};
    const std::vector<int> putBack_{0xAA, 0x55, 0x55, 5};

    test::ScratchDir scratch_;
    fs::path path_ = scratch_.path() / "gem.mdb";
    Journal journal_{FileSystem::posix(), path_};
    std::array<std::uint8_t, kPageSize> old_{};
    std::array<std::uint8_t, kPageSize> new_{};
    // A head of one page, two old pages, two new ones.
    static constexpr std::uint64_t kWritten = 5 * kPageSize;
};

TEST_F(JournalBeside, HoldsWhatWasWritten) {
    writeJournal();
    EXPECT_EQ(journal_.path().filename(), "gem.mdb-journal");
    const auto saved = journal_.read();
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->facts().sizeBefore, 5 * kPageSize);
    EXPECT_EQ(saved->facts().slotBefore(), kSlotBefore);
    EXPECT_EQ(saved->facts().slotAfter, kSlotAfter);
    ASSERT_EQ(saved->pages().size(), 2u);
    EXPECT_EQ(saved->pages()[1], 3u);
    std::array<std::uint8_t, kPageSize> page{};
    saved->image(1, page);
    EXPECT_EQ(page, old_);
    ASSERT_EQ(saved->evidence(), 2u);
    saved->after(1, page);
    EXPECT_EQ(page, new_);
    EXPECT_EQ(fs::status(journal_.path()).permissions(), fs::perms(0640));
}

TEST_F(JournalBeside, OfADeadWriterIsPutBackByWhoeverOpensTheFile) {
    writeJournal();
    setSlot(0);
    EXPECT_EQ(opened(), putBack_);
    EXPECT_FALSE(fs::exists(journal_.path()));
    const auto file = PageFile::open(path_, Access::ReadOnly);
    const ReadScope scope(file);
    EXPECT_EQ(commitSlot(file->read(0)), kSlotBefore);
}

TEST_F(JournalBeside, CountsEvenBeforeTheMarkReachedTheFile) {
    writeJournal();
    EXPECT_EQ(opened(), putBack_);
}

TEST_F(JournalBeside, OfACompletedCommitIsRemovedOnly) {
    writeJournal();
    setSlot(kSlotAfter);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_FALSE(fs::exists(journal_.path()));
}

TEST_F(JournalBeside, OfAFileThatHasLivedOnIsRemovedOnly) {
    writeJournal();
    setSlot(kSlotAfter + 20);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_FALSE(fs::exists(journal_.path()));
}

TEST_F(JournalBeside, OfAFileThatAnotherEngineHasWrittenSinceIsRemovedOnly) {
    for (const int user : {1, 17, 255}) {
        writeJournal();
        setSlot(0x0234, user);
        EXPECT_EQ(opened(), untouched_);
        EXPECT_FALSE(fs::exists(journal_.path()));
        setSlot(0xAAAA, user);
    }
    writeJournal();
    EXPECT_EQ(opened(), putBack_) << "all slots are as they were";
}

TEST_F(JournalBeside, IsTornWhereAnyByteIsWrong) {
    writeJournal();
    for (std::uint64_t offset = 0; offset < kWritten; offset += offset < 64 ? 1 : 509) {
        damageJournal(offset);
        EXPECT_FALSE(journal_.read().has_value()) << offset;
        damageJournal(offset);
    }
    EXPECT_TRUE(journal_.read().has_value());
}

TEST_F(JournalBeside, IsTornWhereItIsCut) {
    for (const std::uint64_t length : {std::uint64_t{0}, std::uint64_t{7}, std::uint64_t{40},
                                       kPageSize * 1ul, kWritten - kPageSize, kWritten - 1}) {
        writeJournal();
        fs::resize_file(journal_.path(), length);
        EXPECT_FALSE(journal_.read().has_value()) << length;
    }
    writeJournal();
    fs::resize_file(journal_.path(), kWritten);
    EXPECT_TRUE(journal_.read().has_value()) << "what follows is of no matter";
}

TEST_F(JournalBeside, WrittenOverAnotherIsTheNewOneOrTorn) {
    writeJournal();
    const std::string first = contentOf(journal_.path());
    old_.fill(0x66);
    writeJournal();
    const std::string second = contentOf(journal_.path());
    ASSERT_EQ(first.size(), second.size());
    const auto expectOneOrTorn = [&](const std::string& mixed) {
        write(journal_.path(), mixed);
        EXPECT_EQ(journal_.read().has_value(), mixed == first || mixed == second);
    };
    for (std::size_t reached = 512; reached < kWritten; reached += 512) {
        SCOPED_TRACE(reached);
        expectOneOrTorn(second.substr(0, reached) + first.substr(reached));
        expectOneOrTorn(first.substr(0, reached) + second.substr(reached));
    }
}

TEST_F(JournalBeside, ThatSaysItIsFinishedIsNeverPutBack) {
    for (const std::uint16_t slot : {std::uint16_t{0}, kSlotBefore, kSlotAfter}) {
        writeJournal();
        journal_.note(Journal::Stage::Finished);
        setSlot(slot);
        EXPECT_EQ(opened(), untouched_) << slot;
        EXPECT_EQ(storedSlot(), slot) << "and the slot is nobody's business";
    }
}

TEST_F(JournalBeside, OfACommitThatIsAsGoodAsDoneSetsTheSlot) {
    writeJournal();
    journal_.note(Journal::Stage::PagesWritten);
    setSlot(0);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_EQ(storedSlot(), kSlotAfter);
    EXPECT_FALSE(fs::exists(journal_.path()));
}

TEST_F(JournalBeside, OfACommitThatIsAsGoodAsDoneLeavesAFileAloneThatIsNotAsItLeftIt) {
    writeJournal();
    journal_.note(Journal::Stage::PagesWritten);
    setSlot(kSlotBefore);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_EQ(storedSlot(), kSlotBefore);
    writeJournal();
    journal_.note(Journal::Stage::PagesWritten);
    setSlot(0);
    setByte(3 * kPageSize + 100, 0x55);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_EQ(storedSlot(), 0) << "an old byte is not what the commit has written";
}

TEST_F(JournalBeside, OfAnotherFileOrAnotherStateOfItIsRemovedOnly) {
    writeJournal();
    setSlot(0);
    setByte(2 * kPageSize + 4095, 0x77);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_FALSE(fs::exists(journal_.path()));
}

TEST_F(JournalBeside, HalfWrittenPagesArePutBackWhereverTheyEnd) {
    for (const std::uint64_t written : {1u, 511u, 512u, 4000u}) {
        writeJournal();
        setSlot(0);
        fs::resize_file(path_, kCount * kPageSize);
        for (std::uint64_t at = written; at < kPageSize; ++at) setByte(3 * kPageSize + at, 0x55);
        EXPECT_EQ(opened(), putBack_) << written;
        for (std::uint64_t at = 0; at < 2 * kPageSize; ++at) setByte(2 * kPageSize + at, 0xAA);
    }
}

TEST_F(JournalBeside, TornOneIsRemovedAndTheFileStaysAsItIs) {
    writeJournal();
    damageJournal(kPageSize + 5);
    EXPECT_EQ(opened(), untouched_);
    EXPECT_FALSE(fs::exists(journal_.path()));
}

TEST_F(JournalBeside, ForeignFileOfThatNameIsSurvived) {
    std::ofstream(journal_.path()) << "something else";
    EXPECT_EQ(opened(), untouched_);
}

TEST_F(JournalBeside, IsFoundByAFileThatIsOpenAlready) {
    const auto file = PageFile::open(path_, Access::ReadWrite);
    {
        const ReadScope scope(file);
        EXPECT_EQ(file->read(2)[0], 0xAA);
    }
    writeJournal();
    setSlot(0);
    {
        WriteScope unit(file);
        EXPECT_EQ(file->read(2)[0], 0x55);
        EXPECT_EQ(file->pageCount(), 5u);
        file->edit(4)[0] = 1;
        unit.commit();
    }
    EXPECT_EQ(opened(), putBack_);
}

TEST_F(JournalBeside, ThatMayNotBePutBackIsReportedAndNothingIsShown) {
    writeJournal();
    fs::permissions(path_, fs::perms::owner_read);
    try {
        (void)opened();
        FAIL() << "a half-written file was shown";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::ReadOnly);
    }
    EXPECT_TRUE(fs::exists(journal_.path()));
    fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(opened(), putBack_);
}

}  // namespace
}  // namespace stelvan::jet
