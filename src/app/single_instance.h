// Whether another copy of the program runs for this user of the machine.
//
// The holder binds a socket name in the kernel's own name space: it is there while the process
// lives, however that ends, and leaves no file behind.
#pragma once

#include <string>

namespace stelvan::app {

class SingleInstance {
public:
    /// The name that all copies of this user share.
    SingleInstance();
    explicit SingleInstance(std::string name);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True for the first copy, which holds the name from then on. False while another copy holds
    /// it.
    [[nodiscard]] bool acquire();

private:
    std::string name_;
    int socket_ = -1;
};

}  // namespace stelvan::app
