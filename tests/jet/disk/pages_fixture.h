// A file of forty pages that begin with a word each, for tests of page files.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "jet/disk/commit_slots.h"
#include "jet/disk/page_file.h"
#include "tests/support/models.h"

namespace stelvan::jet {

namespace fs = std::filesystem;

inline std::uint64_t wordOf(PageBytes bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof word);
    return word;
}

inline void setWord(WritablePageBytes bytes, std::uint64_t word) {
    std::memcpy(bytes.data(), &word, sizeof word);
}

inline ErrorKind kindOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.kind();
    }
    ADD_FAILURE() << "nothing was thrown";
    return ErrorKind::Misuse;
}

class Pages : public ::testing::Test {
protected:
    /// Page n begins with the word 1000 + n.
    void SetUp() override {
        std::vector<std::uint8_t> bytes(kCount * kPageSize);
        for (PageNumber page = 0; page < kCount; ++page)
            setWord(WritablePageBytes(bytes.data() + page * kPageSize, kPageSize), 1000 + page);
        for (std::size_t slot = 0; slot < commit_slots::kCount; ++slot)
            bytes[commit_slots::kOffset + 2 * slot + 1] = 1;
        PageFile::create(path_, bytes);
        // A file that was made in this tick of the clock is looked at twice.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    std::shared_ptr<PageFile> open(Access access = Access::ReadWrite) const {
        return PageFile::open(path_, access);
    }

    static std::uint64_t word(const std::shared_ptr<PageFile>& file, PageNumber page) {
        const ReadScope scope(file);
        return wordOf(file->read(page));
    }

    static void change(const std::shared_ptr<PageFile>& file, PageNumber page,
                       std::uint64_t value) {
        WriteScope unit(file);
        setWord(file->edit(page), value);
        unit.commit();
    }

    /// As another program would, past all locks.
    void changeFromOutside(PageNumber page, std::uint64_t value) const {
        std::fstream file(path_, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(page) * static_cast<std::streamoff>(kPageSize));
        file.write(reinterpret_cast<const char*>(&value), sizeof value);
    }

    std::uint16_t commitSlot() const {
        std::ifstream file(path_, std::ios::binary);
        file.seekg(commit_slots::kOffset);
        std::uint16_t slot = 0;
        file.read(reinterpret_cast<char*>(&slot), sizeof slot);
        return slot;
    }

    std::vector<std::string> filesBeside() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(scratch_.path()))
            names.push_back(entry.path().filename());
        return names;
    }

    static constexpr PageNumber kCount = 40;
    test::ScratchDir scratch_;
    fs::path path_ = scratch_.path() / "gem.mdb";
};

}  // namespace stelvan::jet
