// The controls of frmMain, frame by frame, under their own names. Each pointer's widget has the
// same objectName; the widgets belong to the window.
#pragma once

#include <QMap>
#include <QString>
#include <array>

#include "form/aids.h"
#include "form/dragged_columns.h"
#include "form/error_area.h"
#include "form/field.h"
#include "form/frame_stack.h"
#include "form/list_view.h"
#include "gem/controls.h"

class QAction;
class QLabel;
class QLineEdit;
class QMainWindow;
class QMenu;
class QPushButton;
class QSplitter;
class QStatusBar;
class QTabBar;
class QTableView;
class QTreeWidget;
class QWidget;

namespace stelvan::form {

/// A pool list, a selected list and the four buttons between them.
struct TwoListEditor {
    ListView* pool = nullptr;
    ListView* selected = nullptr;
    QLabel* poolLabel = nullptr;
    QLabel* selectedLabel = nullptr;
    QPushButton* select = nullptr;
    QPushButton* deselect = nullptr;
    QPushButton* orderUp = nullptr;
    QPushButton* orderDown = nullptr;
    QLineEdit* poolFilter = nullptr;  // narrows the pool; shown and hidden with it
    QWidget* area =
        nullptr;  // what all of them lie on; gives its room back when both lists are hidden

    /// Shows or hides the pool's side: pool, its label and its filter, and the four buttons.
    void showPool(bool show) const;
    /// Shows or hides the selected list and its label.
    void showSelected(bool show) const;
};

struct Navigator {
    QWidget* fraDBOperation = nullptr;
    QPushButton* cmdNew = nullptr;
    QPushButton* cmdUpdate = nullptr;
    QPushButton* cmdSave = nullptr;
    QPushButton* cmdDelete = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdPrevious = nullptr;
    QPushButton* cmdNext = nullptr;
    QLabel* lblRecNumber = nullptr;

    /// "3 of 17", on the screen and for screen readers.
    void showPlace(int position, int count) const;
};

/// Everything on frmMain; built once by buildForm() into the window that is given.
struct MainForm {
    QMap<QString, QString> imlIcons;  // picture files: "Property", "PropSelect"
    QTreeWidget* tvwSECSItem = nullptr;
    FrameStack* frames = nullptr;
    std::array<QGroupBox*, kFrames> Frame{};  // objectName Frame0 to Frame7, pages of the stack
    QTableView* DBGridGEM = nullptr;
    DraggedColumns* gridColumns = nullptr;
    QTabBar* tspData = nullptr;  // tab 0 "Properties" (index 1 of the rules), tab 1 "View All"
    QLabel* lblPropertyType = nullptr;
    QLabel* lblErrorLog = nullptr;
    ErrorLog* txtErrLog = nullptr;
    QStatusBar* StatusBar1 = nullptr;
    QLabel* databasePanel = nullptr;  // the last panel: which file is open
    QLabel* statusPanel = nullptr;    // the first panel of StatusBar1
    QLabel* lblNotSaved = nullptr;    // the right panel, seen while a record is added or edited
    QSplitter* splTree = nullptr;     // the tree, and all the rest
    QSplitter* splErrors = nullptr;   // the record, and the exception box
    QMenu* mnuFile = nullptr;
    QAction* mnuFileDB = nullptr;
    QAction* mnuFileExit = nullptr;
    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpAbout = nullptr;

    QPushButton* cmdSttBrowse = nullptr;
    QPushButton* cmdSttDefBrowse = nullptr;
    QLabel* lblSttRange = nullptr;    // what the setting takes, with its unit
    QLabel* lblSttMeaning = nullptr;  // what it is for

    /// lvwItemSelection, lvwChildItems, lblExistingItems, lblChildItems, cmdSelect, cmdDeselect,
    /// cmdOrderUp, cmdOrderDown.
    TwoListEditor children;
    /// lvwVarPool, lvwVarList, lblVarPool, lblVarList, cmdVarSelect, cmdVarDeselect, cmdVarOrderUp,
    /// cmdVarOrderDown.
    TwoListEditor variables;
    /// lvwRptPool, lvwRptList, lblRptPool, lblRptList, cmdRptSelect, cmdRptDeselect, cmdRptOrderUp,
    /// cmdRptOrderDown.
    TwoListEditor reports;
    QWidget* eventLower = nullptr;  // that editor, and room for a picture beside it
    Navigator nav;
    Aids aids;

    std::array<Field*, gem::kControls> inputs{};  // by control; null for what is no input

    /// An input by its name. std::logic_error for a control that is none.
    [[nodiscard]] Field& operator[](gem::Control input) const;
    /// Takes a widget in as an input: its objectName is the control's name, its Field a child of
    /// it.
    Field* add(gem::Control input, QWidget* widget);
    /// A selected list by its name, with what belongs to it.
    [[nodiscard]] const TwoListEditor& editorOf(gem::Control selectedList) const;
    [[nodiscard]] std::array<const TwoListEditor*, 3> editors() const;

    /// Brings one property frame to the front.
    void showFrame(int index) const { frames->bringToFront(index); }
    /// Behind all others, so that the one that was below it shows.
    void sendFrameToBack(int index) const { frames->sendToBack(index); }
    [[nodiscard]] int frontFrame() const { return frames->front(); }

    /// Every Field of every frame.
    [[nodiscard]] QList<Field*> fields() const;
    /// Empties all property fields and link lists of all frames.
    void clearInputs() const;
};

/// Builds menus, tree, frames, navigator, exception box and status bar into `window`. Nothing is
/// connected; inputs are closed, pools hidden, frame 0 in front.
[[nodiscard]] MainForm buildForm(QMainWindow& window);

}  // namespace stelvan::form
