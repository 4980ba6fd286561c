#include "tests/support/scratch_dir.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace stelvan::test {

namespace fs = std::filesystem;

namespace {

/// In memory where there is room, so that tests which sync a lot do not wait for a disk.
fs::path scratchParent() {
    constexpr std::uintmax_t kEnough = 512u << 20;
    const fs::path memory = "/dev/shm";
    std::error_code absent;
    const fs::space_info space = fs::space(memory, absent);
    const bool chosen = std::getenv("TMPDIR") != nullptr;
    const bool usable =
        !absent && space.available >= kEnough && ::access(memory.c_str(), W_OK) == 0;
    return !chosen && usable ? memory : fs::temp_directory_path();
}

}  // namespace

ScratchDir::ScratchDir() {
    std::string pattern = (scratchParent() / "stelvan-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder: " + pattern);
    path_ = pattern;
}

ScratchDir::~ScratchDir() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ScratchDir::copyOf(const fs::path& source, const std::string& name) const {
    const fs::path copy = path_ / name;
    fs::copy_file(source, copy, fs::copy_options::overwrite_existing);
    fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write);
    return copy;
}

}  // namespace stelvan::test
