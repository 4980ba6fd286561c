// The dialog in which the GEM database is chosen: by its path, from the models opened last, or by
// starting a new one. Made afresh for each use; DBFile and LoadStatus are read after it was closed.
#pragma once

#include <QDialog>
#include <QString>

#include "app/user_memory.h"
#include "base/error_info.h"
#include "form/dialogs.h"
#include "model/core/new_model.h"

class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace stelvan::app {

inline constexpr int kDatabaseChosen = 0;
inline constexpr int kNotChosen = 1;

class FrmGEMDatabase : public QDialog {
    Q_OBJECT
public:
    /// Proposes the gem.mdb of `programFolder` where there is one. References must outlive the
    /// object.
    FrmGEMDatabase(base::ErrorInfo& errors, form::Dialogs& commDlg, const QString& programFolder,
                   QWidget* parent = nullptr, UserMemory memory = UserMemory({}));

    /// Why a path is no GEM database, by its name alone; empty where it is one.
    [[nodiscard]] static QString refusalOf(const QString& path);

    /// The text of the path field as it is now.
    [[nodiscard]] QString DBFile() const;
    /// 0 after a confirmed choice, 1 otherwise.
    [[nodiscard]] int LoadStatus() const;

    /// The model that this program has open; its copies are listed, and it is not replaced.
    void setOpenModel(const QString& path) { openModel_ = path; }

    void cmdBrowse_Click();
    void cmdLoad_Click();
    void cmdCancel_Click();
    /// Starts a model from the shipped template in a folder that the user chooses, and loads it.
    void cmdNewModel_Click();
    /// Loads the user's own copy of the demo; makes it where there is none yet.
    void cmdTryDemo_Click();
    /// Lists the earlier copies of the model in the path field.
    void cmdCopies_Click();
    void txtGEMDatabase_Change();
    void txtGEMDatabase_KeyDown(int key);

    /// Escape and the close box act as cmdCancel.
    void reject() override { cmdCancel_Click(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    QWidget* buildPathRow();
    QWidget* buildRecent();
    QLayout* buildButtons();
    void fillRecent();
    void takeRecent();
    void startModel(const QString& folder, model::Template from);
    void Form_Load(const QString& programFolder);
    /// The text after the last separator; empty where there is none.
    [[nodiscard]] static QString lGetFileTitle(const QString& path);
    void handle(const char* procedure, const std::function<void()>& body) const;

    base::ErrorInfo& errors_;
    form::Dialogs& commDlg_;
    UserMemory memory_;
    QString openModel_;
    int loadStatus_ = kNotChosen;
    QLineEdit* txtGEMDatabase_ = nullptr;
    QPushButton* cmdBrowse_ = nullptr;
    QPushButton* cmdLoad_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QPushButton* cmdNewModel_ = nullptr;
    QPushButton* cmdTryDemo_ = nullptr;
    QPushButton* cmdCopies_ = nullptr;
    QTreeWidget* lvwRecent_ = nullptr;
};

}  // namespace stelvan::app
