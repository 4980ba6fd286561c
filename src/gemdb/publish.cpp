#include <cstdio>
#include <stdexcept>

#include "base/text.h"
#include "gemdb/commands.h"
#include "gemdb/working.h"

namespace stelvan::gemdb {

namespace fs = std::filesystem;

void publishTo(const std::string& out, const fs::path& file,
               const std::function<void(const model::Sink&)>& write) {
    if (out.empty() || out == "-") {
        Output output;
        write([&](std::string_view text) { output.write(text); });
        return output.finish();
    }
    std::error_code absent;
    if (fs::equivalent(out, file, absent))
        throw std::runtime_error(out + " is the model itself; name another file");
    model::writeWhole(out, write);
}

void printNotes(const std::vector<std::string>& notes) {
    if (Working* const working = Working::current()) working->makeRoom();
    for (const std::string& note : notes)
        std::fprintf(stderr, "gemdb: note: %s\n", base::onOneLine(note).c_str());
}

}  // namespace stelvan::gemdb
