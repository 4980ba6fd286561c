// The copy of the model that is kept before the first write of a session, whatever writes.
#pragma once

#include <filesystem>

#include "form/window.h"

namespace stelvan::editing {

class SafetyCopy {
public:
    /// `window` must outlive the object.
    explicit SafetyCopy(form::Window& window) : window_(window) {}

    /// Where copies are kept; until it is named, none are.
    void setFolder(std::filesystem::path folder) { folder_ = std::move(folder); }

    /// To be asked before each write, with no unit of work open. The first one of a session keeps a
    /// copy of the file as it is. Where none can be kept the user is told why and decides: true
    /// goes on without, and is not asked again; false leaves everything as it is.
    [[nodiscard]] bool mayWrite();

    /// Another database is open: a new session begins.
    void forget() { settled_ = false; }

private:
    form::Window& window_;
    std::filesystem::path folder_;
    bool settled_ = false;
};

}  // namespace stelvan::editing
