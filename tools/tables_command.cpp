#include "jet/database.h"
#include "tools/commands.h"

namespace stelvan::tools {

int tablesCommand(const std::filesystem::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    Output output;
    for (const std::string& name : database.tableNames()) output.write(name + "\n");
    output.finish();
    return kDone;
}

}  // namespace stelvan::tools
