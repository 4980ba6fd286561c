#include "browser/category_tree.h"

#include <QGroupBox>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QTreeWidget>

#include "form/text.h"
#include "gem/categories.h"

namespace stelvan::browser {
namespace {

constexpr int kNeutralFrame = 0;
constexpr int kKeyRole = Qt::UserRole;

const QStringList kEventReportHeaders = {QStringLiteral("Name"), QStringLiteral("ID")};
const QStringList kReportVariableHeaders = {QStringLiteral("Name"), QStringLiteral("ID"),
                                            QStringLiteral("Type"), QStringLiteral("Gem"),
                                            QStringLiteral("Order")};
const std::vector<int> kEventReportWidths = {1, -10};
const std::vector<int> kReportVariableWidths = {1, -10, -6, -3, -5};

}  // namespace

CategoryTree::CategoryTree(links::LinkEditors& links, RecordView& records, GridView& grid)
    : window_(links.checks.window), links_(links), records_(records), grid_(grid) {}

void CategoryTree::connectTree() {
    QTreeWidget* tree = window_.form.tvwSECSItem;
    tree->installEventFilter(this);
    tree->viewport()->installEventFilter(this);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, [this, tree] {
        const auto selected = tree->selectedItems();
        if (byKeys_ && !selected.isEmpty())
            tvwSECSItem_NodeClick(selected.first()->data(0, kKeyRole).toString());
    });
}

bool CategoryTree::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_.form.tvwSECSItem->viewport()) {
        switch (event->type()) {
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick:
            case QEvent::MouseMove:
            case QEvent::MouseButtonRelease:
                return mouse(static_cast<QMouseEvent&>(*event));
            default:
                break;
        }
    } else if (watched == window_.form.tvwSECSItem) {
        if (event->type() == QEvent::KeyPress) byKeys_ = true;
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) byKeys_ = false;
    }
    return QObject::eventFilter(watched, event);
}

bool CategoryTree::mouse(const QMouseEvent& event) {
    QTreeWidget* tree = window_.form.tvwSECSItem;
    QTreeWidgetItem* const node = tree->itemAt(event.position().toPoint());
    byKeys_ = false;
    if (event.type() == QEvent::MouseMove) return event.buttons() != Qt::NoButton;
    const bool plain = event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier;
    if (event.type() != QEvent::MouseButtonRelease) {
        tree->setFocus(Qt::MouseFocusReason);
        pressed_ = plain ? node : nullptr;
        return true;
    }
    const bool clicked = plain && node != nullptr && node == pressed_;
    pressed_ = nullptr;
    if (clicked) tvwSECSItem_NodeClick(node->data(0, kKeyRole).toString());
    return true;
}

void CategoryTree::highlightShown() {
    QTreeWidget* tree = window_.form.tvwSECSItem;
    const QSignalBlocker quiet(tree);
    QTreeWidgetItem* const node = tree->topLevelItem(window_.state.category - 1);
    if (node == nullptr) {
        tree->selectionModel()->clear();
    } else {
        tree->setCurrentItem(node);
    }
    tree->viewport()->update();
}

void CategoryTree::buildNodes() {
    QTreeWidget* tree = window_.form.tvwSECSItem;
    const QSignalBlocker quiet(tree);
    tree->clear();
    QIcon icon;
    icon.addFile(window_.form.imlIcons.value(QStringLiteral("Property")), QSize(), QIcon::Normal);
    icon.addFile(window_.form.imlIcons.value(QStringLiteral("PropSelect")), QSize(),
                 QIcon::Selected);
    for (const gem::CategoryInfo& category : gem::categories().subspan(1)) {
        auto* node = new QTreeWidgetItem(tree, {form::toQt(category.caption)});
        node->setData(0, kKeyRole, form::toQt(category.key));
        node->setIcon(0, icon);
    }
}

void CategoryTree::setStatus(const QString& text) {
    window_.form.statusPanel->setText(text);
    window_.form.statusPanel->repaint();  // the load that follows keeps the window busy
}

void CategoryTree::lUpdatePropInfo(std::int16_t index) {
    base::trap("lUpdatePropInfo", [this, index] {
        const gem::CategoryInfo& category = gem::categoryAt(index);
        const QString caption = form::toQt(category.caption);
        const int frame = static_cast<int>(category.kind);
        window_.form.showFrame(kNeutralFrame);
        setStatus(QStringLiteral("Loading data..."));
        window_.form.lblPropertyType->setText(caption);
        window_.form.frames->frame(frame)->setTitle(caption);
        window_.state.category = index;
        try {
            // Loading shows the first record by itself, as soon as the record set is there.
            window_.operations.lLoadData(std::string(category.query));
        } catch (const base::RunTimeError&) {
            forgetCategory();
            throw;
        }
        window_.form.showFrame(frame);
        setStatus(caption);
    });
}

void CategoryTree::forgetCategory() {
    window_.state.category = gem::NO_CATEGORY;
    records_.lUpdateNavigator();
    window_.showButtons();
    window_.form.clearInputs();
    setStatus(QString());
    grid_.reset();
}

void CategoryTree::shapeLists(std::int16_t index) const {
    if (gem::kindOf(index) == gem::Kind::CollectionEvent) {
        window_.form.reports.selected->setHeaders(kEventReportHeaders);
        window_.form.reports.selected->setWidths(kEventReportWidths);
    } else if (gem::kindOf(index) == gem::Kind::Report) {
        window_.form.variables.selected->setHeaders(kReportVariableHeaders);
        window_.form.variables.selected->setWidths(kReportVariableWidths);
    }
}

void CategoryTree::showCategory(std::int16_t index) {
    if (gem::isCustomVariable(index)) links_.checks.format.lLoadVarFormat(index);
    links_.clear();
    shapeLists(index);
    lUpdatePropInfo(index);
    records_.refreshLists();
}

void CategoryTree::tvwSECSItem_NodeClick(const QString& key) {
    const std::int16_t index = gem::categoryOf(form::toUtf8(key));
    const bool shown =
        index == gem::NO_CATEGORY ||
        window_.errors.handle("tvwSECSItem_NodeClick", [this, index] { showCategory(index); });
    window_.errors.handle("tvwSECSItem_NodeClick", [this, shown] {
        lSetEditMode(window_.state.category, false);
        lSetCtrlAccess(window_.state.category, true);
        if (shown) grid_.tspData_Click();
    });
    highlightShown();
}

}  // namespace stelvan::browser
