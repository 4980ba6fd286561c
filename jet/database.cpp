#include "jet/database.h"

#include <algorithm>

#include "jet/database_impl.h"
#include "jet/header.h"
#include "jet/text.h"

namespace stelvan::jet {

void Database::Impl::requireWritable() const {
    if (access == Access::ReadWrite) return;
    Error error(ErrorKind::ReadOnly,
                "Operation must use an updateable query: the database was opened for reading.");
    throw error.about(file->pages().path().string());
}

Database::Database(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

Database Database::open(const std::filesystem::path& path, Access access) {
    return over(PageFile::open(path, access), access);
}

Database Database::over(std::shared_ptr<PageFile> pages, Access access) {
    {
        const ReadScope scope(pages);
        static_cast<void>(recognise(*pages));
    }
    auto impl = std::make_unique<Impl>();
    impl->file = SharedDatabase::of(pages);
    impl->access = access;
    return Database(std::move(impl));
}

const std::filesystem::path& Database::path() const {
    return impl_->file->pages().path();
}
Access Database::access() const {
    return impl_->access;
}

std::unique_ptr<ReadScope> Database::beginRead() {
    return std::make_unique<ReadScope>(impl_->file->sharedPages());
}

std::vector<std::string> Database::tableNames(bool withSystem) {
    const ReadScope scope(impl_->file->sharedPages());
    std::vector<std::pair<std::string, std::string>> named;
    for (const CatalogEntry& entry : impl_->file->catalog().entries()) {
        if (entry.isTable() && (withSystem || !entry.isSystem()))
            named.emplace_back(foldName(entry.name), entry.name);
    }
    std::ranges::sort(named);
    std::vector<std::string> names;
    for (auto& [folded, name] : named) names.push_back(std::move(name));
    return names;
}

bool Database::hasTable(std::string_view name) {
    const ReadScope scope(impl_->file->sharedPages());
    return impl_->file->catalog().findTable(name) != nullptr;
}

Table& Database::table(std::string_view name) {
    const ReadScope scope(impl_->file->sharedPages());
    const CatalogEntry* entry = impl_->file->catalog().findTable(name);
    if (entry == nullptr) throwNoSuchTable(std::string(name));
    auto& table = impl_->tables[foldName(name)];
    if (table == nullptr) table = std::make_unique<StoredTable>(impl_->file, impl_->access, entry->name);
    static_cast<void>(table->definition());
    return *table;
}

std::vector<RelationshipInfo> Database::relationships() {
    const ReadScope scope(impl_->file->sharedPages());
    return impl_->file->catalog().relationships();
}

}  // namespace stelvan::jet
