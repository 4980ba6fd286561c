#include "gemdb/commands.h"
#include "model/text/export_text.h"
#include "model/text/sheets.h"

namespace stelvan::gemdb {

int exportCommand(const std::filesystem::path& file, const std::filesystem::path& folder) {
    model::exportText(model::read(file), folder);
    return kDone;
}

int exportSheetsCommand(const std::filesystem::path& file, const std::filesystem::path& folder) {
    model::exportSheets(model::read(file), folder);
    return kDone;
}

int textCommand(const std::filesystem::path& file) {
    Output output;
    model::streamText(model::read(file), [&](std::string_view text) { output.write(text); });
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
