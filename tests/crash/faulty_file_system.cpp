#include "tests/crash/faulty_file_system.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include "jet/disk/error.h"

namespace stelvan::test {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSector = 512;

std::vector<std::uint8_t> contentOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

/// A real file whose changes are counted and remembered.
class FaultyFile final : public jet::OpenFile {
public:
    FaultyFile(FaultyFileSystem& files, std::unique_ptr<jet::OpenFile> real,
               std::shared_ptr<FaultyFileSystem::Node> node)
        : files_(files), real_(std::move(real)), node_(std::move(node)) {}

    jet::FileStatus status() override {
        files_.requireAlive();
        return real_->status();
    }

    std::size_t readAt(std::uint64_t offset, std::span<std::uint8_t> into) override {
        files_.requireAlive();
        return real_->readAt(offset, into);
    }

    void writeAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
        const bool torn = files_.step();
        if (torn)
            bytes = bytes.first(bytes.size() / 2 / kSector * kSector);  // a sector is never torn
        remember({false, offset, {bytes.begin(), bytes.end()}, false});
        real_->writeAt(offset, bytes);
        if (torn) throw Crash{};
    }

    void resize(std::uint64_t size) override {
        if (files_.step()) throw Crash{};
        remember({true, size, {}, false});
        real_->resize(size);
    }

    void sync() override {
        try {
            if (files_.step()) throw Crash{};
        } catch (const jet::Error&) {
            // As on real systems: what could not be written now will not be tried again.
            node_->abandoned = node_->changes.size();
            throw;
        }
        for (std::size_t i = node_->abandoned; i < node_->changes.size(); ++i)
            node_->changes[i].sure = true;
        if (node_->abandoned > 0) return;
        node_->changes.clear();
        node_->durable.reset();
    }

    bool tryLock(jet::ByteRange range, jet::LockMode mode) override {
        files_.requireAlive();
        return real_->tryLock(range, mode);
    }
    void unlock(jet::ByteRange range) noexcept override { real_->unlock(range); }
    bool lockedElsewhere(jet::ByteRange range, jet::LockMode mode) override {
        files_.requireAlive();
        return real_->lockedElsewhere(range, mode);
    }

private:
    void remember(FaultyFileSystem::Change change) {
        if (!node_->durable.has_value()) {
            node_->durable.emplace(real_->status().size);
            (void)real_->readAt(0, *node_->durable);
        }
        node_->changes.push_back(std::move(change));
    }

    FaultyFileSystem& files_;
    std::unique_ptr<jet::OpenFile> real_;
    std::shared_ptr<FaultyFileSystem::Node> node_;
};

void FaultyFileSystem::startOver(std::uint64_t failAt, Fault fault) {
    operations_ = 0;
    failAt_ = failAt;
    fault_ = fault;
}

bool FaultyFileSystem::step() {
    requireAlive();
    ++operations_;
    if (operations_ == stopAt_) {
        stopped_ = true;
        throw Crash{};
    }
    const bool now = operations_ == failAt_;
    const bool since = failAt_ != 0 && operations_ >= failAt_;
    const auto fail = [](jet::ErrorKind kind) {
        throw jet::Error(kind, "a fault made by the test");
    };
    switch (fault_) {
        case Fault::Stop:
            if (now) {
                stopped_ = true;
                throw Crash{};
            }
            break;
        case Fault::StopTorn:
            stopped_ = stopped_ || now;
            return now;
        case Fault::NoSpace:
            if (now) fail(jet::ErrorKind::DiskFull);
            break;
        case Fault::FullForever:
            if (since) fail(jet::ErrorKind::DiskFull);
            break;
        case Fault::IoError:
            if (now) fail(jet::ErrorKind::Io);
            break;
        case Fault::BrokenForever:
            if (since) fail(jet::ErrorKind::Io);
            break;
    }
    return false;
}

FaultyFileSystem::History& FaultyFileSystem::historyOf(const fs::path& path) {
    const auto [place, fresh] = names_.try_emplace(path);
    if (fresh) place->second.push_back(fs::exists(path) ? std::make_shared<Node>() : nullptr);
    return place->second;
}

void FaultyFileSystem::keepContent(const fs::path& path, Node& node) {
    if (!node.durable.has_value()) node.durable = contentOf(path);
}

std::optional<jet::FileStatus> FaultyFileSystem::status(const fs::path& path) {
    requireAlive();
    return real_.status(path);
}

std::unique_ptr<jet::OpenFile> FaultyFileSystem::open(const fs::path& path, Mode mode,
                                                      std::uint32_t permissions) {
    requireAlive();
    History& history = historyOf(path);
    const bool creates = history.back() == nullptr && mode != Mode::Read && mode != Mode::ReadWrite;
    if (creates && step()) throw Crash{};
    std::unique_ptr<jet::OpenFile> file = real_.open(path, mode, permissions);
    if (history.back() == nullptr) {
        history.push_back(std::make_shared<Node>());
        history.back()->durable.emplace();
    }
    return std::make_unique<FaultyFile>(*this, std::move(file), history.back());
}

void FaultyFileSystem::giveName(const fs::path& from, const fs::path& to,
                                void (jet::FileSystem::*call)(const fs::path&, const fs::path&)) {
    if (step()) throw Crash{};
    const std::shared_ptr<Node> node = historyOf(from).back();
    if (node != nullptr) keepContent(from, *node);
    if (const std::shared_ptr<Node> replaced = historyOf(to).back()) keepContent(to, *replaced);
    (real_.*call)(from, to);
    historyOf(from).push_back(nullptr);
    historyOf(to).push_back(node);
}

void FaultyFileSystem::rename(const fs::path& from, const fs::path& to) {
    giveName(from, to, &jet::FileSystem::rename);
}

void FaultyFileSystem::replace(const fs::path& from, const fs::path& to) {
    giveName(from, to, &jet::FileSystem::replace);
}

void FaultyFileSystem::remove(const fs::path& path) {
    History& history = historyOf(path);
    if (step()) throw Crash{};
    if (history.back() == nullptr) return;
    keepContent(path, *history.back());
    real_.remove(path);
    history.push_back(nullptr);
}

void FaultyFileSystem::syncFolder(const fs::path& folder) {
    if (step()) throw Crash{};
    for (auto& [path, history] : names_)
        if (jet::folderOf(path) == folder) history.erase(history.begin(), history.end() - 1);
}

bool FaultyFileSystem::canCreateIn(const fs::path& folder) {
    requireAlive();
    return real_.canCreateIn(folder);
}

FaultyFileSystem::Content FaultyFileSystem::randomState(const Node& node, std::mt19937& random) {
    Content content = node.durable.value_or(Content());
    // Some power failures lose nearly everything, some nearly nothing.
    const auto keep = std::uniform_int_distribution<unsigned>(0, 4)(random);
    const auto kept = [&] { return std::uniform_int_distribution<unsigned>(1, 4)(random) <= keep; };
    for (const Change& change : node.changes) {
        if (change.resize) {
            if (change.sure || kept()) content.resize(change.offset);
            continue;
        }
        for (std::size_t done = 0; done < change.bytes.size(); done += kSector) {
            if (!change.sure && !kept()) continue;
            const std::size_t size = std::min(kSector, change.bytes.size() - done);
            const std::size_t at = change.offset + done;
            if (content.size() < at + size) content.resize(at + size);
            std::copy_n(change.bytes.begin() + static_cast<std::ptrdiff_t>(done), size,
                        content.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }
    return content;
}

void FaultyFileSystem::powerCut(const fs::path& folder, std::uint32_t seed) const {
    std::mt19937 random(seed);
    fs::create_directories(folder);
    for (const auto& [path, history] : names_) {
        const std::size_t choice =
            std::uniform_int_distribution<std::size_t>(0, history.size() - 1)(random);
        const std::shared_ptr<Node>& node = history[choice];
        const fs::path target = folder / path.filename();
        fs::remove(target);
        if (node == nullptr) continue;
        const Content content =
            node->durable.has_value() ? randomState(*node, random) : contentOf(path);
        std::ofstream(target, std::ios::binary)
            .write(reinterpret_cast<const char*>(content.data()),
                   static_cast<std::streamsize>(content.size()));
    }
}

}  // namespace stelvan::test
