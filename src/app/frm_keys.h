// The page of all keys, docs/keys.md as it was when the program was built. It stays beside the
// window while one works, and belongs to its parent.
#pragma once

#include <QDialog>

namespace stelvan::app {

class FrmKeys : public QDialog {
    Q_OBJECT
public:
    explicit FrmKeys(QWidget* parent);

    /// The page's text, in Markdown.
    [[nodiscard]] static QString page();
};

}  // namespace stelvan::app
