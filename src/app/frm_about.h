// The About box.
#pragma once

#include <QDialog>

namespace stelvan::app {

class FrmAbout : public QDialog {
    Q_OBJECT
public:
    explicit FrmAbout(QWidget* parent = nullptr);

    void cmdOk_Click() { accept(); }

protected:
    /// Enter closes it wherever the focus is, as Escape does.
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] static QString versionText();
};

}  // namespace stelvan::app
