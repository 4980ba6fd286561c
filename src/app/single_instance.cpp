#include "app/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "base/user_folders.h"

namespace stelvan::app {
namespace {

constexpr const char* kLockFile = "stelvan.lock";

/// A folder that belongs to this user and that nobody else may write to.
bool isOwn(const std::filesystem::path& folder) {
    struct stat found {};
    return ::lstat(folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) &&
           found.st_uid == ::getuid() && (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

}  // namespace

std::filesystem::path folderOfUser() {
    if (std::filesystem::path session = base::folderNamedBy("XDG_RUNTIME_DIR"); isOwn(session))
        return session;
    return base::stateFolder();
}

SingleInstance::~SingleInstance() {
    if (file_ >= 0) ::close(file_);
}

bool SingleInstance::acquire() {
    if (file_ >= 0) return true;
    std::error_code ignored;
    if (std::filesystem::create_directories(folder_, ignored)) ::chmod(folder_.c_str(), S_IRWXU);
    if (!isOwn(folder_)) return true;
    const int opened = ::open((folder_ / kLockFile).c_str(),
                              O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (opened < 0) return true;
    if (::flock(opened, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        ::close(opened);
        return false;
    }
    file_ = opened;
    return true;
}

}  // namespace stelvan::app
