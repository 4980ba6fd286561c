// The main window: owns the state and every subsystem, connects control to handler, and starts,
// changes and releases the database.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>

#include "app/user_memory.h"
#include "form/window.h"

namespace stelvan::app {

struct Subsystems;
class FrmKeys;

class FrmMain : public QMainWindow {
    Q_OBJECT
public:
    /// `dialogs` shows all boxes and must outlive the window. `programFolder` is where a gem.mdb is
    /// proposed from. Without places of the user nothing is remembered.
    FrmMain(form::Dialogs& dialogs, QString programFolder, UserPlaces places = {});
    ~FrmMain() override;

    /// The start-up sequence. `isFirstCopy` answers the single-instance rule. A `file` is opened
    /// without the dialog, unless its name says that it is no GEM database. False: the program
    /// ends.
    bool Form_Load(const std::function<bool()>& isFirstCopy, const QString& file = {});
    /// What follows once the database path is known: categories, controls, catalogue, browse mode.
    void start(const QString& databasePath);

    /// Shows the database dialog; true when a path was confirmed and taken over.
    bool lSelectDB();
    /// (Re)builds tree and frames, sets input lengths, hides the link editors.
    void lInitControls();
    void mnuFileDB_Click();
    void mnuFileExit_Click() { close(); }
    void mnuHelpAbout_Click();
    /// The page of all keys, beside the window; the one that is open already comes to the front.
    void showKeys();
    /// Releases the current record set; never refuses.
    void Form_QueryUnload();

    [[nodiscard]] form::Window& window() { return window_; }
    [[nodiscard]] Subsystems& subsystems() { return *subsystems_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addKeysAction();
    bool takeGiven(const QString& file);
    void takeDatabase(const QString& path);
    void forgetRecords();
    void browseNothing();

    QString programFolder_;
    UserMemory memory_;
    QPointer<FrmKeys> keys_;
    form::Window window_;
    std::unique_ptr<Subsystems> subsystems_;
};

}  // namespace stelvan::app
