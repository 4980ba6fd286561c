#include "tools/exchange.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QTabBar>

#include "form/text.h"
#include "model/core/refusal.h"
#include "model/text/export_text.h"
#include "model/text/import_sheet.h"
#include "model/text/import_text.h"
#include "model/text/layout.h"
#include "model/text/sheets.h"
#include "tools/dialogs/change_lines.h"
#include "tools/dialogs/guarded.h"
#include "tools/dialogs/lines_dialog.h"

namespace stelvan::tools {
namespace {

const QString kExport = QStringLiteral("Export");
const QString kImport = QStringLiteral("Import");

QStringList textNames() {
    QStringList names;
    for (const model::TextFile& file : model::textFiles()) names << form::toQt(file.name);
    return names;
}

QStringList sheetNames() {
    QStringList names;
    for (std::int16_t category = 1; category <= gem::kCategories; ++category)
        names << form::toQt(model::sheetName(category));
    return names;
}

/// Those that a folder holds already.
QStringList presentIn(const QString& folder, QStringList names) {
    names.removeIf(
        [&](const QString& name) { return !QFileInfo::exists(QDir(folder).filePath(name)); });
    return names;
}

std::filesystem::path pathOf(const QString& path) {
    return form::toUtf8(path);
}

}  // namespace

QString Exchange::startFolder() const {
    return QFileInfo(form::toQt(browser_.window.operations.path())).absolutePath();
}

void Exchange::say(const QString& text) {
    browser_.window.form.statusPanel->setText(text);
}

void Exchange::exportTexts() {
    exportTo(QStringLiteral("Export the model as texts into a folder"), textNames(),
             [](const model::Model& model, const std::filesystem::path& folder) {
                 model::exportText(model, folder);
             });
}

void Exchange::exportSheets() {
    exportTo(QStringLiteral("Export the model as tables into a folder"), sheetNames(),
             [](const model::Model& model, const std::filesystem::path& folder) {
                 model::exportSheets(model, folder);
             });
}

void Exchange::exportTo(const QString& asked, const QStringList& names, const Writing& write) {
    form::Window& window = browser_.window;
    const QString folder = window.dialogs.openFolder(asked, startFolder());
    if (folder.isEmpty()) return;
    const QStringList there = presentIn(folder, names);
    if (!there.isEmpty() &&
        !window.dialogs.confirm(
            QStringLiteral("%1\nholds files of an export: %2.\nReplace them by those of the open "
                           "model ?")
                .arg(folder, there.join(QStringLiteral(", "))),
            kExport))
        return;
    const bool done = guarded(window, shell_, kExport, [&] {
        const Busy busy;
        write(model::read(window.operations.path()), pathOf(folder));
    });
    if (done) say(QStringLiteral("The model was exported to %1").arg(folder));
}

void Exchange::importTexts() {
    const QString folder = browser_.window.dialogs.openFolder(
        QStringLiteral("Import the model from the texts in a folder"), startFolder());
    if (folder.isEmpty()) return;
    import(folder, [&](jet::Database& database) {
        return model::planImport(database, model::readText(pathOf(folder)));
});
}  // namespace stelvan::tools

void Exchange::importSheet() {
    const QString sheet =
        browser_.window.dialogs.openFile(QStringLiteral("Import items from a table"),
                                         QStringLiteral("Tables (*.csv)"), startFolder());
    if (sheet.isEmpty()) return;
    import(sheet,
           [&](jet::Database& database) { return model::planSheet(database, pathOf(sheet));
});
}

void Exchange::import(const QString& source, const Planning& planned) {
    form::Window& window = browser_.window;
    guarded(window, shell_, kImport, [&] {
        model::WritePlan plan;
        jet::Database database = jet::Database::open(window.operations.path());
        std::uint64_t seen = 0;
        {
            const Busy busy;
            const auto unchanged = database.beginRead();
            plan = planned(database);
            seen = database.changesByOthers();
        }
        if (plan.rows() == model::Written{})
            return window.dialogs.message(
                QStringLiteral("The model holds all of it already; there is nothing to import."),
                form::Icon::None, kImport);
        if (agreedTo(plan, source) && mayWrite()) write(database, plan, seen, source);
    });
}

bool Exchange::agreedTo(const model::WritePlan& plan, const QString& source) {
    std::optional<ChangeLines> changes;
    {
        const Busy busy;
        changes.emplace(plan);
    }
    const QString heading = QStringLiteral("What an import of %1 would change:\n%2")
                                .arg(source, changes->summary(true));
    return showLines({kImport, heading, changes->lines(), QStringLiteral("Import")}, &shell_);
}

void Exchange::write(jet::Database& database, const model::WritePlan& plan, std::uint64_t seen,
                     const QString& source) {
    jet::RowChanges changes;
    {
        const Busy busy;
        db::UnitOfWork unit(browser_.window.operations.path(), db::UnitOfWork::Notes::RowChanges);
        // What was agreed to holds for the file as it was looked at.
        if (database.changesByOthers() != seen)
            throw model::Refusal(
                "Another program has changed the file since the list was made; nothing was "
                "imported. Import again.");
        model::apply(database, plan);
        unit.commit();
        changes = unit.changes();
    }
    noteDone("Import of " + form::toUtf8(source), std::move(changes));
    loadAnew();
    const model::Written rows = plan.rows();
    say(QStringLiteral("Imported: %1 rows added, %2 changed, %3 removed")
            .arg(rows.added)
            .arg(rows.changed)
            .arg(rows.removed));
}

void Exchange::loadAnew() {
    form::Window& window = browser_.window;
    const std::int16_t category = window.state.category;
    if (category == gem::NO_CATEGORY) return;
    const auto shown = browser_.jump.shown();
    browser_.tree.tvwSECSItem_NodeClick(form::toQt(gem::categoryAt(category).key));
    const bool properties = window.form.tspData->currentIndex() == 0;
    if (shown && properties) browser_.jump.show(*shown);
}

}  // namespace stelvan::tools
