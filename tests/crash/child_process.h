// Child processes that can be killed, and numbers that they share with the test.
#pragma once

#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <new>
#include <thread>

namespace stelvan::test {

/// A number that all processes see.
class SharedNumber {
public:
    SharedNumber()
        : value_(new (::mmap(nullptr, sizeof(std::atomic<std::uint64_t>), PROT_READ | PROT_WRITE,
                             MAP_SHARED | MAP_ANONYMOUS, -1, 0)) std::atomic<std::uint64_t>(0)) {}
    ~SharedNumber() { ::munmap(value_, sizeof *value_); }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;
    std::atomic<std::uint64_t>& operator*() const { return *value_; }

private:
    std::atomic<std::uint64_t>* value_;
};

/// A child process that runs `body`; its exit code is 0 if the body gave true.
class Child {
public:
    explicit Child(const std::function<bool()>& body) : id_(::fork()) {
        if (id_ != 0) return;
        bool good = false;
        try {
            good = body();
        } catch (const std::exception& error) {
            ::dprintf(STDERR_FILENO, "child: %s\n", error.what());
        }
        ::_exit(good ? 0 : 1);
    }
    ~Child() {
        if (id_ > 0) kill();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void kill() {
        ::kill(id_, SIGKILL);
        (void)wait();
    }
    /// True if it ended by itself and was content.
    bool wait() {
        int status = 0;
        ::waitpid(id_, &status, 0);
        id_ = -1;
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    /// Waits until the child, or another, has counted `number` up to `goal`, however long that
    /// takes; false where this child ended before.
    [[nodiscard]] bool runsUntil(const SharedNumber& number, std::uint64_t goal) const {
        while (*number < goal) {
            siginfo_t ended{};
            const bool asked =
                ::waitid(P_PID, static_cast<id_t>(id_), &ended, WEXITED | WNOHANG | WNOWAIT) == 0;
            if (!asked || ended.si_pid == id_) return *number >= goal;
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        return true;
    }

private:
    pid_t id_;
};

}  // namespace stelvan::test
