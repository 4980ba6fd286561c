#include "model/core/new_model.h"

#include <array>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "gem/schema.h"
#include "jet/database.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;
namespace setting = gem::schema::setting;

constexpr const char* kDictionary = "secs-dictionary.xml";

constexpr const char* fileOf(Template from) {
    return from == Template::Demo ? "demo-template.mdb" : "gem-template.mdb";
}

/// Where templates and dictionary lie: beside the program in a build folder, else as installed.
fs::path shareFolder() {
    const fs::path programFolder = fs::read_symlink("/proc/self/exe").parent_path();
    const std::array candidates = {programFolder / "share/stelvan",
                                   programFolder / "../share/stelvan", fs::path(STELVAN_SHARE_DIR)};
    for (const fs::path& folder : candidates) {
        if (fs::is_directory(folder)) return fs::canonical(folder);
    }
    throw std::runtime_error(std::string("the folder of the templates is missing: ") +
                             STELVAN_SHARE_DIR);
}

/// Gives the named settings a value, current and default alike.
void setSettings(const fs::path& file, const std::map<std::string, std::string>& settings) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadWrite);
    jet::Table& table = database.table(gem::schema::table::kSettings);
    const jet::TableInfo info = table.info();
    const std::size_t field = info.findColumn(setting::kField).value();
    const std::size_t value = info.findColumn(setting::kValue).value();
    const std::size_t standard = info.findColumn(setting::kDefaultValue).value();

    std::vector<std::pair<jet::RowId, std::string>> changes;
    for (const auto rows = table.scan({field}); rows->next();) {
        const auto name = std::get<std::string_view>(rows->value(field));
        const auto wanted = settings.find(std::string(name));
        if (wanted != settings.end()) changes.emplace_back(rows->rowId(), wanted->second);
    }
    jet::UnitOfWork unit(database);
    for (const auto& [row, text] : changes) {
        table.update(row,
                     std::array{jet::ColumnValue{value, text}, jet::ColumnValue{standard, text}});
    }
    unit.commit();
}

}  // namespace

fs::path newModel(const fs::path& folder, Template from) {
    const fs::path share = shareFolder();
    const fs::path home = fs::absolute(folder).lexically_normal();
    const fs::path model = home / "gem.mdb";
    const fs::path log = home / "log" / "secs.log";
    if (fs::exists(model)) throw std::runtime_error("there is a model already: " + model.string());

    fs::create_directories(log.parent_path());
    std::ofstream(log, std::ios::app);
    fs::copy_file(share / fileOf(from), model);
    try {
        fs::permissions(model, fs::perms::owner_write, fs::perm_options::add);
        setSettings(model, {{"GEMDatabase", model.string()},
                            {"SECSILogPath", log.parent_path().string()},
                            {"SECSLogFile", log.string()},
                            {"SECSDictionaryFile", (share / kDictionary).string()}});
    } catch (...) {
        std::error_code ignored;
        fs::remove(model, ignored);
        throw;
    }
    return model;
}

}  // namespace stelvan::model
