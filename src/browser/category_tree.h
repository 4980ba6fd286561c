// The tree of categories: a click loads the category's records and shows its property frame.
//
// One load for each mouse click on a node, and one when keys bring the selection to another node;
// rebuilding the tree, or the focus coming to it, loads nothing.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "browser/category_table.h"
#include "browser/grid_view.h"
#include "browser/record_view.h"
#include "checks/variable_format.h"
#include "db/operations.h"
#include "form/frames.h"
#include "form/main_state.h"

namespace stelvan::browser {

class CategoryTree : public QObject {
    Q_OBJECT
public:
    /// All references must outlive the object.
    CategoryTree(form::MainForm& form, form::MainState& state, const CategoryTable& categories,
                 db::Operations& operations, RecordView& records, GridView& grid,
                 checks::VariableFormat& format);

    /// Upwards: edit mode and control access, filled when the window is put together.
    std::function<void(std::int16_t category, bool editing)> lSetEditMode = [](std::int16_t, bool) {
    };
    std::function<void(std::int16_t category, bool locked)> lSetCtrlAccess = [](std::int16_t,
                                                                                bool) {};

    /// Connects mouse and keys of tvwSECSItem. Once, when the window is built.
    void connectTree();
    /// Removes all nodes and adds one for each category.
    void buildNodes();

    /// Shows and loads one category.
    void lUpdatePropInfo(std::int16_t index);
    /// Shows the category with this key, in browse mode.
    void tvwSECSItem_NodeClick(const QString& key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCategory(std::int16_t index);
    void forgetCategory();
    void setStatus(const QString& text);

    form::MainForm& form_;
    form::MainState& state_;
    const CategoryTable& categories_;
    db::Operations& operations_;
    base::ErrorInfo& errors_;
    RecordView& records_;
    GridView& grid_;
    checks::VariableFormat& format_;
    bool byKeys_ = false;
};

}  // namespace stelvan::browser
