#include "jet/tables/shared_database.h"

#include <map>
#include <mutex>

namespace stelvan::jet {

std::shared_ptr<SharedDatabase> SharedDatabase::of(const std::shared_ptr<PageFile>& pages) {
    // Files may belong to different threads; the register of files belongs to all of them.
    static std::mutex mutex;
    static std::map<PageFile*, std::weak_ptr<SharedDatabase>> files;
    const std::lock_guard lock(mutex);
    std::erase_if(files, [](const auto& entry) { return entry.second.expired(); });
    auto& entry = files[pages.get()];
    auto file = entry.lock();
    if (file == nullptr) {
        file = std::make_shared<SharedDatabase>(pages);
        entry = file;
    }
    return file;
}

void requireWritable(Access access, SharedDatabase& file) {
    if (access == Access::ReadWrite) return;
    const std::string path = file.pages().path().string();
    throw Error(ErrorKind::ReadOnly, "'" + path + "' was opened for reading only.").about(path);
}

}  // namespace stelvan::jet
