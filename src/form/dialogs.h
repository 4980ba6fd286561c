// The one door to message boxes and file dialogs. The program uses the real one; tests hand in a
// scripted one and read back what was shown.
#pragma once

#include <QString>

class QWidget;

namespace stelvan::form {

enum class Icon { None, Exclamation };

class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// Text, one OK button, default title "Stelvan" where `title` is empty.
    virtual void message(const QString& text, Icon icon = Icon::None,
                         const QString& title = {}) = 0;

    /// Yes and No; No is the default button, Escape and the close box mean No.
    virtual bool confirm(const QString& text, const QString& title) = 0;

    /// The chosen file, or empty when cancelled. Starts at `start` when that exists. `filter` as Qt
    /// writes it.
    virtual QString openFile(const QString& title, const QString& filter, const QString& start) = 0;

    /// The file to write, or empty when cancelled; an existing one was confirmed. `start` is the
    /// proposed path.
    virtual QString saveFile(const QString& title, const QString& filter, const QString& start) = 0;

    /// The chosen folder, or empty when cancelled.
    virtual QString openFolder(const QString& title, const QString& start) = 0;
};

/// QMessageBox and QFileDialog over the modal dialog in front, else over `parent` (which may be
/// null and must outlive the object).
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }
    void message(const QString& text, Icon icon, const QString& title) override;
    bool confirm(const QString& text, const QString& title) override;
    QString openFile(const QString& title, const QString& filter, const QString& start) override;
    QString saveFile(const QString& title, const QString& filter, const QString& start) override;
    QString openFolder(const QString& title, const QString& start) override;

private:
    [[nodiscard]] QWidget* front() const;

    QWidget* parent_;
};

}  // namespace stelvan::form
