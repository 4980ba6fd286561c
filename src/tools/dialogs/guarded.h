// How the work of a tool ends: with the busy pointer while it lasts, and with a box that says why
// where it failed.
#pragma once

#include <QString>
#include <functional>

#include "form/window.h"

class QWidget;

namespace stelvan::tools {

/// The busy pointer, while it lives.
class Busy {
public:
    Busy();
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

/// Runs what the user asked for. All lines of a Refusal are listed under `title`, any other failure
/// is shown in a box; true where there was none.
bool guarded(form::Window& window, QWidget& parent, const QString& title,
             const std::function<void()>& body);

}  // namespace stelvan::tools
