#include "model/core/file_facts.h"

#include <array>

#include "jet/database.h"
#include "jet/disk/file_system.h"
#include "jet/disk/journal.h"
#include "jet/pages/header.h"
#include "jet/tables/property_blob.h"

namespace stelvan::model {
namespace {

/// The properties of the database as such belong to this object of the catalogue.
constexpr std::string_view kDatabaseObject = "MSysDb";

/// What the catalogue says of the database as such.
void readCatalogue(jet::Database& database, Making& making) {
    jet::Table& objects = database.table("MSysObjects");
    const jet::TableInfo info = objects.info();
    const auto name = info.findColumn("Name");
    const auto date = info.findColumn("DateCreate");
    const auto properties = info.findColumn("LvProp");
    if (!name || !date || !properties) return;
    for (const auto rows = objects.scan({*name, *date, *properties}); rows->next();) {
        if (jet::toValue(rows->value(*name)) != jet::Value(std::string(kDatabaseObject))) continue;
        const jet::Value created = jet::toValue(rows->value(*date));
        if (const auto* day = std::get_if<jet::DateTime>(&created)) making.created = *day;
        const jet::Value blob = jet::toValue(rows->value(*properties));
        if (const auto* bytes = std::get_if<jet::Blob>(&blob))
            making.accessVersion = jet::textProperty(*bytes, "AccessVersion").value_or("");
    }
}

Making makingOf(const std::filesystem::path& file) {
    const std::shared_ptr<jet::PageFile> pages = jet::PageFile::open(file, jet::Access::ReadOnly);
    const jet::ReadScope unchanged(pages);
    const jet::FileHeader header = jet::recognise(*pages);
    jet::Database database = jet::Database::over(pages, jet::Access::ReadOnly);
    Making making;
    making.engineBuild = header.engineBuild;
    readCatalogue(database, making);
    return making;
}

}  // namespace

FileFacts factsOf(const std::filesystem::path& file) {
    jet::FileSystem& files = jet::FileSystem::standard();
    FileFacts facts;
    {
        const auto open = files.open(file, jet::FileSystem::Mode::Read);
        facts.bytes = open->status().size;
        facts.use = jet::useOf(*open);
    }
    facts.users = jet::usersOf(files, file);
    // While somebody writes, a journal belongs to that; reading waits until it is done.
    const jet::Journal journal(files, file);
    // A finished one is only kept for the next change.
    facts.journalWaits = facts.use != jet::Use::Writing && journal.present() && !journal.finished();
    // Whoever reads puts the file right first.
    if (!facts.journalWaits) facts.making = makingOf(file);
    return facts;
}

std::string programOf(const std::string& accessVersion) {
    struct Known {
        std::string_view version;
        const char* program;
    };
    constexpr std::array kKnown = {Known{"08.50", "Access 2000"},
                                   Known{"09.50", "Access 2002-2003"}};
    for (const Known& known : kKnown)
        if (known.version == accessVersion) return known.program;
    return accessVersion;
}

}  // namespace stelvan::model
