#include "app/user_memory.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>
#include <algorithm>

#include "form/frames.h"
#include "form/text.h"
#include "model/core/kept_copies.h"

namespace stelvan::app {
namespace {

constexpr std::size_t kMostRecent = 10;
const QString kRecent = QStringLiteral("recentModels");
const QString kPath = QStringLiteral("path");
const QString kOpened = QStringLiteral("opened");
const QString kChoices = QStringLiteral("choices");

/// "0+0_1920x1080@1 1920+0_1280x1024@1"
QString screenSetUp() {
    QStringList screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect at = screen->geometry();
        screens << QStringLiteral("%1+%2_%3x%4@%5")
                       .arg(at.x())
                       .arg(at.y())
                       .arg(at.width())
                       .arg(at.height())
                       .arg(screen->devicePixelRatio());
    }
    screens.sort();
    return screens.join(QLatin1Char(' '));
}

struct NamedColumns {
    QString name;
    form::DraggedColumns* columns;
};

std::vector<NamedColumns> columnsOf(const form::MainForm& form) {
    std::vector<NamedColumns> all = {{QStringLiteral("DBGridGEM"), form.gridColumns}};
    for (const form::TwoListEditor* editor : form.editors())
        for (const form::ListView* list : {editor->pool, editor->selected})
            all.push_back({list->objectName(), &list->draggedColumns()});
    return all;
}

}  // namespace

UserPlaces UserPlaces::ofUser() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {config + QStringLiteral("/stelvan/stelvan.ini"), data + QStringLiteral("/stelvan/demo"),
            form::toQt(model::KeptCopies::folderOfUser().string())};
}

std::vector<RecentModel> UserMemory::recentModels() const {
    std::vector<RecentModel> models;
    if (places_.settingsFile.isEmpty()) return models;
    QSettings settings(places_.settingsFile, QSettings::IniFormat);
    const int count = settings.beginReadArray(kRecent);
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        const QString path = settings.value(kPath).toString();
        const QString opened = settings.value(kOpened).toString();
        if (!path.isEmpty()) models.push_back({path, QDateTime::fromString(opened, Qt::ISODate)});
    }
    return models;
}

void UserMemory::noteOpened(const QString& path) const {
    const QFileInfo file(path);
    if (places_.settingsFile.isEmpty() || !file.isFile()) return;
    const QString whole = file.absoluteFilePath();
    std::vector<RecentModel> models = recentModels();
    std::erase_if(models, [&whole](const RecentModel& former) { return former.path == whole; });
    models.insert(models.begin(), {whole, QDateTime::currentDateTime()});
    models.resize(std::min(models.size(), kMostRecent));
    QSettings settings(places_.settingsFile, QSettings::IniFormat);
    settings.beginWriteArray(kRecent, static_cast<int>(models.size()));
    for (std::size_t i = 0; i < models.size(); ++i) {
        settings.setArrayIndex(static_cast<int>(i));
        settings.setValue(kPath, models[i].path);
        settings.setValue(kOpened, models[i].opened.toString(Qt::ISODate));
    }
}

void UserMemory::keepWindow(const QMainWindow& window, const form::MainForm& form) const {
    if (places_.settingsFile.isEmpty()) return;
    QSettings settings(places_.settingsFile, QSettings::IniFormat);
    settings.beginGroup(screenSetUp());
    settings.setValue(QStringLiteral("window"), window.saveGeometry());
    for (const QSplitter* divider : {form.splTree, form.splErrors})
        settings.setValue(divider->objectName(), divider->saveState());
    for (const auto& [name, columns] : columnsOf(form)) settings.setValue(name, columns->widths());
}

void UserMemory::restoreWindow(QMainWindow& window, const form::MainForm& form) const {
    if (places_.settingsFile.isEmpty()) return;
    QSettings settings(places_.settingsFile, QSettings::IniFormat);
    settings.beginGroup(screenSetUp());
    if (settings.contains(QStringLiteral("window")))
        window.restoreGeometry(settings.value(QStringLiteral("window")).toByteArray());
    for (QSplitter* divider : {form.splTree, form.splErrors})
        divider->restoreState(settings.value(divider->objectName()).toByteArray());
    for (const auto& [name, columns] : columnsOf(form))
        columns->setWidths(settings.value(name).toMap());
}

void UserMemory::keepChoice(const QString& name, std::optional<bool> choice) const {
    if (places_.settingsFile.isEmpty() || !choice) return;
    QSettings settings(places_.settingsFile, QSettings::IniFormat);
    settings.beginGroup(kChoices);
    settings.setValue(name, *choice);
}

std::optional<bool> UserMemory::choice(const QString& name) const {
    if (places_.settingsFile.isEmpty()) return std::nullopt;
    QSettings settings(places_.settingsFile, QSettings::IniFormat);
    settings.beginGroup(kChoices);
    if (!settings.contains(name)) return std::nullopt;
    return settings.value(name).toBool();
}

}  // namespace stelvan::app
