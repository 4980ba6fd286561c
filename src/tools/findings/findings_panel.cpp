#include "tools/findings/findings_panel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "form/text.h"
#include "model/check/check.h"
#include "tools/findings/findings_model.h"

namespace stelvan::tools {
namespace {

constexpr int kLeastLines = 3;
constexpr int kWantedLines = 7;
// In characters of usual width: subject, weight, field, text; the last takes the rest.
constexpr int kColumnCharacters[] = {42, 9, 16, 48};
constexpr std::size_t kOpenedAtMost = 200;  // findings of a rule that is shown open at first

/// Wants some lines, and does with few where the window is low.
class FindingsList : public QTreeView {
public:
    [[nodiscard]] QSize sizeHint() const override { return heightOf(kWantedLines); }
    [[nodiscard]] QSize minimumSizeHint() const override { return heightOf(kLeastLines); }

private:
    [[nodiscard]] QSize heightOf(int lines) const {
        const int line = fontMetrics().lineSpacing() + 4;
        return {200, line * (lines + 1) + 2 * frameWidth()};
    }
};

QTreeView* buildList(FindingsModel* model) {
    auto* const list = new FindingsList;
    list->setObjectName(QStringLiteral("lvwFindings"));
    list->setAccessibleName(QStringLiteral("Findings"));
    list->setToolTip(QStringLiteral("Double click on a finding to go to its field"));
    list->setModel(model);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setTabKeyNavigation(false);
    list->setExpandsOnDoubleClick(true);
    return list;
}

QLabel* buildLabel(const char* name) {
    auto* const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    // A long text is cut rather than making the window wider.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

}  // namespace

FindingsPanel::FindingsPanel(QMainWindow& window)
    : QDockWidget(QStringLiteral("Findings"), &window),
      model_(new FindingsModel(this)),
      list_(buildList(model_)),
      summary_(buildLabel("lblFindings")),
      notice_(buildLabel("lblFindingsNotice")),
      stop_(new QPushButton(QStringLiteral("Stop"))) {
    setObjectName(QStringLiteral("fraFindings"));
    setFeatures(QDockWidget::DockWidgetClosable);
    setAllowedAreas(Qt::BottomDockWidgetArea);
    QFont bold = notice_->font();
    bold.setBold(true);
    notice_->setFont(bold);
    stop_->setObjectName(QStringLiteral("cmdStopCheck"));
    stop_->setAutoDefault(false);
    auto* const whole = new QWidget;
    auto* const column = new QVBoxLayout(whole);
    auto* const head = new QHBoxLayout;
    head->addWidget(summary_, 1);
    head->addWidget(notice_, 2);
    head->addWidget(stop_);
    column->addLayout(head);
    column->addWidget(list_, 1);
    setWidget(whole);
    window.addDockWidget(Qt::BottomDockWidgetArea, this);
    list_->installEventFilter(this);
    connect(list_, &QTreeView::doubleClicked, this, [this] { choose(); });
    connect(stop_, &QPushButton::clicked, this, [this] { onStop(); });
    forget();
}

void FindingsPanel::begin() {
    model_->setFindings({});
    setNotice(QString());
    say(QStringLiteral("Checking..."), true);
    show();
    list_->setFocus(Qt::OtherFocusReason);
}

void FindingsPanel::showProgress(const QString& what) {
    say(QStringLiteral("Checking: %1").arg(what), true);
}

void FindingsPanel::showFindings(std::vector<model::Finding> findings) {
    const bool none = findings.empty();
    const QString summary = form::toQt(model::summaryOf(findings));
    model_->setFindings(std::move(findings));
    for (int rule = 0; rule < model_->rowCount(); ++rule) {
        const QModelIndex index = model_->index(rule, 0);
        list_->setExpanded(index, model_->rowCount(index) <= static_cast<int>(kOpenedAtMost));
    }
    if (!none) list_->setCurrentIndex(model_->index(0, 0));
    sizeColumns();
    say(none ? QStringLiteral("Nothing was found.") : summary, false);
}

void FindingsPanel::showFailure(const QString& why) {
    model_->setFindings({});
    say(why, false);
}

void FindingsPanel::setNotice(const QString& text) {
    notice_->setText(text);
    notice_->setToolTip(form::asToolTip(text));
}

void FindingsPanel::say(const QString& text, bool goesOn) {
    summary_->setText(text);
    summary_->setToolTip(form::asToolTip(text));
    list_->setAccessibleDescription(text);
    stop_->setVisible(goesOn);
}

void FindingsPanel::forget() {
    model_->setFindings({});
    setNotice(QString());
    say(QString(), false);
    hide();
}

bool FindingsPanel::hasFindings() const {
    return !model_->findings().empty();
}

void FindingsPanel::sizeColumns() {
    const int character = list_->fontMetrics().averageCharWidth();
    for (int column = 0; column < static_cast<int>(std::size(kColumnCharacters)); ++column)
        list_->setColumnWidth(column, kColumnCharacters[column] * character);
}

void FindingsPanel::choose() {
    if (const model::Finding* finding = model_->findingAt(list_->currentIndex())) {
        const model::Finding chosen = *finding;  // showing it may change the list
        onChosen(chosen);
    }
}

bool FindingsPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched != list_ || event->type() != QEvent::KeyPress)
        return QDockWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) {
        if (stop_->isHidden())
            close();
        else
            onStop();
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    const QModelIndex current = list_->currentIndex();
    if (model_->findingAt(current) == nullptr && current.isValid())
        list_->setExpanded(current.siblingAtColumn(0),
                           !list_->isExpanded(current.siblingAtColumn(0)));
    choose();
    return true;
}

}  // namespace stelvan::tools
