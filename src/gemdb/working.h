// A line on standard error for what takes longer than a second, so that nobody wonders.
//
// Only on a terminal: what programs read stays as it is. The line is one that replaces itself, and
// it is gone before anything else is printed.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>

#include "model/core/progress.h"

namespace stelvan::gemdb {

class Working {
public:
    static constexpr std::chrono::milliseconds kQuiet{1000};

    /// `verb` is what is being done. Nothing is shown where `screen` is null.
    explicit Working(std::string verb, std::FILE* screen = terminal(),
                     std::chrono::milliseconds quiet = kQuiet);
    ~Working();
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

    /// The work that is going on now, null when none is: one at a time.
    [[nodiscard]] static Working* current();
    /// How far it has come; for whoever does the work.
    [[nodiscard]] static model::Progress progress();
    /// Takes the line away, since something else is about to be printed; it comes back by itself.
    void makeRoom();

    /// Standard error where it is a terminal, else null.
    [[nodiscard]] static std::FILE* terminal();

private:
    void show();
    void erase();

    std::string verb_;
    std::FILE* screen_;
    std::chrono::milliseconds quiet_;
    std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();
    std::mutex mutex_;  // of all below
    std::condition_variable ended_;
    bool over_ = false;
    bool shown_ = false;
    std::string step_;
    std::thread clock_;
};

}  // namespace stelvan::gemdb
