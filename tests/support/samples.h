// Where the tests find real Access files, and scratch copies to work on.
#pragma once

#include <filesystem>
#include <string>

namespace stelvan::test {

/// The folder of real Access files, or an empty path where it is absent.
std::filesystem::path samplesDir();

/// The full path of one sample (relative to samplesDir()); empty where it is absent.
std::filesystem::path sample(const std::string& relative);

/// A fresh temporary folder, removed with everything in it when the object ends.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir();
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// A writable copy of `source` in this folder, called `name`; its path.
    [[nodiscard]] std::filesystem::path copyOf(const std::filesystem::path& source,
                                               const std::string& name = "gem.mdb") const;

private:
    std::filesystem::path path_;
};

}  // namespace stelvan::test

/// Leaves the running test as skipped where the sample is absent.
#define STELVAN_NEEDS_SAMPLE(relative)           \
    if (stelvan::test::sample(relative).empty()) \
    GTEST_SKIP() << "sample " << (relative) << " is absent"
