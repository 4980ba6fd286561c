#include "tests/support/models.h"

#include <cctype>
#include <cstdlib>
#include <ostream>
#include <stdexcept>
#include <string_view>

namespace stelvan::test {

namespace fs = std::filesystem;

namespace {

/// The other makers' file of the same form.
std::string partnerOf(const std::string& name) {
    constexpr std::string_view kOwn = "shapes/";
    return name.starts_with(kOwn) ? "access/" + name.substr(kOwn.size()) : name;
}

bool foreignIsWanted() {
    const char* wanted = std::getenv("STELVAN_TEST_MODELS");
    return wanted != nullptr && std::string_view(wanted) == "foreign";
}

std::string withUnderscores(std::string name) {
    for (char& c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    }
    return name;
}

fs::path ownFile(const std::string& name) {
    return fs::path(STELVAN_BINARY_DIR) / "tests/models" / name;
}

}  // namespace

fs::path samplesDir() {
    const fs::path folder = STELVAN_SAMPLES_DIR;
    return fs::is_directory(folder) ? folder : fs::path();
}

fs::path sample(const std::string& relative) {
    const fs::path folder = samplesDir();
    if (folder.empty()) return {};
    const fs::path file = folder / relative;
    return fs::exists(file) ? file : fs::path();
}

fs::path model(const std::string& name) {
    if (foreignIsWanted()) {
        if (fs::path foreign = sample(partnerOf(name)); !foreign.empty()) return foreign;
    }
    fs::path file = ownFile(name);
    if (!fs::exists(file)) throw std::runtime_error(file.string() + " was not built");
    return file;
}

fs::path ModelFile::path() const {
    return maker == Maker::Own ? ownFile(name) : sample(partnerOf(name));
}

fs::path ModelFile::expected(const std::string& kind) const {
    const std::string stem = name.substr(0, name.rfind('.'));
    if (maker == Maker::Foreign) {
        std::string known = partnerOf(stem);
        for (char& c : known) c = c == '/' ? '_' : c;
        return sample("expected/" + known + "." + kind);
    }
    const fs::path file = ownFile("expected/" + stem + "." + kind);
    return fs::exists(file) ? file : fs::path();
}

std::string label(const ModelFile& file) {
    const std::string stem = file.name.substr(0, file.name.rfind('.'));
    return withUnderscores((file.maker == Maker::Own ? "own_" : "foreign_") + stem);
}

void PrintTo(const ModelFile& file, std::ostream* out) {
    *out << label(file);
}

std::vector<ModelFile> byOtherMakers(const std::vector<std::string>& names) {
    std::vector<ModelFile> files;
    for (const std::string& name : names) {
        const ModelFile file{name, Maker::Foreign};
        if (!file.path().empty()) files.push_back(file);
    }
    if (files.empty()) files.push_back({"files", Maker::Foreign});
    return files;
}

std::vector<ModelFile> byEveryMaker(const std::vector<std::string>& names) {
    std::vector<ModelFile> files;
    files.reserve(2 * names.size());
    for (const std::string& name : names) files.push_back({name, Maker::Own});
    for (const ModelFile& file : byOtherMakers(names)) files.push_back(file);
    return files;
}

}  // namespace stelvan::test
