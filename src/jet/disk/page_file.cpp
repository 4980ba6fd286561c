#include "jet/disk/page_file.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <tuple>

#include "jet/disk/file_system.h"
#include "jet/disk/stored_pages.h"

namespace stelvan::jet {

namespace {

namespace fs = std::filesystem;

/// The page files in use in this process, by what the operating system knows them by: two paths or
/// links to one file must lead to one PageFile.
class Registry {
public:
    using Key = std::tuple<FileSystem*, std::uint64_t, std::uint64_t>;

    std::shared_ptr<StoredPages> find(const Key& key) {
        const auto found = entries_.find(key);
        return found == entries_.end() ? nullptr : found->second.lock();
    }

    void add(const Key& key, const std::shared_ptr<StoredPages>& pages) {
        std::erase_if(entries_, [](const auto& entry) { return entry.second.expired(); });
        entries_[key] = pages;
    }

    std::mutex mutex;

private:
    std::map<Key, std::weak_ptr<StoredPages>> entries_;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

/// Where the file itself is: its journal lies beside it, not beside a symbolic link or in whatever
/// folder the program works in later.
fs::path placeOf(const fs::path& path) {
    std::error_code ignored;
    if (fs::is_symlink(path, ignored)) {
        fs::path target = fs::canonical(path, ignored);
        if (!ignored) return target;
    }
    return path.empty() ? path : fs::absolute(path);
}

FileStatus requireFile(const fs::path& path, FileSystem& files) {
    const auto status = files.status(path);
    const std::string name = "'" + path.string() + "'";
    if (!status.has_value()) {
        const auto folder = files.status(folderOf(path));
        if (folder.has_value() && folder->folder)
            throw Error::of(ErrorKind::FileNotFound, path.string());
        throw Error(ErrorKind::BadPath, name + " cannot be found: its folder does not exist.")
            .about(path.string());
    }
    if (status->folder)
        throw Error(ErrorKind::BadPath, name + " is a folder, not a database.")
            .about(path.string());
    if (!status->regular)
        throw Error(ErrorKind::NotADatabase, name + " is a device or a pipe, not a database.")
            .about(path.string());
    return *status;
}

}  // namespace

std::shared_ptr<PageFile> PageFile::open(const fs::path& path, Access access) {
    return open(path, access, FileSystem::standard());
}

std::shared_ptr<PageFile> PageFile::open(const fs::path& path, Access access, FileSystem& files) {
    Registry& known = registry();
    const std::lock_guard guard(known.mutex);
    const FileStatus status = requireFile(path, files);
    const Registry::Key key(&files, status.device, status.inode);
    if (std::shared_ptr<StoredPages> pages = known.find(key)) {
        pages->want(access);
        return pages;
    }
    const auto pages = std::make_shared<StoredPages>(files, placeOf(path), status, access);
    known.add(key, pages);
    return pages;
}

void PageFile::create(const fs::path& path, std::span<const std::uint8_t> pages) {
    FileSystem& files = FileSystem::standard();
    if (files.status(path).has_value())
        throw Error(ErrorKind::BadPath, "'" + path.string() + "' exists already.")
            .about(path.string());
    // Under another name until it is whole, so that a half-written file never bears this one.
    const fs::path unfinished = path.string() + "-new";
    files.remove(unfinished);
    try {
        const std::unique_ptr<OpenFile> file = files.open(unfinished, FileSystem::Mode::CreateNew);
        file->writeAt(0, pages);
        file->sync();
        files.rename(unfinished, path);
    } catch (const Error& fault) {
        try {
            files.remove(unfinished);
        } catch (const Error&) {
            // It is in nobody's way: the next attempt removes it.
        }
        throw fault;
    }
    files.syncFolder(folderOf(path));
}

void PageFile::onRollback(std::function<void()> undo) {
    if (inUnit()) undo_.push_back(std::move(undo));
}

// Files may belong to different threads.
std::uint64_t PageFile::nextMoment() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

void PageFile::beginWrite() {
    if (writers_ == 0) beginUnit();
    ++writers_;
}

void PageFile::commitWrite() {
    if (writers_ > 1) {
        --writers_;
        return;
    }
    try {
        if (doomed_)
            throw Error(ErrorKind::Misuse,
                        "A part of the unit of work was rolled back, so all of it was.");
        writeUnit();
        noteChange();
    } catch (...) {
        rollBackWrite();
        throw;
    }
    undo_.clear();
    --writers_;
    endUnit();
}

void PageFile::rollBackWrite() noexcept {
    if (--writers_ > 0) {
        doomed_ = true;
        return;
    }
    undoUnit();
    noteChange();
    doomed_ = false;
    const std::vector<std::function<void()>> undo = std::move(undo_);
    undo_.clear();
    endUnit();
    for (auto step = undo.rbegin(); step != undo.rend(); ++step) (*step)();
}

}  // namespace stelvan::jet
