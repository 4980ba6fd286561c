// The panel at the bottom of the window that lists findings: a line that sums them up, notices, and
// the list itself, `lvwFindings`. Hidden until there is something to say.
#pragma once

#include <QDockWidget>
#include <functional>
#include <vector>

#include "model/check/finding.h"

class QLabel;
class QMainWindow;
class QPushButton;
class QTreeView;

namespace stelvan::tools {

class FindingsModel;

class FindingsPanel : public QDockWidget {
    Q_OBJECT
public:
    /// Belongs to `window`, at whose bottom it lies.
    explicit FindingsPanel(QMainWindow& window);

    /// The user chose a finding: double click, or Enter.
    std::function<void(const model::Finding& finding)> onChosen = [](const model::Finding&) {};
    /// `cmdStopCheck` was pressed.
    std::function<void()> onStop = [] {};

    /// Comes up, empty, with the focus; says what goes on until showFindings() or showFailure().
    void begin();
    void showProgress(const QString& what);
    void showFindings(std::vector<model::Finding> findings);
    /// There are no findings, and why.
    void showFailure(const QString& why);
    /// What is to be known about the list, or about the finding that was chosen; empty: nothing.
    void setNotice(const QString& text);
    /// Empty and hidden.
    void forget();

    [[nodiscard]] bool hasFindings() const;
    [[nodiscard]] const QTreeView& list() const { return *list_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void say(const QString& text, bool goesOn);
    void choose();
    void sizeColumns();

    FindingsModel* model_;
    QTreeView* list_;
    QLabel* summary_;
    QLabel* notice_;
    QPushButton* stop_;
};

}  // namespace stelvan::tools
