#include "model/core/whole_copy.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "jet/disk/error.h"
#include "jet/disk/file_system.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;
using jet::FileSystem;

constexpr std::size_t kPiece = 1 << 16;
constexpr std::string_view kDraft = ".draft-";

void copyBytes(jet::OpenFile& from, jet::OpenFile& to) {
    std::vector<std::uint8_t> piece(kPiece);
    std::uint64_t offset = 0;
    while (const std::size_t got = from.readAt(offset, piece)) {
        to.writeAt(offset, std::span(piece).first(got));
        offset += got;
    }
}

/// A file that is removed again unless it took the name that it was made for.
class Draft {
public:
    /// With the process in its name no two programs meet in it.
    Draft(FileSystem& files, const fs::path& wanted)
        : files_(files),
          wanted_(wanted),
          path_(wanted.string() + std::string(kDraft) + std::to_string(getpid())) {
        files_.remove(path_);
    }
    ~Draft() {
        if (path_.empty()) return;
        try {
            files_.remove(path_);
        } catch (...) {
            // It is in nobody's way, and goes at the next chance.
        }
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    [[nodiscard]] const fs::path& path() const { return path_; }
    void takeName() {
        files_.replace(path_, wanted_);
        path_.clear();
        files_.syncFolder(jet::folderOf(wanted_));
    }

private:
    FileSystem& files_;
    fs::path wanted_;
    fs::path path_;
};

bool isDead(std::string_view process) {
    pid_t id = 0;
    const auto read = std::from_chars(process.data(), process.data() + process.size(), id);
    return read.ec == std::errc() && read.ptr == process.data() + process.size() && id > 0 &&
           ::kill(id, 0) != 0 && errno == ESRCH;
}

}  // namespace

void copyWhole(const fs::path& from, const fs::path& to, std::uint32_t permissions) {
    FileSystem& files = FileSystem::standard();
    const std::unique_ptr<jet::OpenFile> source = files.open(from, FileSystem::Mode::Read);
    Draft draft(files, to);
    {
        const auto made = files.open(draft.path(), FileSystem::Mode::CreateNew, permissions);
        copyBytes(*source, *made);
        made->sync();
    }
    draft.takeName();
}

void removeDrafts(const fs::path& folder) {
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(folder, none)) {
        const std::string name = entry.path().filename().string();
        const std::size_t at = name.rfind(kDraft);
        if (at != std::string::npos && isDead(std::string_view(name).substr(at + kDraft.size())))
            FileSystem::standard().remove(entry.path());
    }
}

bool sameContent(const fs::path& one, const fs::path& other) {
    FileSystem& files = FileSystem::standard();
    const auto first = files.open(one, FileSystem::Mode::Read);
    const auto second = files.open(other, FileSystem::Mode::Read);
    if (first->status().size != second->status().size) return false;
    std::vector<std::uint8_t> a(kPiece);
    std::vector<std::uint8_t> b(kPiece);
    for (std::uint64_t offset = 0;; offset += kPiece) {
        const std::size_t got = first->readAt(offset, a);
        if (second->readAt(offset, b) != got) return false;
        if (!std::equal(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(got), b.begin()))
            return false;
        if (got < kPiece) return true;
    }
}

}  // namespace stelvan::model
