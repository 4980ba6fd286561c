#include "app/frm_gem_database.h"

#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>

#include "app/frm_copies.h"
#include "base/text.h"
#include "form/text.h"
#include "gem/settings.h"

namespace stelvan::app {
namespace {

constexpr int kEnterKey = 13;
constexpr int kPathCharacters = 60;
constexpr int kRecentLines = 9;
constexpr int kPathRole = Qt::UserRole;
const char* const kWindow = "frmGEMDatabase";

QPushButton* button(const char* name, const char* caption, QWidget* parent) {
    auto* made = new QPushButton(QLatin1String(caption), parent);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    return made;
}

}  // namespace

FrmGEMDatabase::FrmGEMDatabase(base::ErrorInfo& errors, form::Dialogs& commDlg,
                               const QString& programFolder, QWidget* parent, UserMemory memory)
    : QDialog(parent), errors_(errors), commDlg_(commDlg), memory_(std::move(memory)) {
    buildControls();
    handle("Form_Load", [&] { Form_Load(programFolder); });
}

void FrmGEMDatabase::buildControls() {
    setObjectName(QLatin1String(kWindow));
    setWindowTitle(QStringLiteral("GEM Database Setting"));
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(buildPathRow());
    whole->addWidget(buildRecent(), 1);
    whole->addLayout(buildButtons());
    // Here and not on its way up: some desktops' group boxes keep Enter to themselves.
    const std::initializer_list<QWidget*> takers = {txtGEMDatabase_, lvwRecent_,   cmdBrowse_,
                                                    cmdLoad_,        cmdNewModel_, cmdTryDemo_,
                                                    cmdCopies_,      cmdCancel_};
    for (QWidget* taker : takers) taker->installEventFilter(this);
    connect(txtGEMDatabase_, &QLineEdit::textChanged, this, &FrmGEMDatabase::txtGEMDatabase_Change);
    connect(cmdBrowse_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdBrowse_Click);
    connect(cmdLoad_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdLoad_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdCancel_Click);
    connect(cmdNewModel_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdNewModel_Click);
    connect(cmdTryDemo_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdTryDemo_Click);
    connect(cmdCopies_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdCopies_Click);
    connect(lvwRecent_, &QTreeWidget::itemSelectionChanged, this, &FrmGEMDatabase::takeRecent);
    connect(lvwRecent_, &QTreeWidget::itemDoubleClicked, this, &FrmGEMDatabase::cmdLoad_Click);
}

QWidget* FrmGEMDatabase::buildPathRow() {
    auto* fraDB = new QGroupBox(this);
    fraDB->setObjectName(QStringLiteral("fraDB"));
    auto* label = new QLabel(QStringLiteral("GEM Database:"), fraDB);
    label->setObjectName(QStringLiteral("lblGEMDatabase"));
    txtGEMDatabase_ = new QLineEdit(fraDB);
    txtGEMDatabase_->setObjectName(QStringLiteral("txtGEMDatabase"));
    txtGEMDatabase_->setMinimumWidth(fontMetrics().averageCharWidth() * kPathCharacters);
    txtGEMDatabase_->setAccessibleName(QStringLiteral("GEM Database"));
    label->setBuddy(txtGEMDatabase_);
    cmdBrowse_ = button("cmdBrowse", "Browse...", fraDB);
    auto* row = new QHBoxLayout(fraDB);
    row->addWidget(label);
    row->addWidget(txtGEMDatabase_, 1);
    row->addWidget(cmdBrowse_);
    return fraDB;
}

QWidget* FrmGEMDatabase::buildRecent() {
    auto* area = new QWidget(this);
    auto* label = new QLabel(QStringLiteral("Recent models:"), area);
    label->setObjectName(QStringLiteral("lblRecent"));
    lvwRecent_ = new QTreeWidget(area);
    lvwRecent_->setObjectName(QStringLiteral("lvwRecent"));
    lvwRecent_->setAccessibleName(QStringLiteral("Recent models"));
    lvwRecent_->setHeaderLabels({QStringLiteral("Folder"), QStringLiteral("Last opened")});
    lvwRecent_->setRootIsDecorated(false);
    lvwRecent_->setAllColumnsShowFocus(true);
    lvwRecent_->setTextElideMode(Qt::ElideMiddle);
    lvwRecent_->setMinimumHeight(fontMetrics().lineSpacing() * kRecentLines);
    lvwRecent_->header()->setStretchLastSection(false);
    lvwRecent_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    lvwRecent_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    label->setBuddy(lvwRecent_);
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(label);
    column->addWidget(lvwRecent_, 1);
    fillRecent();
    return area;
}

QLayout* FrmGEMDatabase::buildButtons() {
    cmdNewModel_ = button("cmdNewModel", "New model...", this);
    cmdNewModel_->setToolTip(
        QStringLiteral("Starts a model with the items of the standard in a folder of yours"));
    cmdTryDemo_ = button("cmdTryDemo", "Try the demo", this);
    cmdTryDemo_->setToolTip(form::asToolTip(
        QStringLiteral("Opens your own copy of an imaginary wet bench, in %1")
            .arg(memory_.demoFolder().isEmpty() ? QStringLiteral("a folder of yours")
                                                : memory_.demoFolder())));
    cmdCopies_ = button("cmdCopies", "Earlier copies...", this);
    cmdCopies_->setToolTip(
        QStringLiteral("Lists the model as it was before, and restores it from there"));
    cmdLoad_ = button("cmdLoad", "&Load", this);
    cmdCancel_ = button("cmdCancel", "&Cancel", this);
    auto* row = new QHBoxLayout;
    row->addWidget(cmdNewModel_);
    row->addWidget(cmdTryDemo_);
    row->addWidget(cmdCopies_);
    row->addStretch(1);
    row->addWidget(cmdLoad_);
    row->addWidget(cmdCancel_);
    return row;
}

void FrmGEMDatabase::fillRecent() {
    for (const RecentModel& recent : memory_.recentModels()) {
        const QFileInfo file(recent.path);
        auto* row = new QTreeWidgetItem(lvwRecent_,
                                        {form::onOneLine(file.path()),
                                         QLocale().toString(recent.opened, QLocale::ShortFormat)});
        row->setData(0, kPathRole, recent.path);
        row->setToolTip(0, form::asToolTip(recent.path));
        if (file.isFile()) continue;
        row->setDisabled(true);
        row->setToolTip(0, form::asToolTip(QStringLiteral("Not there now: ") + recent.path));
    }
}

void FrmGEMDatabase::takeRecent() {
    const QList<QTreeWidgetItem*> chosen = lvwRecent_->selectedItems();
    if (!chosen.isEmpty()) txtGEMDatabase_->setText(chosen.first()->data(0, kPathRole).toString());
}

void FrmGEMDatabase::handle(const char* procedure, const std::function<void()>& body) const {
    errors_.handle(kWindow, procedure, body);
}

void FrmGEMDatabase::Form_Load(const QString& programFolder) {
    const QString proposal = programFolder + QStringLiteral("/gem.mdb");
    const bool there = gem::lCheckFileDir(form::toUtf8(proposal), gem::PathKind::File);
    txtGEMDatabase_->setText(there ? proposal : QString());
    loadStatus_ = kNotChosen;
}

QString FrmGEMDatabase::DBFile() const {
    return txtGEMDatabase_->text();
}

int FrmGEMDatabase::LoadStatus() const {
    return loadStatus_;
}

void FrmGEMDatabase::txtGEMDatabase_Change() {
    handle("txtGEMDatabase_Change",
           [this] { txtGEMDatabase_->setToolTip(form::asToolTip(txtGEMDatabase_->text())); });
}

void FrmGEMDatabase::txtGEMDatabase_KeyDown(int key) {
    handle("txtGEMDatabase_Keydown", [this, key] {
        if (key == kEnterKey) cmdLoad_Click();
    });
}

void FrmGEMDatabase::cmdBrowse_Click() {
    handle("cmdBrowse_Click", [this] {
        txtGEMDatabase_->setText(commDlg_.openFile(QStringLiteral("Open GEM Database"),
                                                   QStringLiteral("MDB (*.mdb)"),
                                                   txtGEMDatabase_->text()));
    });
}

QString FrmGEMDatabase::refusalOf(const QString& path) {
    if (path.isEmpty()) return QStringLiteral("Please select the GEM Database!");
    if (!path.contains(QLatin1String(".mdb"), Qt::CaseSensitive))
        return QStringLiteral("Please select the correct database type!");
    if (!base::sameWord(form::toUtf8(lGetFileTitle(path)), "GEM.MDB"))
        return QStringLiteral("Please select correct GEM Database: GEM.MDB ");
    return {};
}

void FrmGEMDatabase::cmdLoad_Click() {
    handle("cmdLoad_Click", [this] {
        const QString path = txtGEMDatabase_->text();
        if (const QString refusal = refusalOf(path); !refusal.isEmpty()) {
            commDlg_.message(refusal, form::Icon::Exclamation);
            // Of another name there is nothing to mend.
            if (path.contains(QLatin1String(".mdb"))) txtGEMDatabase_->clear();
            cmdBrowse_->setFocus();
        } else {
            hide();
            loadStatus_ = kDatabaseChosen;
            done(Accepted);
        }
    });
}

void FrmGEMDatabase::startModel(const QString& folder, model::Template from) {
    const QString path = folder + QStringLiteral("/gem.mdb");
    try {
        // What is tried out once more goes on where it was left.
        const bool goesOn = from == model::Template::Demo && QFileInfo(path).isFile();
        if (!goesOn) static_cast<void>(model::newModel(form::toUtf8(folder), from));
    } catch (const std::exception& failure) {
        commDlg_.message(
            QStringLiteral("No model was made: ") + form::toQt(std::string_view(failure.what())),
            form::Icon::Exclamation);
        return;
    }
    txtGEMDatabase_->setText(path);
    cmdLoad_Click();
}

void FrmGEMDatabase::cmdNewModel_Click() {
    handle("cmdNewModel_Click", [this] {
        const QString folder =
            commDlg_.openFolder(QStringLiteral("Folder of the new model"), QDir::homePath());
        if (!folder.isEmpty()) startModel(folder, model::Template::Standard);
    });
}

void FrmGEMDatabase::cmdTryDemo_Click() {
    handle("cmdTryDemo_Click", [this] {
        QString folder = memory_.demoFolder();
        if (folder.isEmpty())
            folder = commDlg_.openFolder(QStringLiteral("Folder of the demo"), QDir::homePath());
        if (!folder.isEmpty()) startModel(folder, model::Template::Demo);
    });
}

void FrmGEMDatabase::cmdCopies_Click() {
    handle("cmdCopies_Click", [this] {
        const QString path = txtGEMDatabase_->text();
        if (path.isEmpty()) {
            commDlg_.message(refusalOf(path), form::Icon::Exclamation);
            cmdBrowse_->setFocus();
            return;
        }
        const bool open = !openModel_.isEmpty() && QFileInfo(path).canonicalFilePath() ==
                                                       QFileInfo(openModel_).canonicalFilePath();
        FrmCopies(errors_, commDlg_, path, memory_.copiesFolder(),
                  open ? FrmCopies::Model::OpenHere : FrmCopies::Model::Free, this)
            .exec();
    });
}

void FrmGEMDatabase::cmdCancel_Click() {
    loadStatus_ = kNotChosen;
    done(Rejected);
}

QString FrmGEMDatabase::lGetFileTitle(const QString& path) {
    return base::trapIn(kWindow, "lGetFileTitle", [&] {
        const qsizetype last =
            std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
        return last < 0 ? QString() : path.mid(last + 1);
    });
}

bool FrmGEMDatabase::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return QDialog::eventFilter(watched, event);
    if (auto* button = qobject_cast<QPushButton*>(watched)) {
        button->click();
    } else {
        if (watched == lvwRecent_ && lvwRecent_->currentItem() != nullptr)
            lvwRecent_->currentItem()->setSelected(true);
        txtGEMDatabase_KeyDown(kEnterKey);
    }
    return true;
}

}  // namespace stelvan::app
