// A file system that fails on demand, over real files: the engine runs on it as on any other.
//
// It counts the operations that change something (and syncs). At a chosen one it stops the program
// (every later operation throws Crash), runs out of space or reports a write error. It also
// remembers which writes, resizes, new names and removals were not synced yet, so that powerCut()
// can show what a medium might hold after the power failed: any subset of them, in pieces. Syncs
// are only noted, never carried out: the tests do not have to wait for the disk.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "jet/disk/file_system.h"

namespace stelvan::test {

/// The program has stopped here; not an error that the engine may handle.
struct Crash {};

enum class Fault {
    Stop,      // nothing happens any more
    StopTorn,  // half of the write happens, then nothing any more
    NoSpace,   // DiskFull, once
    FullForever,
    IoError,  // Io, once
    BrokenForever
};

class FaultyFileSystem final : public jet::FileSystem {
public:
    FaultyFileSystem() : real_(jet::FileSystem::posix()) {}

    /// The operation with this number (from 1) fails; 0: none.
    void failAt(std::uint64_t operation, Fault fault) {
        failAt_ = operation;
        fault_ = fault;
    }
    /// Besides, the program stops at the operation with this number.
    void stopAt(std::uint64_t operation) { stopAt_ = operation; }
    [[nodiscard]] bool stopped() const { return stopped_; }
    [[nodiscard]] std::uint64_t operations() const { return operations_; }
    /// Counts and fails from the start again; what is not synced stays so.
    void startOver(std::uint64_t failAt, Fault fault);

    /// Writes to `folder` one possible state of the medium after a power failure at this moment.
    void powerCut(const std::filesystem::path& folder, std::uint32_t seed) const;

    std::optional<jet::FileStatus> status(const std::filesystem::path& path) override;
    std::unique_ptr<jet::OpenFile> open(const std::filesystem::path& path, Mode mode,
                                        std::uint32_t permissions) override;
    void rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    void replace(const std::filesystem::path& from, const std::filesystem::path& to) override;
    void remove(const std::filesystem::path& path) override;
    void syncFolder(const std::filesystem::path& folder) override;
    bool canCreateIn(const std::filesystem::path& folder) override;

private:
    friend class FaultyFile;

    using Content = std::vector<std::uint8_t>;
    struct Change {
        bool resize = false;
        std::uint64_t offset = 0;  // or the new size
        Content bytes;
        bool sure = false;  // a later sync succeeded
    };
    /// A file, whatever its name: what is surely on the medium, and what may be.
    struct Node {
        std::optional<Content> durable;  // kept from the first change after a sync on
        std::vector<Change> changes;
        std::size_t abandoned = 0;  // so many of them a failed sync has given up on
    };
    /// What a name may lead to after a power failure: the files it led to since the folder was
    /// synced.
    using History = std::vector<std::shared_ptr<Node>>;

    /// Counts; true if the operation is to fail in the middle (StopTorn); throws if it fails at
    /// once.
    bool step();
    void requireAlive() const {
        if (stopped_) throw Crash{};
    }
    History& historyOf(const std::filesystem::path& path);
    void giveName(const std::filesystem::path& from, const std::filesystem::path& to,
                  void (jet::FileSystem::*call)(const std::filesystem::path&,
                                                const std::filesystem::path&));
    void keepContent(const std::filesystem::path& path, Node& node);
    static Content randomState(const Node& node, std::mt19937& random);

    jet::FileSystem& real_;
    std::uint64_t operations_ = 0;
    std::uint64_t failAt_ = 0;
    std::uint64_t stopAt_ = 0;
    Fault fault_ = Fault::Stop;
    bool stopped_ = false;
    std::map<std::filesystem::path, History> names_;
};

}  // namespace stelvan::test
