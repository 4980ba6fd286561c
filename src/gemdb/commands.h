// The commands of gemdb, one file each. Every one throws on failure (jet::Error, RunTimeError) and
// leaves the reporting to main; what it returns is the exit status.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/compare/merge_lists.h"
#include "model/core/sink.h"
#include "model/publish/manual.h"
#include "model/publish/sedd.h"

namespace stelvan::gemdb {

inline constexpr int kDone = 0;
inline constexpr int kFaultsFound = 1;
inline constexpr int kFailed = 2;

/// Standard output through a buffer. finish() (once, at the end) throws when something could not be
/// written.
class Output {
public:
    void write(std::string_view text);
    /// What is appended here is written too; call flushWhenFull() now and then.
    [[nodiscard]] std::string& buffer() { return buffer_; }
    void flushWhenFull();
    void finish();

private:
    void flush();
    std::string buffer_;
};

/// The rows of the user tables (or of one named table) as JSON lines.
int dumpCommand(const std::filesystem::path& file, const std::string& table);
/// What the file is, who uses it, how many rows each category holds, and how it is set to talk.
int infoCommand(const std::filesystem::path& file, bool json);
/// The names of the user tables, one on each line.
int tablesCommand(const std::filesystem::path& file);
/// Columns, indexes and relationships as JSON lines.
int schemaCommand(const std::filesystem::path& file, const std::string& table);
/// Runs statements as one unit of work; rows of a SELECT as JSON lines.
int sqlCommand(const std::filesystem::path& file, const std::vector<std::string>& statements);
struct CheckRequest {
    bool structure = true;
    bool model = true;
    bool json = false;
    bool fix = false;
    bool dryRun = false;  // says what fix would do
    bool strict = false;  // counts harmless deviations that the Access engine leaves behind too
};
/// Checks structure and model: a line for each finding, kFaultsFound from a warning upwards. The
/// structure alone gives its faults as they always were, "page N: ...", and no count.
int checkCommand(const std::filesystem::path& file, const CheckRequest& request);
struct DiffOptions {
    bool json = false;
    std::filesystem::path html = {};  // a page to write; empty: none
};
/// What differs between two models (files, or folders of texts): for people, as JSON lines, or as a
/// page; kFaultsFound where anything does.
int diffCommand(const std::filesystem::path& before, const std::filesystem::path& after,
                const DiffOptions& options);
struct MergeFiles {
    std::filesystem::path base, ours, theirs;  // base and theirs may be folders of texts
    std::filesystem::path out;                 // may be ours
};
struct MergeOptions {
    std::optional<model::Side> decide = {};  // who is right in a conflict
    bool dryRun = false;                     // says what would be done
};
/// Writes what both sides made of the base into a copy of ours, and prints what that changes in
/// ours; kFaultsFound, and nothing written, where there are conflicts that nobody decides.
int mergeCommand(const MergeFiles& files, const MergeOptions& options);
/// The model as texts, one file for each kind of item, into a folder.
int exportCommand(const std::filesystem::path& file, const std::filesystem::path& folder);
/// Makes a file equal to such texts and prints each change; with `dryRun` nothing is written.
int importCommand(const std::filesystem::path& folder, const std::filesystem::path& file,
                  bool dryRun);
/// The model as tables for spreadsheets, one for each category, into a folder.
int exportSheetsCommand(const std::filesystem::path& file, const std::filesystem::path& folder);
/// Adds and changes the items of such a table and prints each change; with `dryRun` nothing is
/// written.
int importSheetCommand(const std::filesystem::path& sheet, const std::filesystem::path& file,
                       bool dryRun);
/// The same texts as one stream.
int textCommand(const std::filesystem::path& file);
/// Lists the copies that were kept of a model before it was changed, the newest first as number 1;
/// puts the one with the number `restored` back unless that is 0.
int copiesCommand(const std::filesystem::path& file, std::size_t restored);
/// Starts a model of one's own: a copy of the shipped template in `folder` (made if need be), with
/// the settings that name files pointing there. Never replaces a model.
int newCommand(const std::filesystem::path& folder, bool demo);

/// Hands a way to write to `write`: the file `out`, whole or not at all, or standard output where
/// it is empty or "-". Refuses an `out` that is the model itself.
void publishTo(const std::string& out, const std::filesystem::path& file,
               const std::function<void(const model::Sink&)>& write);
/// One line on standard error for each; they change no exit status.
void printNotes(const std::vector<std::string>& notes);

/// The model as equipment data dictionary. An empty date in the header is today.
int seddCommand(const std::filesystem::path& file, const std::string& out,
                model::SeddHeader header);
/// The model as SECS messages in SML.
int smlCommand(const std::filesystem::path& file, const std::string& out);
struct DocRequest {
    std::filesystem::path out;
    model::ManualOptions manual;
    bool findings = true;  // as an annex
};
/// Writes the equipment's interface manual, one page, to `request.out`, which is replaced whole or
/// stays as it was.
int docCommand(const std::filesystem::path& file, const DocRequest& request);

}  // namespace stelvan::gemdb
