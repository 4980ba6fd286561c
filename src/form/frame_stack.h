// The eight property frames on one rectangle, with the order in which they lie on each other: only
// the one on top is seen.
#pragma once

#include <QGroupBox>
#include <QStackedWidget>
#include <array>

namespace stelvan::form {

inline constexpr int kFrames = 8;

class FrameStack : public QStackedWidget {
    Q_OBJECT
public:
    explicit FrameStack(QWidget* parent = nullptr);

    [[nodiscard]] QGroupBox* frame(int index) const {
        return frames_.at(static_cast<std::size_t>(index));
    }
    void bringToFront(int index);
    void sendToBack(int index);
    [[nodiscard]] int front() const { return order_.front(); }

private:
    void moveTo(int index, bool top);

    std::array<QGroupBox*, kFrames> frames_{};
    std::array<int, kFrames> order_{};  // top first
};

}  // namespace stelvan::form
