// What the program remembers for its user from one start to the next: the models opened last, and
// for each set-up of screens where the window stood and how it was divided.
//
// It lies in a settings file of the user's. What cannot be read or written there is forgotten; it
// never keeps the program from working.
#pragma once

#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

class QMainWindow;
class QSettings;

namespace stelvan::form {
struct MainForm;
}

namespace stelvan::app {

/// Where the program keeps what is its user's; empty names: nowhere.
struct UserPlaces {
    QString settingsFile;
    QString demoFolder;         // of the model to try things out on
    QString copiesFolder = {};  // of models as they were

    /// The usual places of the user who runs the program.
    [[nodiscard]] static UserPlaces ofUser();
};

struct RecentModel {
    QString path;
    QDateTime opened;
};

class UserMemory {
public:
    explicit UserMemory(UserPlaces places) : places_(std::move(places)) {}

    [[nodiscard]] const QString& demoFolder() const { return places_.demoFolder; }

    [[nodiscard]] const QString& copiesFolder() const { return places_.copiesFolder; }

    /// The newest first, ten at most.
    [[nodiscard]] std::vector<RecentModel> recentModels() const;
    /// A path that leads to no file is not kept.
    void noteOpened(const QString& path) const;

    /// Position, size, dividers and the columns that were dragged, for the screens there are now.
    void keepWindow(const QMainWindow& window, const form::MainForm& form) const;
    /// Leaves the window as it is where nothing is remembered for these screens.
    void restoreWindow(QMainWindow& window, const form::MainForm& form) const;

    /// What the user decided under a name, whatever the screens; nothing where he did not.
    void keepChoice(const QString& name, std::optional<bool> choice) const;
    [[nodiscard]] std::optional<bool> choice(const QString& name) const;

private:
    UserPlaces places_;
};

}  // namespace stelvan::app
