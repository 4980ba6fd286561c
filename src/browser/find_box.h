// The find box: as one types, the list under it shows the records of all categories that match;
// Enter or a double click shows one of them, Escape gives the tree back.
//
// Names and groups are looked up in the index with each key, descriptions in the file as soon as no
// key waits. Only while browsing.
#pragma once

#include <QObject>
#include <QTimer>
#include <string>
#include <vector>

#include "browser/index/search.h"
#include "browser/record_jump.h"

namespace stelvan::browser {

class FindBox : public QObject {
    Q_OBJECT
public:
    /// All must outlive the object.
    FindBox(form::Window& window, RecordJump& jump, ModelIndex& index);

    /// Connects box and list. Once, when the window is built.
    void connectControls();
    /// Open for typing unless something is being added or edited.
    void follow(bool editing);
    /// The focus goes to the box, its text selected.
    void begin();
    /// Empties the box and shows the tree.
    void end();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look();
    void lookIntoTexts();
    void list();
    void say(const QString& failure);
    void showSelected();
    bool key(QObject* watched, int key);

    form::Window& window_;
    RecordJump& jump_;
    ModelIndex& index_;
    QTimer texts_;
    std::string query_;
    std::vector<Match> found_;
    std::uint64_t moment_ = 0;           // of the index when they were found
    std::vector<RecordAddress> listed_;  // row by row, whatever the index holds by then
};

}  // namespace stelvan::browser
