// The program's one reporter of unexpected failures, and the trap in which every procedure runs.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/run_time_error.h"

namespace stelvan::base {

class ErrorInfo {
public:
    /// Shows one line in a modal box with the exclamation icon and the default title.
    using Show = std::function<void(const std::string& line)>;

    explicit ErrorInfo(Show show) : show_(std::move(show)) {}

    [[nodiscard]] bool LogToFile() const { return logToFile_; }
    void LogToFile(bool on) { logToFile_ = on; }
    [[nodiscard]] const std::string& LogFilename() const { return logFilename_; }
    void LogFilename(std::string name) { logFilename_ = std::move(name); }

    /// Composes "ERROR(n) [source.line]: description", counts it, writes it to the log when that is
    /// on (replacing the file), then shows it. A log that cannot be written throws RunTimeError.
    void ReportErr(const std::string& source, std::int32_t number, const std::string& description,
                   std::int32_t line);

    /// Runs `body`; a failure is reported once under window.procedure and cleared. A log that
    /// cannot be written costs nothing: the report is shown, then the log's failure. True when the
    /// body ran to its end.
    bool trap(const std::string& window, const std::string& procedure,
              const std::function<void()>& body);
    /// The same for the main window.
    bool trap(const std::string& procedure, const std::function<void()>& body) {
        return trap("frmMain", procedure, body);
    }

    /// How many failures have been reported so far; see FailureWatch.
    [[nodiscard]] std::uint64_t failures() const { return failures_; }

private:
    void reportTrapped(const std::string& source, const RunTimeError& failure);
    void writeLog(const std::string& line) const;

    Show show_;
    bool logToFile_ = false;
    std::string logFilename_ = "app.log";
    std::uint64_t failures_ = 0;
};

/// Tells whether anything was reported since it was made: how a caller sees that a procedure inside
/// it has failed and reported already, so that it ends quietly (one failure, one box).
class FailureWatch {
public:
    explicit FailureWatch(const ErrorInfo& errors) : errors_(errors), before_(errors.failures()) {}
    [[nodiscard]] bool failed() const { return errors_.failures() != before_; }

private:
    const ErrorInfo& errors_;
    std::uint64_t before_;
};

}  // namespace stelvan::base
