// What a check of a database file finds: sentences, each with the page it is about.
//
// A fault breaks a rule of the format. A note is a deviation that the Access engine itself leaves
// behind (pages that nobody owns, counts of system tables that are not kept up) and does no harm; a
// strict check counts notes as faults too.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "jet/disk/error.h"
#include "jet/disk/page.h"

namespace stelvan::jet {

struct Finding {
    PageNumber page = 0;
    std::string text;
    bool isNote = false;
};

class CheckLog {
public:
    explicit CheckLog(bool strict = false) : strict_(strict) {}

    void fault(PageNumber page, std::string text) { add(page, std::move(text), false); }
    void note(PageNumber page, std::string text) { add(page, std::move(text), !strict_); }

    /// Runs one step of a check; what it throws about damage becomes a fault, so that the next
    /// steps still run.
    template <typename Step>
    void attempt(PageNumber page, Step&& step) {
        try {
            std::forward<Step>(step)();
        } catch (const Error& error) {
            if (error.kind() != ErrorKind::Corrupt && error.kind() != ErrorKind::TypeMismatch)
                throw;
            fault(error.page().value_or(page), error.what());
        }
    }

    [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }

private:
    /// A file of noise would give a finding for every byte.
    static constexpr std::size_t kMaxFindings = 1000;

    void add(PageNumber page, std::string text, bool isNote) {
        if (findings_.size() < kMaxFindings) findings_.push_back({page, std::move(text), isNote});
    }

    std::vector<Finding> findings_;
    bool strict_;
};

}  // namespace stelvan::jet
