#include "gemdb/commands.h"
#include "model/core/new_model.h"

namespace stelvan::gemdb {

int newCommand(const std::filesystem::path& folder, bool demo) {
    const auto from = demo ? model::Template::Demo : model::Template::Standard;
    const std::filesystem::path made = model::newModel(folder, from);
    Output output;
    output.write(made.string() + "\n");
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
