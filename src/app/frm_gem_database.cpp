#include "app/frm_gem_database.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "base/text.h"
#include "form/text.h"
#include "gem/settings.h"

namespace stelvan::app {
namespace {

constexpr int kEnterKey = 13;
constexpr int kPathCharacters = 60;
const char* const kWindow = "frmGEMDatabase";

QPushButton* button(const char* name, const char* caption, QWidget* parent) {
    auto* made = new QPushButton(QLatin1String(caption), parent);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    return made;
}

}  // namespace

FrmGEMDatabase::FrmGEMDatabase(base::ErrorInfo& errors, form::Dialogs& commDlg,
                               const QString& programFolder, QWidget* parent)
    : QDialog(parent), errors_(errors), commDlg_(commDlg) {
    buildControls();
    handle("Form_Load", [&] { Form_Load(programFolder); });
}

void FrmGEMDatabase::buildControls() {
    setObjectName(QLatin1String(kWindow));
    setWindowTitle(QStringLiteral("GEM Database Setting"));
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
    cmdLoad_ = button("cmdLoad", "&Load", this);
    cmdCancel_ = button("cmdCancel", "&Cancel", this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdLoad_);
    buttons->addWidget(cmdCancel_);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(fraDB);
    whole->addLayout(buttons);
    connect(txtGEMDatabase_, &QLineEdit::textChanged, this, &FrmGEMDatabase::txtGEMDatabase_Change);
    connect(cmdBrowse_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdBrowse_Click);
    connect(cmdLoad_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdLoad_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &FrmGEMDatabase::cmdCancel_Click);
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
           [this] { txtGEMDatabase_->setToolTip(txtGEMDatabase_->text()); });
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

void FrmGEMDatabase::refuse(const QString& message) {
    commDlg_.message(message, form::Icon::Exclamation);
    cmdBrowse_->setFocus();
}

void FrmGEMDatabase::cmdLoad_Click() {
    handle("cmdLoad_Click", [this] {
        const QString path = txtGEMDatabase_->text();
        if (path.isEmpty()) {
            refuse(QStringLiteral("Please select the GEM Database!"));
        } else if (!path.contains(QLatin1String(".mdb"), Qt::CaseSensitive)) {
            refuse(QStringLiteral("Please select the correct database type!"));
        } else if (!base::sameWord(form::toUtf8(lGetFileTitle(path)), "GEM.MDB")) {
            commDlg_.message(QStringLiteral("Please select correct GEM Database: GEM.MDB "),
                             form::Icon::Exclamation);
            txtGEMDatabase_->clear();
            cmdBrowse_->setFocus();
        } else {
            hide();
            loadStatus_ = kDatabaseChosen;
            done(Accepted);
        }
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

void FrmGEMDatabase::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter) {
        QDialog::keyPressEvent(event);
    } else if (txtGEMDatabase_->hasFocus()) {
        txtGEMDatabase_KeyDown(kEnterKey);
    } else if (auto* focused = qobject_cast<QPushButton*>(focusWidget())) {
        focused->click();
    }
}

}  // namespace stelvan::app
