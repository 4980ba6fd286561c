// A page file without a file: pages in memory, on which a new database is built before it is
// written in one piece, over which a long question is asked while others write to the file, and
// with which decoders are tested.
//
// Units of work nest and roll back as those of the real one; nothing is locked.
#pragma once

#include <algorithm>
#include <array>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "jet/disk/error.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"

namespace stelvan::jet {

class MemoryPages final : public PageFile {
public:
    explicit MemoryPages(std::size_t pages = 0) : bytes_(pages) {}
    explicit MemoryPages(const std::vector<std::uint8_t>& file) : bytes_(file.size() / kPageSize) {
        for (std::size_t i = 0; i < bytes_.size(); ++i) {
            const auto begin = file.begin() + static_cast<std::ptrdiff_t>(i * kPageSize);
            std::copy(begin, begin + kPageSize, bytes_[i].begin());
        }
        size_ = file.size();
    }

    /// No page yet; errors name the file that the pages come from.
    explicit MemoryPages(std::filesystem::path path) : path_(std::move(path)) {}

    /// One more page, before the first unit of work.
    void add(PageBytes bytes) {
        std::copy(bytes.begin(), bytes.end(), bytes_.emplace_back().begin());
    }

    [[nodiscard]] const std::filesystem::path& path() const override { return path_; }
    [[nodiscard]] Access access() const override { return Access::ReadWrite; }
    [[nodiscard]] PageNumber pageCount() const override {
        return static_cast<PageNumber>(bytes_.size());
    }
    [[nodiscard]] std::uint64_t byteSize() const override {
        return std::max<std::uint64_t>(size_, bytes_.size() * kPageSize);
    }
    [[nodiscard]] PageBytes read(PageNumber page) override { return at(page); }
    /// The whole file.
    [[nodiscard]] std::vector<std::uint8_t> file() const {
        std::vector<std::uint8_t> all;
        for (const Page& page : bytes_) all.insert(all.end(), page.begin(), page.end());
        return all;
    }
    void release() override {}
    [[nodiscard]] WritablePageBytes edit(PageNumber page) override {
        if (!inUnit()) throw Error(ErrorKind::Misuse, "no unit of work");
        auto& bytes = at(page);
        before_.try_emplace(page, bytes);
        return bytes;
    }
    PageNumber append() override {
        bytes_.emplace_back();
        return pageCount() - 1;
    }
    [[nodiscard]] std::uint64_t version() const override { return version_; }

protected:
    void beginRead() override {}
    void endRead() override {}
    void beginUnit() override { countBefore_ = bytes_.size(); }
    void writeUnit() override { before_.clear(); }
    void undoUnit() noexcept override {
        for (const auto& [page, bytes] : before_) {
            if (page < countBefore_) bytes_[page] = bytes;
        }
        while (bytes_.size() > countBefore_) bytes_.pop_back();
        before_.clear();
        ++version_;
    }
    void endUnit() noexcept override {}

private:
    using Page = std::array<std::uint8_t, kPageSize>;

    Page& at(PageNumber page) {
        if (page >= bytes_.size()) {
            throw Error(ErrorKind::Corrupt,
                        "Page " + std::to_string(page) + " of '" + path_.string() + "' is missing.",
                        page);
        }
        return bytes_[page];
    }

    std::filesystem::path path_ = "memory.mdb";
    std::deque<Page> bytes_;  // addresses survive appending
    std::map<PageNumber, Page> before_;
    std::size_t countBefore_ = 0;
    std::uint64_t size_ = 0;
    std::uint64_t version_ = 1;
};

}  // namespace stelvan::jet
