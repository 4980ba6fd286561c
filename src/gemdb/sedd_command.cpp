#include <array>
#include <ctime>

#include "gemdb/commands.h"
#include "model/publish/sedd.h"

namespace stelvan::gemdb {
namespace {

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &local)};
}

}  // namespace

int seddCommand(const std::filesystem::path& file, const std::string& out,
                model::SeddHeader header) {
    if (header.date.empty()) header.date = today();
    const model::Model content = model::read(file);
    const model::CrossReference references(content);
    model::Notes notes;
    const model::Catalogue catalogue = model::catalogueOf(content, references, notes);
    publishTo(out, file, [&](const model::Sink& sink) {
        model::writeSedd(catalogue, references, header, sink, notes);
    });
    printNotes(notes.lines());
    return kDone;
}

}  // namespace stelvan::gemdb
