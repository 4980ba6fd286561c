// The keys that lead through the records and about the window: first, last, previous and next
// record, "Go to ID", the find box, the areas, the two tabs.
//
// A field that is closed lets them pass; the grid keeps the keys that move in it. All but the walk
// over the areas are for browsing only.
#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "browser/area_walk.h"
#include "browser/find_box.h"

class QAction;

namespace stelvan::browser {

class RecordKeys : public QObject {
    Q_OBJECT
public:
    /// All must outlive the object.
    RecordKeys(form::Window& window, RecordView& records, RecordJump& jump, FindBox& find,
               ModelIndex& index);

    /// Puts the actions on the window. Once, when it is built.
    void install();
    void follow(bool editing);

    /// Opens the dialog; does nothing without a database.
    void goToId();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class When { Browsing, Always };
    void add(const char* name, const QList<QKeySequence>& keys, When when,
             std::function<void()> run);
    void addMoves();
    /// Runs `move` with the number of records, unless records cannot be moved to now.
    void move(const std::function<void(std::int32_t count)>& move);

    form::Window& window_;
    RecordView& records_;
    RecordJump& jump_;
    FindBox& find_;
    ModelIndex& index_;
    AreaWalk areas_;
    std::vector<QAction*> browsing_;
    QList<QKeySequence> moveKeys_;
};

}  // namespace stelvan::browser
