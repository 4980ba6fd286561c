#include "tools/findings/check_run.h"

#include <chrono>

#include "form/text.h"
#include "model/check/check.h"

namespace stelvan::tools {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kBetweenWords = std::chrono::milliseconds(50);

/// Ends a check; nothing is wrong.
struct Cancelled {};

QString percentOf(std::string_view what, std::size_t done, std::size_t total) {
    QString text = form::toQt(what);
    if (done > 0 && total > 0) text += QStringLiteral(" %1 %").arg(100 * done / total);
    return text;
}

}  // namespace

CheckRun::~CheckRun() {
    cancel();
    wait();
}

void CheckRun::start(jet::Database copy) {
    cancel();
    wait();
    stop_ = std::make_shared<std::atomic<bool>>(false);
    running_ = true;
    const unsigned run = ++run_;
    auto owned = std::make_shared<jet::Database>(std::move(copy));
    thread_ = std::thread([this, owned = std::move(owned), stop = stop_, run]() mutable {
        work(*owned, *stop, run);
        owned.reset();
    });
}

void CheckRun::cancel() {
    if (stop_) *stop_ = true;
}

void CheckRun::wait() {
    if (thread_.joinable()) thread_.join();
}

void CheckRun::work(jet::Database& copy, const std::atomic<bool>& stop, unsigned run) {
    Clock::time_point next = Clock::now();
    const auto progress = [&](std::string_view what, std::size_t done, std::size_t total) {
        if (stop) throw Cancelled();
        const Clock::time_point now = Clock::now();
        if (now < next) return;
        next = now + kBetweenWords;
        const QString words = percentOf(what, done, total);
        QMetaObject::invokeMethod(
            this,
            [this, words, run] {
                if (run == run_ && running_) onProgress(words);
            },
            Qt::QueuedConnection);
    };
    auto outcome = std::make_shared<Outcome>();
    try {
        outcome->findings = model::checkFile(copy, {.progress = progress});
        outcome->cancelled = stop;
    } catch (const Cancelled&) {
        outcome->cancelled = true;
    } catch (const std::exception& failure) {
        outcome->failure = form::toQt(failure.what());
    }
    QMetaObject::invokeMethod(
        this, [this, outcome, run] { finish(std::move(*outcome), run); }, Qt::QueuedConnection);
}

void CheckRun::finish(Outcome outcome, unsigned run) {
    if (run != run_) return;
    wait();
    running_ = false;
    onDone(std::move(outcome));
}

}  // namespace stelvan::tools
