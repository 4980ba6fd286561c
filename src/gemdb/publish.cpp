#include <cstdio>

#include "base/text.h"
#include "gemdb/commands.h"
#include "gemdb/working.h"
#include "model/publish/publication.h"

namespace stelvan::gemdb {

namespace fs = std::filesystem;

void publishTo(const std::string& out, const fs::path& file,
               const std::function<void(const model::Sink&)>& write) {
    if (out.empty() || out == "-") {
        Output output;
        write([&](std::string_view text) { output.write(text); });
        return output.finish();
    }
    model::publishInto(out, file, write);
}

void printNotes(const std::vector<std::string>& notes) {
    if (Working* const working = Working::current()) working->makeRoom();
    for (const std::string& note : notes)
        std::fprintf(stderr, "gemdb: note: %s\n", base::onOneLine(note).c_str());
}

}  // namespace stelvan::gemdb
