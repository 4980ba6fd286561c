#include "gemdb/model_source.h"

#include <stdexcept>

namespace stelvan::gemdb {

model::Model readModel(const std::filesystem::path& path) {
    try {
        return model::read(path);
    } catch (const std::exception& failure) {
        const std::string text = failure.what();
        if (text.find(path.string()) != std::string::npos) throw;
        throw std::runtime_error(path.string() + ": " + text);
    }
}

}  // namespace stelvan::gemdb
