#include "model/core/open_in.h"

#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <fstream>

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;

int numberOf(const fs::path& folder) {
    const std::string name = folder.filename().string();
    int number = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), number);
    return read.ec == std::errc() && read.ptr == name.data() + name.size() ? number : 0;
}

bool holds(const fs::path& process, const struct stat& wanted) {
    std::error_code none;
    for (const auto& link : fs::directory_iterator(process / "fd", none)) {
        struct stat found {};
        if (::stat(link.path().c_str(), &found) == 0 && found.st_ino == wanted.st_ino &&
            found.st_dev == wanted.st_dev)
            return true;
    }
    return false;
}

std::string nameOf(const fs::path& process) {
    std::ifstream file(process / "comm");
    std::string name;
    std::getline(file, name);
    return name;
}

}  // namespace

std::vector<Opener> programsWithOpen(const fs::path& file) {
    std::vector<Opener> openers;
    struct stat wanted {};
    if (::stat(file.c_str(), &wanted) != 0) return openers;
    std::error_code none;
    for (const auto& process : fs::directory_iterator("/proc", none)) {
        const int number = numberOf(process.path());
        if (number != 0 && holds(process.path(), wanted))
            openers.push_back({number, nameOf(process.path()), number == ::getpid()});
    }
    return openers;
}

}  // namespace stelvan::model
