#include "gemdb/commands.h"
#include "jet/database.h"

namespace stelvan::gemdb {

int tablesCommand(const std::filesystem::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    Output output;
    for (const std::string& name : database.tableNames()) output.write(name + "\n");
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
