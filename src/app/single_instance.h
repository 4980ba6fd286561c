// Whether another copy of the program runs for this user of the machine.
//
// The holder keeps a lock on a file in a folder where only this user may write, so that nobody else
// can pretend to be a copy. The lock belongs to the open file: it is gone with the process, however
// that ends. The file itself stays, empty.
#pragma once

#include <filesystem>

namespace stelvan::app {

class SingleInstance {
public:
    /// `folder` is made if need be, for the user alone.
    explicit SingleInstance(std::filesystem::path folder) : folder_(std::move(folder)) {}
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True for the first copy, which holds the lock from then on. False while another copy holds
    /// it. Where no lock can be had at all it is true: rather two copies than none.
    [[nodiscard]] bool acquire();

private:
    std::filesystem::path folder_;
    int file_ = -1;
};

/// Where the copies of this user meet: the folder of the session, else that of the user's state.
[[nodiscard]] std::filesystem::path folderOfUser();

}  // namespace stelvan::app
