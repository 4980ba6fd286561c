// Where the record on screen is used: said under the heading, listed by a click, each entry a way
// to the user.
//
// Looked up in the index, which is read anew after the display where the file has changed, so that
// no display waits for it.
#pragma once

#include <QObject>
#include <QTimer>
#include <vector>

#include "browser/record_jump.h"

class QMenu;

namespace stelvan::browser {

class UsedIn : public QObject {
    Q_OBJECT
public:
    /// All must outlive the object.
    UsedIn(form::Window& window, RecordJump& jump, ModelIndex& index);

    /// A record was displayed, or none.
    void display(const std::optional<RecordAddress>& shown);
    /// Adding or editing has begun, where nothing is said, or is over. Asks no record: one that is
    /// being moved to has not been displayed yet.
    void follow(bool editing);

private:
    void refresh();
    void lookUp();
    void say();
    void list();
    void addUsers(QMenu& menu, Role role) const;

    form::Window& window_;
    RecordJump& jump_;
    ModelIndex& index_;
    QTimer later_;
    std::optional<RecordAddress> shown_;
    bool editing_ = false;
    std::vector<Use> uses_;
};

}  // namespace stelvan::browser
