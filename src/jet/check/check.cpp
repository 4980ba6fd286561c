#include "jet/check/check.h"

#include <algorithm>

#include "jet/check/check_catalog.h"
#include "jet/check/check_definition.h"
#include "jet/check/check_table.h"
#include "jet/disk/commit_slots.h"
#include "jet/disk/page.h"
#include "jet/pages/fixed_pages.h"
#include "jet/pages/header.h"
#include "jet/pages/record_pointer.h"
#include "jet/tables/catalog.h"

namespace stelvan::jet {

namespace {

// A slot that is zero was left by a program that died while it wrote.
void checkHeader(PageFile& file, CheckLog& log) {
    const PageBytes page = file.read(0);
    std::array<std::uint8_t, kPageSize> plain{};
    std::ranges::copy(page, plain.begin());
    maskHeader(plain);
    if (u32At(plain, header::kGlobalMap) != RecordPointer{kGlobalMapPage, 0}.packed() ||
        u32At(plain, header::kSecondMap) != RecordPointer{kGlobalMapPage, 1}.packed()) {
        log.fault(0, "the header does not lead to the maps of free pages.");
    }
    if (u32At(plain, header::kAccessEntries) != kAccessEntriesPage ||
        u32At(plain, header::kQueries) != kQueriesPage ||
        u32At(plain, header::kRelationships) != kRelationshipsPage) {
        log.fault(0, "the header does not lead to the system tables.");
    }
    for (std::size_t slot = 0; slot < commit_slots::kCount; ++slot) {
        if (u16At(page, commit_slots::kOffset + 2 * slot) == 0) {
            log.fault(0,
                      "commit slot " + std::to_string(slot) + " says that writing was broken off.");
        }
    }
}

void checkTable(PageFile& file, Catalog& catalog, const CatalogEntry& entry, PageBook& pages,
                CheckLog& log) {
    log.attempt(entry.definitionPage(), [&] {
        const auto table = catalog.definition(entry);
        checkDefinition(file, "table " + entry.name, *table, pages, log);
        TableCheck(file, table, entry.isSystem(), pages, log).run();
    });
}

void checkAll(PageFile& file, CheckLog& log) {
    checkHeader(file, log);
    Catalog catalog(file);
    PageBook pages(file, log);
    bool readable = false;
    log.attempt(kObjectsPage, [&] {
        static_cast<void>(catalog.entries());
        readable = true;
    });
    if (!readable) return;
    for (const CatalogEntry& entry : catalog.entries()) {
        if (entry.isTable()) checkTable(file, catalog, entry, pages, log);
    }
    checkCatalog(file, catalog, log);
    pages.finish({kGlobalMapPage, 0}, {kGlobalMapPage, 1});
}

}  // namespace

std::vector<Finding> check(std::shared_ptr<PageFile> file, CheckOptions options) {
    CheckLog log(options.strict);
    const ReadScope scope(file);
    bool recognised = false;
    log.attempt(0, [&] {
        static_cast<void>(recognise(*file));
        recognised = true;
    });
    if (recognised) checkAll(*file, log);
    return log.findings();
}

std::vector<Finding> check(const std::filesystem::path& path, CheckOptions options) {
    return check(PageFile::open(path, Access::ReadOnly), options);
}

bool anyFault(const std::vector<Finding>& findings) {
    return std::ranges::any_of(findings, [](const Finding& finding) { return !finding.isNote; });
}

}  // namespace stelvan::jet
