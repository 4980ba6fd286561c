// F6 and Shift+F6: the focus walks from area to area of the window (tree or find list, fields or
// grid, buttons, exceptions, findings), back to where it was in each. An area in which nothing can
// take the focus is passed by. It does so while a record is being added or edited, too, as Tab
// does.
#pragma once

#include <QPointer>
#include <QWidget>
#include <array>

#include "form/window.h"

namespace stelvan::browser {

class AreaWalk {
public:
    /// `window` must outlive the object.
    explicit AreaWalk(form::Window& window) : window_(window) {}

    void walk(bool backwards);

private:
    static constexpr std::size_t kAreas = 5;
    [[nodiscard]] QWidget* area(std::size_t index) const;
    [[nodiscard]] QWidget* targetIn(std::size_t index) const;

    form::Window& window_;
    std::array<QPointer<QWidget>, kAreas> last_;  // where the focus was in each
};

}  // namespace stelvan::browser
