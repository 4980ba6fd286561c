#include "gemdb/model_source.h"

#include <stdexcept>

#include "model/core/refusal.h"
#include "model/text/read_text.h"

namespace stelvan::gemdb {

model::Model readModel(const std::filesystem::path& path) {
    try {
        if (std::filesystem::is_directory(path)) return model::readText(path).model;
        return model::read(path);
    } catch (const model::Refusal&) {
        throw;  // each of its lines names a file of the folder
    } catch (const std::exception& failure) {
        const std::string text = failure.what();
        if (text.find(path.string()) != std::string::npos) throw;
        throw std::runtime_error(path.string() + ": " + text);
    }
}

}  // namespace stelvan::gemdb
