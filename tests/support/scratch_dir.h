// A place for the files of one test.
#pragma once

#include <filesystem>
#include <string>

namespace stelvan::test {

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
