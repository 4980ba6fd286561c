// The locks on the database file by which the processes that use it take turns.
//
// Four bytes far behind any possible content stand for the rights:
//   queue    held by the writer that is next in line, so that two busy writers alternate
//   reserved held by the one unit of work under way
//   pending  held by a writer that waits for the readers to leave; nobody new comes in
//   shared   held in shared mode by every reader, and alone by a writer while it writes
// They are locks of the open file: a process that dies leaves none behind. Whoever cannot get one
// tries again for about two seconds and then throws Locked.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>

#include "jet/disk/file_system.h"

namespace stelvan::jet {

/// What others do with a database at this moment.
enum class Use { None, Reading, Writing };
[[nodiscard]] Use useOf(OpenFile& file);

class FileLocks {
public:
    static constexpr std::chrono::milliseconds kPatience{2000};

    FileLocks(OpenFile& file, std::filesystem::path path,
              std::chrono::milliseconds patience = kPatience)
        : file_(&file), path_(std::move(path)), patience_(patience) {}

    /// Comes in as a reader.
    void share();
    void unshare() noexcept;

    /// Takes the writers' turn. With `reading`, a reader that must not wait for one who waits for
    /// it.
    void reserve(bool reading);
    /// Takes it if nobody has it.
    [[nodiscard]] bool tryReserve();
    void unreserve() noexcept;

    /// A reader with the turn waits until all other readers have left, and is alone.
    void exclude();
    /// Back to being a reader among others.
    void readmit() noexcept;

private:
    /// Calls `attempt` until it gives true or the patience is spent; what it gave last.
    bool tryForAWhile(const std::function<bool()>& attempt) const;
    [[noreturn]] void throwLocked(const char* why) const;

    OpenFile* file_;
    std::filesystem::path path_;
    std::chrono::milliseconds patience_;
};

}  // namespace stelvan::jet
