#include "app/frm_main.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>

#include "app/frm_about.h"
#include "app/frm_gem_database.h"
#include "app/frm_keys.h"
#include "app/subsystems.h"
#include "form/text.h"
#include "gem/kinds.h"

namespace stelvan::app {
namespace {

constexpr int kNeutralFrame = 0;
constexpr int kPathCharacters = 60;
const QString kPictureChoice = QStringLiteral("fraPicture");

}  // namespace

FrmMain::FrmMain(form::Dialogs& dialogs, QString programFolder, UserPlaces places)
    : programFolder_(std::move(programFolder)),
      memory_(std::move(places)),
      window_(*this, dialogs),
      subsystems_(std::make_unique<Subsystems>(*this, window_)) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Stelvan"));
    connect(window_.form.mnuFileDB, &QAction::triggered, this, &FrmMain::mnuFileDB_Click);
    connect(window_.form.mnuFileExit, &QAction::triggered, this, &FrmMain::mnuFileExit_Click);
    connect(window_.form.mnuHelpAbout, &QAction::triggered, this, &FrmMain::mnuHelpAbout_Click);
    addKeysAction();
    subsystems_->connectAll();
    subsystems_->editing.copy.setFolder(form::toUtf8(memory_.copiesFolder()));
    memory_.restoreWindow(*this, window_.form);
    subsystems_->tools.pictures.choose(memory_.choice(kPictureChoice));
}

FrmMain::~FrmMain() = default;

bool FrmMain::Form_Load(const std::function<bool()>& isFirstCopy, const QString& file) {
    bool goesOn = false;
    window_.errors.handle("Form_Load", [&] {
        if (!isFirstCopy()) {
            window_.dialogs.message(
                QStringLiteral("Cannot run more than 1 copy of Stelvan application"));
            return;
        }
        if (!takeGiven(file) && !lSelectDB()) return;
        start(form::toQt(window_.state.databasePath));
        goesOn = true;
    });
    return goesOn;
}

void FrmMain::start(const QString& databasePath) {
    takeDatabase(databasePath);
    lInitControls();
    subsystems_->checks.catalogue = gem::lInitErrInfo();
    browseNothing();
}

bool FrmMain::lSelectDB() {
    bool chosen = false;
    base::trap("lSelectDB", [&] {
        FrmGEMDatabase dialog(window_.errors, window_.dialogs, programFolder_,
                              isVisible() ? this : nullptr, memory_);
        dialog.exec();
        if (dialog.LoadStatus() != kDatabaseChosen) return;
        takeDatabase(dialog.DBFile());
        chosen = true;
    });
    return chosen;
}

bool FrmMain::takeGiven(const QString& file) {
    if (file.isEmpty()) return false;
    const QString refusal = FrmGEMDatabase::refusalOf(file);
    if (refusal.isEmpty()) {
        takeDatabase(file);
    } else {
        window_.dialogs.message(refusal, form::Icon::Exclamation);
    }
    return refusal.isEmpty();
}

void FrmMain::takeDatabase(const QString& path) {
    window_.state.databasePath = form::toUtf8(path);
    subsystems_->editing.copy.forget();
    subsystems_->editing.undo.forget();
    memory_.noteOpened(path);
    const int room = fontMetrics().averageCharWidth() * kPathCharacters;
    window_.form.databasePanel->setText(fontMetrics().elidedText(path, Qt::ElideMiddle, room));
    window_.form.databasePanel->setToolTip(form::asToolTip(path));
}

void FrmMain::lInitControls() {
    base::trap("lInitControls", [this] {
        subsystems_->browser.tree.buildNodes();
        window_.form.showFrame(kNeutralFrame);
        for (std::int16_t kind = 1; kind <= static_cast<std::int16_t>(gem::Kind::Report); ++kind)
            for (const gem::FieldFacts& facts : gem::fieldsOf(static_cast<gem::Kind>(kind)))
                if (facts.length > 0) window_.form[facts.control].setMaxLength(facts.length);
        subsystems_->links.listChildren.lDispChildEditor(false);
        subsystems_->links.reportVariables.lDispVarListEditor(false);
        subsystems_->links.eventReports.lDispRptListEditor(false);
    });
}

void FrmMain::browseNothing() {
    window_.state.current.position = 0;
    subsystems_->browser.records.lUpdateNavigator();
    window_.state.category = gem::NO_CATEGORY;
    window_.form.showFrame(kNeutralFrame);
    subsystems_->editing.access.lSetEditMode(window_.state.category, false);
}

void FrmMain::forgetRecords() {
    subsystems_->browser.grid.reset();
    window_.state.current.drop();
    subsystems_->browser.forgetAids();
    subsystems_->tools.forget();
}

void FrmMain::mnuFileDB_Click() {
    window_.errors.handle("mnuFileDB_Click", [this] {
        FrmGEMDatabase dialog(window_.errors, window_.dialogs, programFolder_, this, memory_);
        dialog.setOpenModel(form::toQt(window_.state.databasePath));
        dialog.exec();
        if (dialog.LoadStatus() != kDatabaseChosen) return;
        takeDatabase(dialog.DBFile());
        lInitControls();
        forgetRecords();
        browseNothing();
        window_.form.clearInputs();
        subsystems_->links.listChildren.lUpdateVarChild(false);
        subsystems_->checks.box.clear();
        window_.form.lblPropertyType->clear();
        window_.form.statusPanel->clear();
    });
}

void FrmMain::mnuHelpAbout_Click() {
    window_.errors.handle("mnuHelpAbout_Click", [this] { FrmAbout(this).exec(); });
}

void FrmMain::addKeysAction() {
    auto* const action = new QAction(this);
    action->setObjectName(QStringLiteral("actKeys"));
    action->setShortcut(QKeySequence(Qt::Key_F1));
    connect(action, &QAction::triggered, this, &FrmMain::showKeys);
    addAction(action);
}

void FrmMain::showKeys() {
    if (keys_.isNull()) {
        keys_ = new FrmKeys(this);
        keys_->setAttribute(Qt::WA_DeleteOnClose);
    }
    keys_->show();
    keys_->raise();
    keys_->activateWindow();
}

void FrmMain::Form_QueryUnload() {
    window_.state.checksEnabled = false;
    window_.errors.handle("Form_QueryUnload", [this] { window_.state.current.drop(); });
}

void FrmMain::closeEvent(QCloseEvent* event) {
    Form_QueryUnload();
    memory_.keepWindow(*this, window_.form);
    memory_.keepChoice(kPictureChoice, subsystems_->tools.pictures.chosen());
    event->accept();
}

}  // namespace stelvan::app
