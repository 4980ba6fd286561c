#include "browser/category_tree.h"

#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>

#include "form/text.h"

namespace stelvan::browser {
namespace {

constexpr int kNeutralFrame = 0;
constexpr int kKeyRole = Qt::UserRole;

const QStringList kEventReportHeaders = {QStringLiteral("Name"), QStringLiteral("ID")};
const QStringList kReportVariableHeaders = {QStringLiteral("Name"), QStringLiteral("ID"),
                                            QStringLiteral("Type"), QStringLiteral("Gem"),
                                            QStringLiteral("Order")};
const std::vector<int> kEventReportWidths = {2, 1};
const std::vector<int> kReportVariableWidths = {1, 1, 1, 1, -5};

}  // namespace

CategoryTree::CategoryTree(form::MainForm& form, form::MainState& state,
                           const CategoryTable& categories, db::Operations& operations,
                           RecordView& records, GridView& grid, checks::VariableFormat& format)
    : form_(form),
      state_(state),
      categories_(categories),
      operations_(operations),
      errors_(operations.errors()),
      records_(records),
      grid_(grid),
      format_(format) {}

void CategoryTree::connectTree() {
    QTreeWidget* tree = form_.tvwSECSItem;
    tree->installEventFilter(this);
    tree->viewport()->installEventFilter(this);
    connect(tree, &QTreeWidget::itemClicked, this, [this](const QTreeWidgetItem* node) {
        tvwSECSItem_NodeClick(node->data(0, kKeyRole).toString());
    });
    connect(tree, &QTreeWidget::itemSelectionChanged, this, [this, tree] {
        const auto selected = tree->selectedItems();
        if (byKeys_ && !selected.isEmpty())
            tvwSECSItem_NodeClick(selected.first()->data(0, kKeyRole).toString());
    });
}

bool CategoryTree::eventFilter(QObject* watched, QEvent* event) {
    const bool dragged = watched == form_.tvwSECSItem->viewport() &&
                         event->type() == QEvent::MouseMove &&
                         static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton;
    if (dragged) return true;  // it would select a node without a click on it
    if (watched == form_.tvwSECSItem) {
        if (event->type() == QEvent::KeyPress) byKeys_ = true;
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) byKeys_ = false;
    } else if (event->type() == QEvent::MouseButtonPress) {
        byKeys_ = false;
    }
    return QObject::eventFilter(watched, event);
}

void CategoryTree::buildNodes() {
    QTreeWidget* tree = form_.tvwSECSItem;
    const QSignalBlocker quiet(tree);
    tree->clear();
    QIcon icon;
    icon.addFile(form_.imlIcons.value(QStringLiteral("Property")), QSize(), QIcon::Normal);
    icon.addFile(form_.imlIcons.value(QStringLiteral("PropSelect")), QSize(), QIcon::Selected);
    for (std::int16_t index = 1; index <= kCategories; ++index) {
        const CategoryInfo& category = categories_.at(index);
        auto* node = new QTreeWidgetItem(tree, {form::toQt(category.caption)});
        node->setData(0, kKeyRole, form::toQt(category.key));
        node->setIcon(0, icon);
    }
}

void CategoryTree::setStatus(const QString& text) {
    form_.statusPanel->setText(text);
    form_.statusPanel->repaint();  // the load that follows keeps the window busy
}

void CategoryTree::lUpdatePropInfo(std::int16_t index) {
    errors_.trap("lUpdatePropInfo", [this, index] {
        const CategoryInfo& category = categories_.at(index);
        const QString caption = form::toQt(category.caption);
        const int frame = static_cast<int>(category.kind);
        form_.showFrame(kNeutralFrame);
        setStatus(QStringLiteral("Loading data..."));
        form_.lblPropertyType->setText(caption);
        form_.frames->frame(frame)->setTitle(caption);
        state_.category = index;
        // Loading shows the first record by itself, as soon as the record set is there.
        if (!operations_.lLoadData(std::string(category.query))) {
            forgetCategory();
            return;
        }
        form_.showFrame(frame);
        setStatus(caption);
    });
}

void CategoryTree::forgetCategory() {
    state_.category = form::NO_CATEGORY;
    records_.lUpdateNavigator();
    form_.clearInputs();
    setStatus(QString());
    for (QPushButton* button : {form_.nav.cmdNew, form_.nav.cmdUpdate, form_.nav.cmdDelete})
        button->setEnabled(false);
    grid_.reset();
}

void CategoryTree::showCategory(std::int16_t index) {
    if (form::isCustomVariable(index)) format_.lLoadVarFormat(index);
    records_.clearLists();
    lUpdatePropInfo(index);
    if (index == form::GEMEVT || index == form::CSTEVT) {
        form_.evt.reports.selected->setHeaders(kEventReportHeaders);
        form_.evt.reports.selected->setWidths(kEventReportWidths);
    } else if (index == form::CSTRPT) {
        form_.rpt.variables.selected->setHeaders(kReportVariableHeaders);
        form_.rpt.variables.selected->setWidths(kReportVariableWidths);
    }
    records_.refreshLists();
}

void CategoryTree::tvwSECSItem_NodeClick(const QString& key) {
    errors_.trap("tvwSECSItem_NodeClick", [this, &key] {
        const std::int16_t index = categories_.indexOf(form::toUtf8(key));
        if (index != 0) showCategory(index);
        lSetEditMode(state_.category, false);
        lSetCtrlAccess(state_.category, true);
        const bool failed = index != 0 && state_.category == form::NO_CATEGORY;
        if (!failed) grid_.tspData_Click();
    });
}

}  // namespace stelvan::browser
