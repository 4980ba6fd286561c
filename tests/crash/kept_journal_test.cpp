// The journal between units: it stays as long as somebody works on the file, whoever removes it
// takes it from nobody, and it never brings back what is past.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>

#include "jet/disk/file_system.h"
#include "jet/disk/journal.h"
#include "tests/crash/faulty_file_system.h"
#include "tests/jet/disk/pages_fixture.h"

namespace stelvan::jet {
namespace {

using test::Fault;
using test::FaultyFileSystem;

class KeptJournal : public Pages {
protected:
    /// A party of its own, as another process would be.
    std::shared_ptr<PageFile> openAs(FaultyFileSystem& party) const {
        return PageFile::open(path_, Access::ReadWrite, party);
    }
    bool present() const { return fs::exists(journal_); }
    ino_t inode() const {
        struct stat raw {};
        return ::stat(journal_.c_str(), &raw) == 0 ? raw.st_ino : 0;
    }
    std::uint64_t stored(PageNumber page) const { return word(open(), page); }
    void setSlotFromOutside(std::uint16_t slot) const {
        std::fstream file(path_, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(commit_slots::kOffset);
        file.write(reinterpret_cast<const char*>(&slot), sizeof slot);
    }

    void SetUp() override {
        Pages::SetUp();
        fs::copy_file(path_, original_);
    }
    void startAnew() const {
        fs::copy_file(original_, path_, fs::copy_options::overwrite_existing);
        fs::remove(journal_);
    }
    /// Pages 7 and 8, in one unit; false where the program stopped in it.
    static bool changeTwo(const std::shared_ptr<PageFile>& file) {
        try {
            WriteScope unit(file);
            setWord(file->edit(7), 77);
            setWord(file->edit(8), 88);
            unit.commit();
            return true;
        } catch (const test::Crash&) {
            return false;
        }
    }
    void expectBothOrNeither(std::uint64_t operation) const {
        const std::uint64_t seven = stored(7);
        const std::uint64_t eight = stored(8);
        EXPECT_TRUE((seven == 1007 && eight == 1008) || (seven == 77 && eight == 88))
            << "operation " << operation << ": " << seven << ", " << eight;
    }

    fs::path original_ = scratch_.path() / "original";
    fs::path journal_ = path_.string() + "-journal";
};

TEST_F(KeptJournal, StaysAsLongAsTheFileIsOpenAndGoesWithIt) {
    auto file = open();
    EXPECT_FALSE(present());
    change(file, 3, 1);
    const ino_t first = inode();
    EXPECT_TRUE(present());
    const auto size = fs::file_size(journal_);
    change(file, 4, 2);
    EXPECT_EQ(inode(), first);
    EXPECT_EQ(fs::file_size(journal_), size) << "so that a sync writes data alone";
    file.reset();
    EXPECT_FALSE(present());
}

TEST_F(KeptJournal, ThatHasGrownLongIsNotKept) {
    const auto file = open();
    WriteScope unit(file);
    for (int i = 0; i < 400; ++i) (void)file->append();
    unit.commit();
    {
        WriteScope large(file);
        for (PageNumber page = 0; page < 400; ++page) setWord(file->edit(page), 7);
        large.commit();
    }
    EXPECT_FALSE(present());
    change(file, 5, 5);
    EXPECT_TRUE(present());
}

TEST_F(KeptJournal, IsRemovedByTheLastOneThatLeaves) {
    FaultyFileSystem one;
    FaultyFileSystem two;
    auto first = openAs(one);
    auto second = openAs(two);
    change(first, 3, 1);
    change(second, 4, 2);
    first.reset();
    EXPECT_TRUE(present());
    change(second, 4, 3);
    second.reset();
    EXPECT_FALSE(present());
    EXPECT_EQ(stored(4), 3u);
}

TEST_F(KeptJournal, IsLeftToItsKeeperByReaders) {
    FaultyFileSystem other;
    const auto keeper = openAs(other);
    change(keeper, 3, 1);
    const ino_t first = inode();
    EXPECT_EQ(stored(3), 1u);
    EXPECT_EQ(inode(), first);
}

TEST_F(KeptJournal, ThatSomebodyTookAwayOrReplacedIsMadeAnew) {
    for (const bool replaced : {false, true}) {
        for (std::uint64_t operation = 1, done = 0; done == 0; ++operation) {
            startAnew();
            FaultyFileSystem party;
            auto file = openAs(party);
            change(file, 3, 1);
            fs::remove(journal_);
            if (replaced) std::ofstream(journal_) << "something else";
            party.startOver(operation, Fault::Stop);
            done = changeTwo(file) ? 1 : 0;
            file.reset();
            expectBothOrNeither(operation);
        }
    }
}

TEST_F(KeptJournal, OfADeadWriterIsNotRemovedByOneThatLeaves) {
    for (std::uint64_t operation = 1, done = 0; done == 0; ++operation) {
        startAnew();
        FaultyFileSystem survivor;
        auto staying = openAs(survivor);
        change(staying, 3, 1);
        {
            FaultyFileSystem victim;
            const auto dying = openAs(victim);
            victim.startOver(operation, Fault::Stop);
            done = changeTwo(dying) ? 1 : 0;
        }
        staying.reset();
        expectBothOrNeither(operation);
    }
}

TEST_F(KeptJournal, OfADeadWriterIsSettledByOneThatGoesOn) {
    for (std::uint64_t operation = 1, done = 0; done == 0; ++operation) {
        startAnew();
        FaultyFileSystem survivor;
        const auto staying = openAs(survivor);
        change(staying, 3, 1);
        {
            FaultyFileSystem victim;
            const auto dying = openAs(victim);
            victim.startOver(operation, Fault::Stop);
            done = changeTwo(dying) ? 1 : 0;
        }
        change(staying, 3, 2);
        EXPECT_EQ(stored(3), 2u);
        expectBothOrNeither(operation);
    }
}

TEST_F(KeptJournal, OfAKilledProgramNeverUndoesWhatOthersDidSince) {
    {
        FaultyFileSystem killed;
        const auto file = openAs(killed);
        change(file, 3, 1);
        killed.stopAt(killed.operations() + 1);  // its end removes nothing
    }
    ASSERT_TRUE(present());
    // Another program knows nothing of it, writes, and dies in the middle: its mark says 0.
    changeFromOutside(5, 55);
    setSlotFromOutside(0);
    EXPECT_EQ(stored(3), 1u);
    EXPECT_EQ(stored(5), 55u);
    EXPECT_EQ(commitSlot(), 0u);
    EXPECT_FALSE(present());
}

TEST_F(KeptJournal, OfAKilledProgramDoesNotTouchAnOlderCopyPutInItsPlace) {
    const fs::path backup = scratch_.path() / "backup";
    fs::copy_file(path_, backup);
    {
        FaultyFileSystem killed;
        const auto file = openAs(killed);
        change(file, 3, 1);
        killed.stopAt(killed.operations() + 1);
    }
    fs::copy_file(backup, path_, fs::copy_options::overwrite_existing);
    changeFromOutside(3, 33);
    EXPECT_EQ(stored(3), 33u);
}

}  // namespace
}  // namespace stelvan::jet
