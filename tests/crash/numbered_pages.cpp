#include "tests/crash/numbered_pages.h"

#include <cstring>

#include "jet/disk/commit_slots.h"

namespace stelvan::test {

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);

std::size_t checkedSize(jet::PageNumber page) {
    return page == 0 ? jet::commit_slots::kOffset : jet::kPageSize;
}

std::uint64_t mark(jet::PageNumber page, std::uint64_t generation) {
    return generation << 32 | page;
}

}  // namespace

void NumberedPages::fill(jet::WritablePageBytes bytes, jet::PageNumber page,
                         std::uint64_t generation) {
    const std::uint64_t word = mark(page, generation);
    for (std::size_t i = 0; i < checkedSize(page); i += kWord)
        std::memcpy(bytes.data() + i, &word, kWord);
}

void NumberedPages::create(const std::filesystem::path& path, jet::PageNumber pages) {
    std::vector<std::uint8_t> bytes(pages * jet::kPageSize);
    for (jet::PageNumber page = 0; page < pages; ++page)
        fill(jet::WritablePageBytes(bytes.data() + page * jet::kPageSize, jet::kPageSize), page, 1);
    bytes[jet::commit_slots::kOffset] = 1;
    bytes[jet::commit_slots::kOffset + 1] = 1;
    jet::PageFile::create(path, bytes);
}

void NumberedPages::write(jet::PageFile& file, const std::vector<jet::PageNumber>& pages,
                          jet::PageNumber added, std::uint64_t generation) {
    for (jet::PageNumber page : pages) fill(file.edit(page), page, generation);
    for (jet::PageNumber i = 0; i < added; ++i) {
        const jet::PageNumber page = file.append();
        fill(file.edit(page), page, generation);
    }
}

std::vector<std::uint64_t> NumberedPages::generations(jet::PageFile& file) {
    std::vector<std::uint64_t> found;
    for (jet::PageNumber page = 0; page < file.pageCount(); ++page) {
        const jet::PageBytes bytes = file.read(page);
        std::uint64_t first = 0;
        std::memcpy(&first, bytes.data(), kWord);
        std::uint64_t generation = first >> 32;
        for (std::size_t i = 0; i < checkedSize(page); i += kWord) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes.data() + i, kWord);
            if (word != mark(page, generation)) generation = 0;
        }
        found.push_back(generation);
    }
    return found;
}

std::string toText(const std::vector<std::uint64_t>& generations) {
    std::string text;
    for (std::uint64_t generation : generations) text += std::to_string(generation) + " ";
    return text;
}

}  // namespace stelvan::test
