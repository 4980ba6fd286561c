#include "jet/database.h"

#include <algorithm>
#include <ctime>

#include "base/date.h"
#include "jet/database_impl.h"
#include "jet/disk/memory_pages.h"
#include "jet/pages/header.h"
#include "jet/rows/text.h"
#include "jet/tables/database_creation.h"
#include "jet/tables/schema_change.h"

namespace stelvan::jet {

// Local time, as the catalogue's dates are.
DateTime Database::Impl::now() const {
    if (created) return *created;
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return {base::serialDate(std::chrono::seconds{seconds + local.tm_gmtoff})};
}

namespace {

std::shared_ptr<SharedDatabase> writable(Database& database) {
    requireWritable(database.access(), *database.impl().file);
    return database.impl().file;
}

}  // namespace

UnitOfWork::UnitOfWork(Database& database) : UnitOfWork(writable(database)) {}

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

Database Database::copyInMemory() {
    constexpr PageNumber kPagesHeld = 1024;
    const ReadScope scope(impl_->file->sharedPages());
    PageFile& pages = impl_->file->pages();
    const auto copy = std::make_shared<MemoryPages>(pages.path());
    for (PageNumber page = 0; page < pages.pageCount(); ++page) {
        copy->add(pages.read(page));
        if (page % kPagesHeld == 0 && impl_->file->cursors == 0) pages.release();
    }
    return over(copy, Access::ReadOnly);
}

Database Database::create(const std::filesystem::path& path, DateTime created) {
    PageFile::create(path, makeEmptyDatabase(created));
    Database database = open(path, Access::ReadWrite);
    database.impl_->created = created;
    return database;
}

const std::shared_ptr<PageFile>& Database::pages() const {
    return impl_->file->sharedPages();
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
    if (entry == nullptr) throw Error::of(ErrorKind::NoSuchTable, std::string(name));
    auto& table = impl_->tables[foldName(name)];
    if (table == nullptr)
        table = std::make_unique<StoredTable>(impl_->file, impl_->access, entry->name);
    static_cast<void>(table->definition());
    return *table;
}

std::vector<RelationshipInfo> Database::relationships() {
    const ReadScope scope(impl_->file->sharedPages());
    return impl_->file->catalog().relationships();
}

std::uint64_t Database::moment() {
    const ReadScope scope(impl_->file->sharedPages());
    return impl_->file->pages().moment();
}

std::uint64_t Database::changesByOthers() {
    const ReadScope scope(impl_->file->sharedPages());
    return impl_->file->pages().changesByOthers();
}

void Database::onRollback(std::function<void()> undo) {
    impl_->file->pages().onRollback(std::move(undo));
}

void Database::createTable(const TableSpec& spec) {
    impl_->change([&](SharedDatabase& file) { jet::createTable(file, spec, impl_->now()); });
}

void Database::createRelationship(const RelationshipInfo& relationship) {
    impl_->change(
        [&](SharedDatabase& file) { jet::createRelationship(file, relationship, impl_->now()); });
}

void Database::dropTable(std::string_view name) {
    impl_->change([&](SharedDatabase& file) { jet::dropTable(file, name); });
}

}  // namespace stelvan::jet
