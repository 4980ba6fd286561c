#include "model/publish/publication.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <optional>
#include <span>
#include <stdexcept>

#include "model/check/check.h"
#include "model/core/refusal.h"
#include "model/publish/sml.h"

namespace stelvan::model {
namespace {

std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &local)};
}

}  // namespace

void requireOther(const std::filesystem::path& out, const std::filesystem::path& file) {
    std::error_code absent;
    if (std::filesystem::equivalent(out, file, absent))
        throw std::runtime_error(out.string() + " is the model itself; name another file");
}

void publishInto(const std::filesystem::path& out, const std::filesystem::path& file,
                 const std::function<void(const Sink&)>& write) {
    requireOther(out, file);
    writeWhole(out, write);
}

void publishManual(const Model& model, bool findings, const ManualOptions& options,
                   const Sink& sink, const Progress& progress) {
    requireModel(model);
    std::vector<Finding> found;
    if (findings) found = check(model, {progress});
    std::optional<std::span<const Finding>> annex;
    if (findings) annex = found;
    writeManual(model, annex, options, sink, progress);
}

std::vector<std::string> publishSedd(const Model& model, SeddHeader header, const Sink& sink) {
    if (header.date.empty()) header.date = today();
    const CrossReference references(model);
    Notes notes;
    const Catalogue catalogue = catalogueOf(model, references, notes);
    writeSedd(catalogue, references, header, sink, notes);
    return notes.lines();
}

std::vector<std::string> publishSml(const Model& model, const Sink& sink) {
    const CrossReference references(model);
    Notes notes;
    const Catalogue catalogue = catalogueOf(model, references, notes);
    writeSml(catalogue, references, sink, notes);
    return notes.lines();
}

}  // namespace stelvan::model
