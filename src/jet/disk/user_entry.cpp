#include "jet/disk/user_entry.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "jet/disk/error.h"
#include "jet/disk/page.h"

namespace stelvan::jet {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kUserLocks = 0x10000001;
constexpr std::uint64_t kUsers = 255;
constexpr ByteRange kAllUsers{kUserLocks, kUsers};
constexpr std::size_t kEntrySize = 64;
constexpr std::size_t kNameSize = 32;  // of the machine, then of the user; each ends with a zero
constexpr std::string_view kUserName = "Admin";

fs::path lockFileOf(fs::path database) {
    return database.replace_extension(".ldb");
}

std::array<std::uint8_t, kEntrySize> makeEntry() {
    std::array<char, kNameSize> machine{};
    if (::gethostname(machine.data(), machine.size() - 1) != 0) machine.fill('\0');
    std::array<std::uint8_t, kEntrySize> entry{};
    std::transform(machine.begin(), machine.end() - 1, entry.begin(),
                   [](char c) { return static_cast<std::uint8_t>(c); });
    std::ranges::copy(kUserName, entry.begin() + kNameSize);
    return entry;
}

[[noreturn]] void throwOccupied(const fs::path& database) {
    throw Error(ErrorKind::Locked,
                "'" + database.string() +
                    "' is open in another program that uses Access files; it can be "
                    "changed once it is closed there.")
        .about(database.string());
}

void requireNobodyIn(OpenFile& lockFile, const fs::path& database) {
    if (lockFile.lockedElsewhere(kAllUsers, LockMode::Exclusive)) throwOccupied(database);
}

std::string textAt(std::span<const std::uint8_t> bytes) {
    const auto end = std::ranges::find(bytes, std::uint8_t{0});
    return {bytes.begin(), end};
}

}  // namespace

std::vector<User> usersOf(FileSystem& files, const fs::path& database) {
    const fs::path path = lockFileOf(database);
    std::vector<User> users;
    if (!files.status(path).has_value()) return users;
    const std::unique_ptr<OpenFile> file = files.open(path, FileSystem::Mode::Read);
    for (std::uint64_t user = 0; user < kUsers; ++user) {
        if (!file->lockedElsewhere({kUserLocks + user, 1}, LockMode::Exclusive)) continue;
        std::array<std::uint8_t, kEntrySize> entry{};
        (void)file->readAt(user * kEntrySize, entry);
        const std::span<const std::uint8_t> bytes = entry;
        users.push_back({textAt(bytes.first(kNameSize)), textAt(bytes.subspan(kNameSize))});
    }
    return users;
}

void UserEntry::requireNobody(FileSystem& files, const fs::path& database) {
    const fs::path path = lockFileOf(database);
    if (!files.status(path).has_value()) return;
    requireNobodyIn(*files.open(path, FileSystem::Mode::Read), database);
}

UserEntry::UserEntry(FileSystem& files, const fs::path& database)
    : files_(files), path_(lockFileOf(database)) {
    file_ = files_.open(path_, FileSystem::Mode::Create);
    requireNobodyIn(*file_, database);
    for (std::uint64_t user = 0; user < kUsers; ++user) {
        if (!file_->tryLock({kUserLocks + user, 1}, LockMode::Exclusive)) continue;
        file_->writeAt(user * kEntrySize, makeEntry());
        return;
    }
    throwOccupied(database);
}

UserEntry::~UserEntry() {
    try {
        if (!file_->lockedElsewhere(kAllUsers, LockMode::Exclusive)) files_.remove(path_);
    } catch (...) {
        // A lock file left behind is harmless: nobody holds a lock in it.
    }
}

}  // namespace stelvan::jet
