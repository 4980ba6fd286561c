// The model as texts or as tables for spreadsheets, written into a folder and taken from there.
// Nothing is written before the user has seen what would be.
#pragma once

#include <QStringList>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <string>

#include "browser/browser.h"
#include "jet/tables/row_change.h"
#include "model/core/write.h"

namespace stelvan::tools {

class Exchange {
public:
    /// Both must outlive the object; boxes lie over `shell`.
    Exchange(QWidget& shell, browser::Browser& browser) : shell_(shell), browser_(browser) {}

    /// Ask for a folder and write the texts, or the tables. Where some of them are there already
    /// they ask first.
    void exportTexts();
    void exportSheets();
    /// Ask for a folder of texts, or for one table, list what would change, and make the file equal
    /// to them once that has been agreed to: one unit of work. The records shown are then loaded
    /// anew.
    void importTexts();
    void importSheet();

    /// Runs before the file is changed; where it gives false nothing is changed.
    std::function<bool()> mayWrite = [] { return true; };
    /// Runs after the file was changed: what was done, as its user calls it, and to which rows.
    std::function<void(const std::string& what, jet::RowChanges changes)> noteDone =
        [](const std::string&, const jet::RowChanges&) {};

private:
    using Writing = std::function<void(const model::Model&, const std::filesystem::path&)>;
    using Planning = std::function<model::WritePlan(jet::Database&)>;

    [[nodiscard]] QString startFolder() const;
    void exportTo(const QString& asked, const QStringList& names, const Writing& write);
    void import(const QString& source, const Planning& planned);
    [[nodiscard]] bool agreedTo(const model::WritePlan& plan, const QString& source);
    void write(jet::Database& database, const model::WritePlan& plan, std::uint64_t seen,
               const QString& source);
    void loadAnew();
    void say(const QString& text);

    QWidget& shell_;
    browser::Browser& browser_;
};

}  // namespace stelvan::tools
