#include "app/single_instance.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace stelvan::app {

SingleInstance::SingleInstance() : SingleInstance("stelvan-" + std::to_string(::getuid())) {}

SingleInstance::SingleInstance(std::string name) : name_(std::move(name)) {}

SingleInstance::~SingleInstance() {
    if (socket_ >= 0) ::close(socket_);
}

bool SingleInstance::acquire() {
    if (socket_ >= 0) return true;
    const int made = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (made < 0) return true;  // no sockets here: rather two copies than none
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // A leading zero byte makes it a name of the kernel's, not a file.
    const std::size_t length = std::min(name_.size(), sizeof address.sun_path - 1);
    std::copy_n(name_.begin(), length, address.sun_path + 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    if (::bind(made, reinterpret_cast<const sockaddr*>(&address), size) != 0 &&
        errno == EADDRINUSE) {
        ::close(made);
        return false;
    }
    socket_ = made;
    return true;
}

}  // namespace stelvan::app
