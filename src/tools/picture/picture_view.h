// Draws an event's picture. Every box is a button: it says what it stands for to screen readers,
// and leads there by click, Enter or Space. Tab comes to one of them; arrows go on from box to box.
#pragma once

#include <QAbstractButton>
#include <functional>
#include <vector>

#include "model/publish/event_picture.h"

namespace stelvan::tools {

class PictureBoxButton;

class PictureView : public QWidget {
    Q_OBJECT
public:
    explicit PictureView(QWidget* parent = nullptr);

    /// A box was chosen; what it stands for points into what the picture was made from.
    std::function<void(const model::PictureBox& box)> onChosen = [](const model::PictureBox&) {};

    /// Shows a picture in place of the one before, as wide and high as it is. The items of its
    /// boxes must live until the next call.
    void show(model::EventPicture picture);
    /// Shows nothing.
    void clear();
    /// Whether boxes can be chosen; they can be looked at and read in any case.
    void setOpen(bool open);

    /// For pictureOf(): how wide a text is in this view, in the picture's units.
    [[nodiscard]] int widthOf(std::string_view text) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class PictureBoxButton;
    [[nodiscard]] double unit() const;  // in pixels
    void placeBoxes();
    void step(std::size_t from, int key);
    void makeCurrent(std::size_t box);

    model::EventPicture picture_;
    std::vector<PictureBoxButton*> boxes_;
    bool open_ = true;
};

}  // namespace stelvan::tools
