#include "browser/change_notice.h"

#include <sys/stat.h>

#include <QLabel>

namespace stelvan::browser {
namespace {

constexpr int kIntervalMs = 500;

std::int64_t nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

ChangeNotice::ChangeNotice(form::Window& window) : window_(window) {
    timer_.setInterval(kIntervalMs);
    connect(&timer_, &QTimer::timeout, this, [this] { look(); });
}

std::optional<ChangeNotice::Stamp> ChangeNotice::stampNow() const {
    struct stat status {};
    if (::stat(window_.operations.path().c_str(), &status) != 0) return std::nullopt;
    return Stamp{status.st_ino, static_cast<std::uint64_t>(status.st_size),
                 nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

void ChangeNotice::reset() {
    timer_.stop();
    window_.form.aids.lblNotice->clear();
    window_.form.aids.lblNotice->hide();
    database_.reset();
    if (window_.state.current.records == nullptr) return;
    try {
        stamp_ = stampNow();
        database_ = jet::Database::open(window_.operations.path(), jet::Access::ReadOnly);
        changes_ = database_->changesByOthers();
        timer_.start();
    } catch (const jet::Error&) {
        database_.reset();  // whoever loads the records reports it
    }
}

std::optional<bool> ChangeNotice::changedByOthers() {
    try {
        return database_->changesByOthers() != changes_;
    } catch (const jet::Error& failure) {
        // Somebody is at work: to be asked again. Any other failure: it is not what it was.
        if (failure.kind() == jet::ErrorKind::Locked) return std::nullopt;
        return true;
    }
}

void ChangeNotice::look() {
    if (window_.state.editing() || !database_) return;
    const std::optional<Stamp> now = stampNow();
    if (now == stamp_) return;
    const bool replaced = !now || !stamp_ || std::get<0>(*now) != std::get<0>(*stamp_);
    if (!replaced) {
        const std::optional<bool> changed = changedByOthers();
        if (changed == false) stamp_ = now;
        if (changed != true) return;
    }
    timer_.stop();
    window_.form.aids.lblNotice->setText(
        QStringLiteral("Changed by another program; click the category to see it"));
    window_.form.aids.lblNotice->show();
}

}  // namespace stelvan::browser
