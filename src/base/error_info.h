// The program's one reporter of unexpected failures: what ends the way of a RunTimeError.
//
// A failure is shown once, by the handler to which it has flown, under the innermost procedure that
// it passed (see trap). By then everything between has been unwound: no unit of work is open while
// a box is.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

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

    /// Composes "ERROR(n) [source.line]: description", writes it to the log when that is on
    /// (replacing the file), then shows it. A log that cannot be written throws RunTimeError.
    void ReportErr(const std::string& source, std::int32_t number, const std::string& description,
                   std::int32_t line);

    /// Runs what the user set off, or a step after which the rest is meant to go on. A failure is
    /// reported and ends here; a log that cannot be written costs nothing: the report is shown,
    /// then the log's failure. True when the body ran to its end.
    bool handle(std::string_view window, std::string_view procedure,
                const std::function<void()>& body);
    /// The same for the main window.
    bool handle(std::string_view procedure, const std::function<void()>& body) {
        return handle(kMainWindow, procedure, body);
    }

private:
    void report(const RunTimeError& failure);
    void writeLog(const std::string& line) const;

    Show show_;
    bool logToFile_ = false;
    std::string logFilename_ = "app.log";
};

}  // namespace stelvan::base
