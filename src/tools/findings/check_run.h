// A check that goes on in a thread of its own, so that the window stays at work.
//
// The file engine's handles of one file belong to one thread. The thread therefore gets a copy of
// the file in memory, which shares nothing with the file, and no lock is held while it works.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "jet/database.h"
#include "model/check/finding.h"

namespace stelvan::tools {

class CheckRun : public QObject {
    Q_OBJECT
public:
    struct Outcome {
        std::vector<model::Finding> findings;
        bool cancelled = false;
        QString failure;  // one line; empty where there was none
    };

    using QObject::QObject;
    /// Cancels what is going on and waits for it.
    ~CheckRun() override;

    /// Both run in the thread of the object, the second once for each start, unless the object is
    /// gone or another run was started by then.
    std::function<void(const QString& what)> onProgress = [](const QString&) {};
    std::function<void(Outcome outcome)> onDone = [](const Outcome&) {};

    /// `copy` belongs to the run from now on and must share its pages with nobody. What was going
    /// on is cancelled and waited for.
    void start(jet::Database copy);
    /// Takes effect at the next step of the check; onDone says so then.
    void cancel();
    [[nodiscard]] bool running() const { return running_; }

private:
    void work(jet::Database& copy, const std::atomic<bool>& stop, unsigned run);
    void finish(Outcome outcome, unsigned run);
    void wait();

    std::thread thread_;
    std::shared_ptr<std::atomic<bool>> stop_;
    bool running_ = false;
    unsigned run_ = 0;  // which one is going on
};

}  // namespace stelvan::tools
