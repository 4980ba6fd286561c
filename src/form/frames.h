// The controls of frmMain, frame by frame, under their own names. Each pointer's widget has the
// same objectName; the widgets belong to the window.
#pragma once

#include <QMap>
#include <QString>
#include <array>

#include "form/field.h"
#include "form/frame_stack.h"
#include "form/list_view.h"

class QAction;
class QLabel;
class QLineEdit;
class QMainWindow;
class QMenu;
class QPlainTextEdit;
class QPushButton;
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

struct VarFrame {
    Field* txtVarID = nullptr;
    Field* txtVarName = nullptr;
    Field* txtVarGroup = nullptr;
    Field* txtVarDesc = nullptr;
    Field* cmbVarFormat = nullptr;
    Field* txtVarMin = nullptr;
    Field* txtVarMax = nullptr;
    Field* txtVarUnit = nullptr;
    Field* txtVarDefValue = nullptr;
    Field* txtVarValue = nullptr;
    Field* txtVarLmtCEID = nullptr;
    Field* txtVarLmtCEName = nullptr;
    /// lvwItemSelection, lvwChildItems, lblExistingItems, lblChildItems, cmdSelect, cmdDeselect,
    /// cmdOrderUp, cmdOrderDown.
    TwoListEditor children;
};

struct RptFrame {
    Field* txtRptID = nullptr;
    Field* txtRptName = nullptr;
    Field* txtRptDesc = nullptr;
    Field* chkRptDefault = nullptr;
    /// lvwVarPool, lvwVarList, lblVarPool, lblVarList, cmdVarSelect, cmdVarDeselect, cmdVarOrderUp,
    /// cmdVarOrderDown.
    TwoListEditor variables;
};

struct EvtFrame {
    Field* txtEvtID = nullptr;
    Field* txtEvtName = nullptr;
    Field* txtEvtGroup = nullptr;
    Field* txtEvtDesc = nullptr;
    Field* chkEvtEnable = nullptr;
    /// lvwRptPool, lvwRptList, lblRptPool, lblRptList, cmdRptSelect, cmdRptDeselect, cmdRptOrderUp,
    /// cmdRptOrderDown.
    TwoListEditor reports;
};

struct AlmFrame {
    Field* txtAlmID = nullptr;
    Field* txtAlmName = nullptr;
    Field* txtAlmGroup = nullptr;
    Field* txtAlmText = nullptr;
    Field* chkAlmEnable = nullptr;
    Field* txtAlmSetCEID = nullptr;
    Field* txtAlmSetCEName = nullptr;
    Field* txtAlmClrCEID = nullptr;
    Field* txtAlmClrCEName = nullptr;
};

struct SttFrame {
    Field* txtSttName = nullptr;
    Field* txtSttValue = nullptr;
    Field* cmbSttValue = nullptr;
    Field* chkSttValue = nullptr;
    QPushButton* cmdSttBrowse = nullptr;
    Field* txtSttDefValue = nullptr;
    Field* cmbSttDefValue = nullptr;
    Field* chkSttDefValue = nullptr;
    QPushButton* cmdSttDefBrowse = nullptr;
};

struct LmtFrame {
    Field* txtLmtID = nullptr;
    Field* txtLmtVarID = nullptr;
    Field* txtLmtUBound = nullptr;
    Field* txtLmtLBound = nullptr;
    Field* txtLmtTransType = nullptr;
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
};

/// Everything on frmMain; built once by buildForm() into the window that is given.
struct MainForm {
    QMap<QString, QString> imlIcons;  // picture files: "Property", "PropSelect"
    QTreeWidget* tvwSECSItem = nullptr;
    FrameStack* frames = nullptr;
    std::array<QGroupBox*, kFrames> Frame{};  // objectName Frame0 to Frame7, pages of the stack
    QTableView* DBGridGEM = nullptr;
    QTabBar* tspData = nullptr;  // tab 0 "Properties" (index 1 of the rules), tab 1 "View All"
    QLabel* lblPropertyType = nullptr;
    QLabel* lblErrorLog = nullptr;
    QPlainTextEdit* txtErrLog = nullptr;
    QStatusBar* StatusBar1 = nullptr;
    QLabel* databasePanel = nullptr;  // the last panel: which file is open
    QLabel* statusPanel = nullptr;    // the first panel of StatusBar1
    QMenu* mnuFile = nullptr;
    QAction* mnuFileDB = nullptr;
    QAction* mnuFileExit = nullptr;
    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpAbout = nullptr;

    VarFrame var;
    RptFrame rpt;
    EvtFrame evt;
    AlmFrame alm;
    SttFrame stt;
    LmtFrame lmt;
    Navigator nav;

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
