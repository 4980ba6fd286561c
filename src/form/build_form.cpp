#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "form/inputs.h"
#include "form/look.h"
#include "form/property_frames.h"

static void loadIcons() {
    Q_INIT_RESOURCE(icons);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/stelvan.svg")));
}

namespace stelvan::form {
namespace {

// The window at first: about 1100 x 760 with the usual font, more with a larger one.
constexpr int kFirstColumns = 175;
constexpr int kFirstLines = 54;
constexpr int kLeastFrameLines = 10;
constexpr const char* kLongestNode = "Custom Equipment Constants";
// What the desktop draws around a window, at least.
constexpr QSize kWindowFrame(16, 48);
constexpr int kNodeMargins = 60;  // picture, frame and room for a scroll bar

template <class W>
W* named(W* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QString tr(const char* text) {
    return QString::fromUtf8(text);
}

QAction* menuItem(QMenu* menu, const char* name, const char* caption) {
    return named(menu->addAction(tr(caption)), name);
}

void buildMenus(QMainWindow& window, MainForm& form) {
    form.mnuFile = named(window.menuBar()->addMenu(tr("&File")), "mnuFile");
    form.mnuFileDB = menuItem(form.mnuFile, "mnuFileDB", "GEM &Database Setting");
    named(form.mnuFile->addSeparator(), "mnuFileBreak1");
    form.mnuFileExit = menuItem(form.mnuFile, "mnuFileExit", "&Exit");
    form.mnuHelp = named(window.menuBar()->addMenu(tr("&Help")), "mnuHelp");
    form.mnuHelpAbout = menuItem(form.mnuHelp, "mnuHelpAbout", "&About");
    form.mnuHelpAbout->setMenuRole(QAction::AboutRole);
}

int treeWidth(const QWidget& tree) {
    return tree.fontMetrics().horizontalAdvance(QLatin1String(kLongestNode)) + kNodeMargins;
}

void buildTree(MainForm& form) {
    form.imlIcons.insert(tr("Property"), tr(":/icons/property.svg"));
    form.imlIcons.insert(tr("PropSelect"), tr(":/icons/prop_select.svg"));
    auto* tree = named(new QTreeWidget, "tvwSECSItem");
    tree->setAccessibleName(tr("Categories"));
    tree->setHeaderHidden(true);
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setMinimumWidth(treeWidth(*tree) / 2);
    form.tvwSECSItem = tree;
}

void buildNeutralFrame(QGroupBox& frame) {
    auto* hint = new QLabel(tr("Choose a category on the left."));
    hint->setAlignment(Qt::AlignCenter);
    hint->setForegroundRole(QPalette::PlaceholderText);
    (new QVBoxLayout(&frame))->addWidget(hint);
}

QTableView* buildGrid(QGroupBox& frame) {
    auto* grid = named(new QTableView, "DBGridGEM");
    grid->setAccessibleName(tr("All records"));
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setAlternatingRowColors(true);
    grid->setWordWrap(false);
    grid->setTabKeyNavigation(false);
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 8);
    auto* layout = new QVBoxLayout(&frame);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(grid);
    return grid;
}

void buildFrames(MainForm& form) {
    form.frames = new FrameStack;
    form.frames->setMinimumHeight(form.frames->fontMetrics().lineSpacing() * kLeastFrameLines);
    for (int i = 0; i < kFrames; ++i)
        form.Frame[static_cast<std::size_t>(i)] = form.frames->frame(i);
    buildNeutralFrame(*form.Frame[0]);
    buildVarFrame(*form.Frame[1], form);
    buildAlmFrame(*form.Frame[2], form);
    buildEvtFrame(*form.Frame[3], form);
    buildLmtFrame(*form.Frame[4], form);
    buildSttFrame(*form.Frame[5], form);
    buildRptFrame(*form.Frame[6], form);
    form.DBGridGEM = buildGrid(*form.Frame[7]);
    form.gridColumns = new DraggedColumns(*form.DBGridGEM->horizontalHeader());
    const char* const captions[] = {"",
                                    "Var Property",
                                    "Alarm Property",
                                    "Collection Event Property",
                                    "Limit Property",
                                    "Protocol Settings",
                                    "Report Property",
                                    ""};
    for (int i = 0; i < kFrames; ++i) form.frames->frame(i)->setTitle(tr(captions[i]));
}

QPushButton* navigatorButton(QHBoxLayout* row, const char* name, const char* caption) {
    auto* button = named(new CommandButton(tr(caption)), name);
    button->setAutoDefault(false);
    row->addWidget(button);
    return button;
}

void buildNavigator(MainForm& form) {
    Navigator& nav = form.nav;
    nav.fraDBOperation = named(new QWidget, "fraDBOperation");
    auto* row = new QHBoxLayout(nav.fraDBOperation);
    row->setContentsMargins(0, 0, 0, 0);
    nav.cmdNew = navigatorButton(row, "cmdNew", "&Add New");
    nav.cmdUpdate = navigatorButton(row, "cmdUpdate", "&Edit");
    nav.cmdDelete = navigatorButton(row, "cmdDelete", "&Delete");
    row->addSpacing(12);
    nav.cmdSave = navigatorButton(row, "cmdSave", "&Save");
    nav.cmdCancel = navigatorButton(row, "cmdCancel", "&Cancel");
    row->addStretch(1);
    nav.cmdPrevious = navigatorButton(row, "cmdPrevious", "&Previous");
    nav.lblRecNumber = named(new QLabel, "lblRecNumber");
    nav.showPlace(0, 0);
    nav.lblRecNumber->setAlignment(Qt::AlignCenter);
    nav.lblRecNumber->setMinimumWidth(
        nav.lblRecNumber->fontMetrics().horizontalAdvance(tr("00000 of 00000")));
    row->addWidget(nav.lblRecNumber);
    nav.cmdNext = navigatorButton(row, "cmdNext", "&Next");
    nav.cmdSave->hide();
    nav.cmdCancel->hide();
}

QWidget* buildErrorBox(MainForm& form) {
    auto* area = new QWidget;
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    form.txtErrLog = named(new ErrorLog, "txtErrLog");
    form.txtErrLog->setAccessibleName(tr("Exception"));
    form.txtErrLog->setToolTip(tr("Double click on a line to go to its field"));
    form.lblErrorLog = named(new QLabel(tr("Exception:")), "lblErrorLog");
    form.lblErrorLog->setBuddy(form.txtErrLog);
    column->addWidget(form.lblErrorLog);
    column->addWidget(form.txtErrLog);
    return area;
}

/// Heading, tabs, frames and navigator.
QWidget* buildRecordArea(MainForm& form) {
    form.lblPropertyType = named(new QLabel, "lblPropertyType");
    QFont heading = form.lblPropertyType->font();
    heading.setPointSizeF(heading.pointSizeF() * 1.25);
    heading.setBold(true);
    form.lblPropertyType->setFont(heading);
    form.tspData = named(new QTabBar, "tspData");
    form.tspData->addTab(tr("Properties"));
    form.tspData->addTab(tr("View All"));
    form.tspData->setFocusPolicy(Qt::StrongFocus);
    form.tspData->setDrawBase(false);
    form.tspData->setExpanding(false);
    form.tspData->setAccessibleName(tr("View"));
    auto* area = new QWidget;
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    auto* head = new QHBoxLayout;
    head->addWidget(form.lblPropertyType, 1);
    head->addWidget(form.tspData);
    column->addLayout(head);
    column->addWidget(form.aids.lblUsedIn);
    column->addWidget(form.frames, 1);
    column->addWidget(form.nav.fraDBOperation);
    return area;
}

/// Its colour follows the theme.
class UnsavedPanel : public QLabel {
public:
    UnsavedPanel() : QLabel(tr("Not saved")) {
        QFont bold = font();
        bold.setBold(true);
        setFont(bold);
        colour();
        hide();
    }

protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange) colour();
    }

private:
    void colour() {
        const QColor wanted = unsavedColour(QGuiApplication::palette());
        QPalette mine = palette();
        if (mine.color(QPalette::Active, QPalette::WindowText) == wanted) return;
        mine.setColor(QPalette::WindowText, wanted);
        setPalette(mine);
    }
};

void buildStatusBar(QMainWindow& window, MainForm& form) {
    form.StatusBar1 = named(window.statusBar(), "StatusBar1");
    form.statusPanel = named(new QLabel, "StatusBar1Panel1");
    form.StatusBar1->addWidget(form.statusPanel, 1);
    form.StatusBar1->addWidget(form.aids.lblNotice);
    form.aids.lblNotice->hide();
    form.databasePanel = named(new QLabel, "StatusBar1Panel2");
    form.databasePanel->setTextFormat(Qt::PlainText);
    form.StatusBar1->addPermanentWidget(form.databasePanel);
    form.lblNotSaved = named(new UnsavedPanel, "lblNotSaved");
    form.StatusBar1->addPermanentWidget(form.lblNotSaved);
}

void closeInputs(const MainForm& form) {
    for (Field* field : form.fields()) {
        field->setLocked(true);
        field->setColour(field->kind() == Field::Kind::Check ? Colour::ButtonFace
                                                             : Colour::WindowBackground);
    }
    for (const TwoListEditor* editor : form.editors()) {
        editor->showPool(false);
        editor->selected->setOpen(false);
    }
    form.children.showSelected(false);
}

QSize firstSize(const QWidget& window) {
    const QFontMetrics font = window.fontMetrics();
    const QSize wanted(font.averageCharWidth() * kFirstColumns, font.lineSpacing() * kFirstLines);
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? wanted : wanted.boundedTo(screen->availableSize() - kWindowFrame);
}

/// The tree beside everything else; the exception box below the record.
QWidget* buildSplitters(MainForm& form, QSize size) {
    auto* rightSide = named(new QSplitter(Qt::Vertical), "splErrors");
    rightSide->setChildrenCollapsible(false);
    rightSide->addWidget(buildRecordArea(form));
    rightSide->addWidget(buildErrorBox(form));
    rightSide->setStretchFactor(0, 1);
    const int errorHeight = rightSide->widget(1)->sizeHint().height();
    rightSide->setSizes({size.height() - errorHeight, errorHeight});
    new GrowWithText(*rightSide, *form.txtErrLog);
    auto* whole = named(new QSplitter(Qt::Horizontal), "splTree");
    whole->setChildrenCollapsible(false);
    whole->addWidget(buildTreeSide(form.aids, form.tvwSECSItem));
    whole->addWidget(rightSide);
    whole->setStretchFactor(1, 1);
    const int nodes = treeWidth(*form.tvwSECSItem);
    whole->setSizes({nodes, size.width() - nodes});
    form.splTree = whole;
    form.splErrors = rightSide;
    return whole;
}

}  // namespace

MainForm buildForm(QMainWindow& window) {
    loadIcons();
    keepGreyedReadable();
    MainForm form;
    buildMenus(window, form);
    form.aids = buildAids(window);
    buildTree(form);
    buildFrames(form);
    buildNavigator(form);
    const QSize first = firstSize(window);
    auto* central = new QWidget;
    auto* margin = new QVBoxLayout(central);
    margin->addWidget(buildSplitters(form, first));
    window.setCentralWidget(central);
    buildStatusBar(window, form);
    QWidget::setTabOrder(form.tvwSECSItem, form.tspData);
    form.tvwSECSItem->setFocus();  // and not the find box above it
    closeInputs(form);
    form.showFrame(0);
    window.resize(first);
    return form;
}

}  // namespace stelvan::form
