// Lines to be read, and perhaps agreed to, before anything happens: the changes that an import
// would make, all faults for which it is refused.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

namespace stelvan::tools {

struct LinesText {
    QString title;
    QString heading;  // above the lines
    QStringList lines;
    QString accept = {};  // caption of the button that agrees; empty: there is nothing to agree to
};

/// `lblHeading`, `txtLines`, `cmdAccept` and `cmdClose`, which is the default, as are Escape and
/// the close box.
class LinesDialog : public QDialog {
    Q_OBJECT
public:
    LinesDialog(const LinesText& text, QWidget* parent);
};

/// Shows the dialog; true where the user agreed.
bool showLines(const LinesText& text, QWidget* parent);

}  // namespace stelvan::tools
