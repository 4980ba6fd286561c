// The tree of categories: a click loads the category's records and shows its property frame.
//
// One load for each mouse click on a node, and one when keys bring the selection to another node;
// rebuilding the tree, or the focus coming to it, loads nothing.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "browser/grid_view.h"
#include "browser/record_view.h"
#include "links/link_editors.h"

class QMouseEvent;
class QTreeWidgetItem;

namespace stelvan::browser {

class CategoryTree : public QObject {
    Q_OBJECT
public:
    /// All must outlive the object.
    CategoryTree(links::LinkEditors& links, RecordView& records, GridView& grid);

    /// Upwards: edit mode and control access, filled when the window is put together.
    std::function<void(std::int16_t category, bool editing)> lSetEditMode = [](std::int16_t, bool) {
    };
    std::function<void(std::int16_t category, bool locked)> lSetCtrlAccess = [](std::int16_t,
                                                                                bool) {};

    /// Connects mouse and keys of tvwSECSItem. Once, when the window is built.
    void connectTree();
    /// Removes all nodes and adds one for each category.
    void buildNodes();

    /// Shows and loads one category. After a failure none is current, and no record shown.
    void lUpdatePropInfo(std::int16_t index);
    /// Shows the category with this key, in browse mode.
    void tvwSECSItem_NodeClick(const QString& key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCategory(std::int16_t index);
    void forgetCategory();
    /// A press of the left button and its release on one node are a click; nothing else that a
    /// mouse does changes anything. True: the event is used up.
    bool mouse(const QMouseEvent& event);
    /// The highlight stands on the category that is shown, on none where none is.
    void highlightShown();
    void shapeLists(std::int16_t index) const;
    void setStatus(const QString& text);

    form::Window& window_;
    links::LinkEditors& links_;
    RecordView& records_;
    GridView& grid_;
    bool byKeys_ = false;
    const QTreeWidgetItem* pressed_ = nullptr;  // compared only
};

}  // namespace stelvan::browser
