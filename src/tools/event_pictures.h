// The picture of the event on screen, beside its lists: what it sends, as it is stored while
// browsing, and as it is chosen in the lists while adding or editing.
//
// `fraPicture` lies in the event's frame beside the lists; `cmdPicture` folds it. It never makes
// the window wider: where there is no room beside the lists it is not shown, and until the user has
// decided it is open only where there is plenty.
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

#include "browser/browser.h"
#include "model/core/cross_reference.h"
#include "tools/picture/event_excerpt.h"
#include "tools/picture/picture_view.h"

class QFrame;
class QToolButton;

namespace stelvan::tools {

class EventPictures : public QObject {
    Q_OBJECT
public:
    /// `browser` must outlive the object.
    explicit EventPictures(browser::Browser& browser);

    /// A record is shown, or adding or editing has begun or ended; drawn once all is done.
    void follow(bool editing);

    /// What the user has decided; nothing as long as he has not.
    [[nodiscard]] std::optional<bool> chosen() const { return chosen_; }
    void choose(std::optional<bool> open);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void connectControls();
    void fold();
    void draw();
    [[nodiscard]] std::optional<ShownEvent> shownEvent() const;
    void goTo(const model::PictureBox& box);

    struct Drawn {
        explicit Drawn(model::Model excerpt) : model(std::move(excerpt)), references(model) {}
        model::Model model;
        model::CrossReference references;
    };

    browser::Browser& browser_;
    form::Window& window_;
    QToolButton* button_ = nullptr;
    QFrame* frame_ = nullptr;
    PictureView* view_ = nullptr;
    std::unique_ptr<Drawn> drawn_;  // what the boxes point into
    std::optional<bool> chosen_;
    QTimer later_;
};

}  // namespace stelvan::tools
