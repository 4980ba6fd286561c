// Our entry in the lock file that Access engines keep beside a database ("gem.ldb" for gem.mdb).
//
// The file lists who has the database open; an entry counts while its user holds a lock on a byte
// that belongs to it. We enter only while we write: that tells the others, and finding one of them
// inside means not to write, because the ranges by which they lock single records are not known.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "jet/disk/file_system.h"

namespace stelvan::jet {

/// Who has entered; both texts as the lock file holds them, up to the first zero.
struct User {
    std::string machine;
    std::string name;
};
/// Those who are inside at this moment; nobody where there is no lock file. Throws
/// PermissionDenied, Io.
[[nodiscard]] std::vector<User> usersOf(FileSystem& files, const std::filesystem::path& database);

class UserEntry {
public:
    /// Throws Locked where another engine has the database open. Cheap where there is no lock file.
    static void requireNobody(FileSystem& files, const std::filesystem::path& database);

    /// Enters. Throws Locked, PermissionDenied, DiskFull, Io. Ours is the only program of its kind
    /// inside at that time: the caller holds the writers' turn.
    UserEntry(FileSystem& files, const std::filesystem::path& database);
    /// Leaves, and removes the file if nobody else is in it.
    ~UserEntry();
    UserEntry(const UserEntry&) = delete;
    UserEntry& operator=(const UserEntry&) = delete;

private:
    FileSystem& files_;
    std::filesystem::path path_;
    std::unique_ptr<OpenFile> file_;
};

}  // namespace stelvan::jet
