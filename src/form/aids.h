// The aids around the record: the find box above the tree, the tool bar, where the record is used,
// and the notice of changes by other programs. Each widget has its name here as objectName.
#pragma once

class QLabel;
class QLineEdit;
class QMainWindow;
class QToolButton;
class QTreeWidget;
class QWidget;

namespace stelvan::form {

class ListView;
class ToolBar;

struct Aids {
    QLineEdit* txtFind = nullptr;
    ListView* lvwFound = nullptr;      // takes the tree's place while something is looked for
    QToolButton* lblUsedIn = nullptr;  // under the heading; reads like a label, opens a menu
    QLabel* lblNotice = nullptr;       // in the status bar
    ToolBar* tlbModel = nullptr;
    QWidget* findings = nullptr;  // lists what a check found, where something makes one
};

/// Makes the widgets; the tool bar goes into `window`, the others to whoever lays them out.
[[nodiscard]] Aids buildAids(QMainWindow& window);

/// The find box over the tree, and over the list of what was found.
[[nodiscard]] QWidget* buildTreeSide(const Aids& aids, QTreeWidget* tree);

}  // namespace stelvan::form
