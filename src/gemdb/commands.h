// The commands of gemdb, one file each. Every one throws on failure (jet::Error, RunTimeError) and
// leaves the reporting to main; what it returns is the exit status.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

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
/// The names of the user tables, one on each line.
int tablesCommand(const std::filesystem::path& file);
/// Columns, indexes and relationships as JSON lines.
int schemaCommand(const std::filesystem::path& file, const std::string& table);
/// Runs statements as one unit of work; rows of a SELECT as JSON lines.
int sqlCommand(const std::filesystem::path& file, const std::vector<std::string>& statements);
/// Checks the file's structure: a line for each fault, kFaultsFound where there is any. A strict
/// check counts harmless deviations that the Access engine leaves behind too.
int checkCommand(const std::filesystem::path& file, bool strict);
/// Starts a model of one's own: a copy of the shipped template in `folder` (made if need be), with
/// the settings that name files pointing there. Never replaces a model.
int newCommand(const std::filesystem::path& folder, bool demo);

}  // namespace stelvan::gemdb
