#include "jet/tables/shared_database.h"

#include <map>
#include <mutex>

#include "jet/tables/table_writer.h"

namespace stelvan::jet {

SharedDatabase::SharedDatabase(std::shared_ptr<PageFile> pages)
    : pages_(std::move(pages)), catalog_(*pages_), rules_(*this) {}

SharedDatabase::~SharedDatabase() = default;

TableWriter& SharedDatabase::writer(const std::shared_ptr<const TableDef>& table) {
    const std::uint64_t generation = catalog().generation();
    if (writersGeneration_ != generation) {
        writers_.clear();
        writersGeneration_ = generation;
    }
    auto& writer = writers_[table->page];
    if (writer == nullptr) writer = std::make_unique<TableWriter>(*this, table);
    return *writer;
}

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
    Error error(ErrorKind::ReadOnly, "'" + path + "' was opened for reading only.");
    throw error.about(path);
}

}  // namespace stelvan::jet
