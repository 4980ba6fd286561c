#include "app/frm_main.h"

#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>

#include "app/frm_about.h"
#include "app/frm_gem_database.h"
#include "app/subsystems.h"
#include "form/text.h"

namespace stelvan::app {
namespace {

constexpr int kNameLength = 100;
constexpr int kTextLength = 1000;
constexpr int kNeutralFrame = 0;
constexpr int kPathCharacters = 60;

}  // namespace

FrmMain::FrmMain(form::Dialogs& dialogs, QString programFolder)
    : dialogs_(dialogs),
      programFolder_(std::move(programFolder)),
      errors_([this](const std::string& line) {
          dialogs_.message(form::toQt(line), form::Icon::Exclamation);
      }),
      form_(form::buildForm(*this)),
      subsystems_(
          std::make_unique<Subsystems>(Ground{*this, dialogs_, errors_, state_, adoGEM_, form_})) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Stelvan"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/stelvan.svg")));
    connectHandlers();
    connectUpwardCalls();
}

FrmMain::~FrmMain() = default;

bool FrmMain::Form_Load(const std::function<bool()>& isFirstCopy) {
    bool goesOn = false;
    errors_.trap("Form_Load", [&] {
        if (!isFirstCopy()) {
            dialogs_.message(QStringLiteral("Cannot run more than 1 copy of Stelvan application"));
            return;
        }
        if (!lSelectDB()) return;
        start(form::toQt(state_.databasePath));
        goesOn = true;
    });
    return goesOn;
}

void FrmMain::start(const QString& databasePath) {
    takeDatabase(databasePath);
    subsystems_->categories.lInitPropInfo();
    lInitControls();
    subsystems_->catalogue = gem::lInitErrInfo();
    browseNothing();
}

bool FrmMain::lSelectDB() {
    bool chosen = false;
    errors_.trap("lSelectDB", [&] {
        FrmGEMDatabase dialog(errors_, dialogs_, programFolder_, isVisible() ? this : nullptr);
        dialog.exec();
        if (dialog.LoadStatus() != kDatabaseChosen) return;
        takeDatabase(dialog.DBFile());
        chosen = true;
    });
    return chosen;
}

void FrmMain::takeDatabase(const QString& path) {
    state_.databasePath = form::toUtf8(path);
    const int room = fontMetrics().averageCharWidth() * kPathCharacters;
    form_.databasePanel->setText(fontMetrics().elidedText(path, Qt::ElideMiddle, room));
    form_.databasePanel->setToolTip(path);
}

void FrmMain::lInitControls() {
    errors_.trap("lInitControls", [this] {
        subsystems_->categoryTree.buildNodes();
        form_.showFrame(kNeutralFrame);
        for (form::Field* name : {form_.var.txtVarName, form_.evt.txtEvtName, form_.rpt.txtRptName,
                                  form_.alm.txtAlmName})
            name->setMaxLength(kNameLength);
        for (form::Field* text : {form_.var.txtVarDesc, form_.evt.txtEvtDesc, form_.rpt.txtRptDesc,
                                  form_.alm.txtAlmText})
            text->setMaxLength(kTextLength);
        subsystems_->listChildren.lDispChildEditor(false);
        subsystems_->reportVariables.lDispVarListEditor(false);
        subsystems_->eventReports.lDispRptListEditor(false);
    });
}

void FrmMain::browseNothing() {
    state_.current.position = 0;
    subsystems_->recordView.lUpdateNavigator();
    state_.category = form::NO_CATEGORY;
    form_.showFrame(kNeutralFrame);
    subsystems_->access.lSetEditMode(state_.category, false);
}

void FrmMain::forgetRecords() {
    subsystems_->gridView.reset();
    adoGEM_.recordset.reset();
    state_.current.drop();
}

void FrmMain::mnuFileDB_Click() {
    errors_.trap("mnuFileDB_Click", [this] {
        FrmGEMDatabase dialog(errors_, dialogs_, programFolder_, this);
        dialog.exec();
        if (dialog.LoadStatus() != kDatabaseChosen) return;
        takeDatabase(dialog.DBFile());
        lInitControls();
        forgetRecords();
        browseNothing();
        form_.clearInputs();
        subsystems_->listChildren.lUpdateVarChild(false);
        subsystems_->exceptionBox.clear();
        form_.lblPropertyType->clear();
        form_.statusPanel->clear();
    });
}

void FrmMain::mnuHelpAbout_Click() {
    errors_.trap("mnuHelpAbout_Click", [this] { FrmAbout(this).exec(); });
}

void FrmMain::Form_QueryUnload() {
    state_.checksEnabled = false;
    errors_.trap("Form_QueryUnload", [this] { state_.current.drop(); });
}

void FrmMain::closeEvent(QCloseEvent* event) {
    Form_QueryUnload();
    event->accept();
}

void FrmMain::connectHandlers() {
    Subsystems& all = *subsystems_;
    const form::Navigator& nav = form_.nav;
    connect(form_.mnuFileDB, &QAction::triggered, this, &FrmMain::mnuFileDB_Click);
    connect(form_.mnuFileExit, &QAction::triggered, this, &FrmMain::mnuFileExit_Click);
    connect(form_.mnuHelpAbout, &QAction::triggered, this, &FrmMain::mnuHelpAbout_Click);
    connect(form_.tspData, &QTabBar::currentChanged, this,
            [&all] { all.gridView.tspData_Click(); });
    connect(nav.cmdNew, &QPushButton::clicked, this, [&all] { all.editCommands.cmdNew_Click(); });
    connect(nav.cmdUpdate, &QPushButton::clicked, this,
            [&all] { all.editCommands.cmdUpdate_Click(); });
    connect(nav.cmdSave, &QPushButton::clicked, this, [&all] { all.saveRecord.cmdSave_Click(); });
    connect(nav.cmdDelete, &QPushButton::clicked, this,
            [&all] { all.editCommands.cmdDelete_Click(); });
    connect(nav.cmdCancel, &QPushButton::clicked, this,
            [&all] { all.editCommands.cmdCancel_Click(); });
    connect(nav.cmdPrevious, &QPushButton::clicked, this,
            [&all] { all.recordView.cmdPrevious_Click(); });
    connect(nav.cmdNext, &QPushButton::clicked, this, [&all] { all.recordView.cmdNext_Click(); });
    connect(form_.var.children.selected, &form::ListView::itemChecked, this,
            [&all](int row) { all.listChildren.lvwChildItems_ItemCheck(row); });
    all.categoryTree.connectTree();
    all.fieldChecks.connectFields();
    all.settingInputs.connectFields();
    all.selectionLists.connectControls();
    all.focusChain.install();
}

void FrmMain::connectUpwardCalls() {
    Subsystems& all = *subsystems_;
    all.operations.onLoaded = [&all] {
        all.recordView.lUpdateNavigator();
        all.recordView.lDisplayField();
    };
    all.variableFormat.showChildEditor = [&all](bool show) {
        all.listChildren.lUpdateVarChild(show);
        all.listChildren.lDispChildEditor(show);
    };
    all.recordView.cmbVarFormat_Change = [&all] { all.fieldChecks.cmbVarFormat_Change(); };
    all.categoryTree.lSetEditMode = [&all](std::int16_t category, bool editing) {
        all.access.lSetEditMode(category, editing);
    };
    all.categoryTree.lSetCtrlAccess = [&all](std::int16_t category, bool locked) {
        all.access.lSetCtrlAccess(category, locked);
    };
}

}  // namespace stelvan::app
