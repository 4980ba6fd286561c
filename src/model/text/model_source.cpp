#include "model/text/model_source.h"

#include "model/core/about_file.h"
#include "model/text/read_text.h"

namespace stelvan::model {

Model readModel(const std::filesystem::path& path) {
    return aboutFile(path, [&] {
        if (std::filesystem::is_directory(path)) return readText(path).model;
        return read(path);
    });
}

}  // namespace stelvan::model
