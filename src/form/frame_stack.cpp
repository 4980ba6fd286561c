#include "form/frame_stack.h"

#include <algorithm>

namespace stelvan::form {

FrameStack::FrameStack(QWidget* parent) : QStackedWidget(parent) {
    for (int i = 0; i < kFrames; ++i) {
        auto* frame = new QGroupBox;
        frame->setObjectName(QStringLiteral("Frame%1").arg(i));
        frames_[static_cast<std::size_t>(i)] = frame;
        order_[static_cast<std::size_t>(i)] = i;
        addWidget(frame);
    }
}

void FrameStack::bringToFront(int index) {
    moveTo(index, true);
}

void FrameStack::sendToBack(int index) {
    moveTo(index, false);
}

void FrameStack::moveTo(int index, bool top) {
    const auto at = std::find(order_.begin(), order_.end(), index);
    if (at == order_.end()) return;
    if (top) {
        std::rotate(order_.begin(), at, at + 1);
    } else {
        std::rotate(at, at + 1, order_.end());
    }
    setCurrentIndex(front());
}

}  // namespace stelvan::form
