#include "gemdb/working.h"

#include <unistd.h>

#include <utility>

namespace stelvan::gemdb {
namespace {

using std::chrono::milliseconds;
constexpr milliseconds kBetween{200};
constexpr const char* kEraseLine = "\r\033[K";

Working* now = nullptr;

}  // namespace

Working::Working(std::string verb, std::FILE* screen, milliseconds quiet)
    : verb_(std::move(verb)), screen_(screen), quiet_(quiet) {
    now = this;
    if (screen_ == nullptr) return;
    clock_ = std::thread([this] {
        std::unique_lock lock(mutex_);
        ended_.wait_for(lock, quiet_, [this] { return over_; });
        while (!over_) {
            show();
            ended_.wait_for(lock, kBetween, [this] { return over_; });
        }
    });
}

Working::~Working() {
    now = nullptr;
    if (!clock_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        over_ = true;
        erase();
    }
    ended_.notify_all();
    clock_.join();
}

Working* Working::current() {
    return now;
}

model::Progress Working::progress() {
    if (now == nullptr || now->screen_ == nullptr) return {};
    return [](std::string_view what, std::size_t done, std::size_t total) {
        const std::size_t percent = total == 0 ? 0 : 100 * done / total;
        const std::lock_guard lock(now->mutex_);
        now->step_ = std::string(what) + ", " + std::to_string(percent) + " %";
    };
}

void Working::makeRoom() {
    if (screen_ == nullptr) return;
    const std::lock_guard lock(mutex_);
    erase();
}

std::FILE* Working::terminal() {
    return ::isatty(STDERR_FILENO) != 0 ? stderr : nullptr;
}

void Working::show() {
    const auto time = std::chrono::steady_clock::now() - begun_;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
    const std::string step = step_.empty() ? std::string() : ": " + step_;
    std::fprintf(screen_, "%s%s%s (%lld s)", kEraseLine, verb_.c_str(), step.c_str(),
                 static_cast<long long>(seconds));
    std::fflush(screen_);
    shown_ = true;
}

void Working::erase() {
    if (!shown_) return;
    std::fputs(kEraseLine, screen_);
    std::fflush(screen_);
    shown_ = false;
}

}  // namespace stelvan::gemdb
