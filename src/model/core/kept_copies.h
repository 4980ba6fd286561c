// Copies of models as they were, kept by date in a folder of the user's, and put back from there.
//
//   copies/home/kim/line3/gem.mdb/20260314T091500Z.mdb     the model's own path, then the moment
//
// A model is told by its path with links followed. Its latest ten copies stay. Every file is
// written whole or not at all, and only its user may read it: a model holds passwords.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace stelvan::model {

struct KeptCopy {
    std::filesystem::path path;
    std::chrono::sys_seconds made;
    int number = 1;  // among those of the same second
    std::uint64_t bytes = 0;
};

class KeptCopies {
public:
    static constexpr std::size_t kMost = 10;
    using Clock = std::function<std::chrono::sys_seconds()>;

    /// `folder` is made when it is needed.
    explicit KeptCopies(std::filesystem::path folder, Clock now = presentTime);

    /// Keeps the file as it is at one moment, sound or not, and gives the copy's path. Where the
    /// latest copy is the same there is nothing to keep. Throws jet::Error and
    /// std::filesystem::filesystem_error; the copies are then as before.
    std::filesystem::path keep(const std::filesystem::path& model) const;

    /// The newest first.
    [[nodiscard]] std::vector<KeptCopy> of(const std::filesystem::path& model) const;

    /// Puts a copy in the model's place, in one step, after the present file was kept as well; its
    /// permissions stay. The present file may be damaged, or gone. Nobody may have it open: throws
    /// Refusal where a program has, this one included, and what keep() throws; the model is then as
    /// before, or as the copy where the very last step failed.
    void restore(const std::filesystem::path& model, const KeptCopy& copy) const;

    /// The folder of the user who runs the program.
    [[nodiscard]] static std::filesystem::path folderOfUser();
    [[nodiscard]] static std::chrono::sys_seconds presentTime();

private:
    [[nodiscard]] std::filesystem::path folderFor(const std::filesystem::path& place) const;
    [[nodiscard]] std::vector<KeptCopy> in(const std::filesystem::path& folder) const;
    std::filesystem::path keepAt(const std::filesystem::path& place) const;
    void prune(const std::filesystem::path& place) const;

    std::filesystem::path folder_;
    Clock now_;
};

}  // namespace stelvan::model
