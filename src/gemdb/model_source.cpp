#include "gemdb/model_source.h"

#include "model/core/about_file.h"
#include "model/text/read_text.h"

namespace stelvan::gemdb {

model::Model readModel(const std::filesystem::path& path) {
    return model::aboutFile(path, [&] {
        if (std::filesystem::is_directory(path)) return model::readText(path).model;
        return model::read(path);
    });
}

}  // namespace stelvan::gemdb
