// Says in the status bar that another program has changed the file since the category was loaded.
//
// The file's dates are looked at twice a second, and the file itself only once they differ: no lock
// is held, and nobody is waited for while nothing happens. What this program writes does not count.
// Nothing is said while a record is being added or edited; what happened then is said afterwards.
#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <optional>
#include <tuple>

#include "form/window.h"
#include "jet/database.h"

namespace stelvan::browser {

class ChangeNotice : public QObject {
    Q_OBJECT
public:
    /// `window` must outlive the object.
    explicit ChangeNotice(form::Window& window);

    /// From here on: the records shown are those of now. Nothing is watched without records.
    void reset();

private:
    /// What shows without opening it whether a file may have changed.
    using Stamp = std::tuple<std::uint64_t, std::uint64_t, std::int64_t, std::int64_t>;
    [[nodiscard]] std::optional<Stamp> stampNow() const;
    void look();
    /// Nothing while the file cannot be asked.
    [[nodiscard]] std::optional<bool> changedByOthers();

    form::Window& window_;
    QTimer timer_;
    std::optional<jet::Database> database_;
    std::optional<Stamp> stamp_;
    std::uint64_t changes_ = 0;  // by others, when the records were loaded
};

}  // namespace stelvan::browser
