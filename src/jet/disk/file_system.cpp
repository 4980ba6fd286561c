#include "jet/disk/file_system.h"

namespace stelvan::jet {

namespace {

FileSystem* overriding = nullptr;

}  // namespace

std::size_t OpenFile::readPages(PageNumber first, std::span<std::uint8_t* const> into) {
    std::uint64_t offset = static_cast<std::uint64_t>(first) * kPageSize;
    std::size_t whole = 0;
    for (std::uint8_t* page : into) {
        if (readAt(offset, {page, kPageSize}) < kPageSize) break;
        offset += kPageSize;
        ++whole;
    }
    return whole;
}

void OpenFile::writePages(PageNumber first, std::span<const std::uint8_t* const> pages) {
    std::uint64_t offset = static_cast<std::uint64_t>(first) * kPageSize;
    for (const std::uint8_t* page : pages) {
        writeAt(offset, {page, kPageSize});
        offset += kPageSize;
    }
}

FileSystem& FileSystem::standard() {
    return overriding != nullptr ? *overriding : posix();
}

FileSystemOverride::FileSystemOverride(FileSystem& files) : previous_(overriding) {
    overriding = &files;
}

FileSystemOverride::~FileSystemOverride() {
    overriding = previous_;
}

std::filesystem::path folderOf(const std::filesystem::path& path) {
    const std::filesystem::path folder = path.parent_path();
    return folder.empty() ? std::filesystem::path(".") : folder;
}

}  // namespace stelvan::jet
