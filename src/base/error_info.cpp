#include "base/error_info.h"

#include <fstream>

namespace stelvan::base {

namespace {

std::string reportLine(const std::string& source, std::int32_t number,
                       const std::string& description, std::int32_t line) {
    return "ERROR(" + std::to_string(number) + ") [" + source + "." + std::to_string(line) +
           "]: " + description;
}

}  // namespace

void ErrorInfo::ReportErr(const std::string& source, std::int32_t number,
                          const std::string& description, std::int32_t line) {
    const std::string text = reportLine(source, number, description, line);
    if (logToFile_) writeLog(text);
    show_(text);
}

bool ErrorInfo::handle(std::string_view window, std::string_view procedure,
                       const std::function<void()>& body) {
    try {
        trapIn(window, procedure, body);
        return true;
    } catch (const RunTimeError& failure) {
        report(failure);
    }
    return false;
}

void ErrorInfo::report(const RunTimeError& failure) {
    try {
        ReportErr(failure.source(), failure.number(), failure.what(), 0);
    } catch (const RunTimeError& log) {
        // The log could not be written, so nothing was shown yet. Both lines go to the box alone: a
        // report is never lost, and logging the log's own failure would never end.
        show_(reportLine(failure.source(), failure.number(), failure.what(), 0));
        show_(reportLine(failure.source(), log.number(), log.what(), 0));
    }
}

void ErrorInfo::writeLog(const std::string& line) const {
    std::ofstream file(logFilename_, std::ios::binary | std::ios::trunc);
    file << line << '\n';
    file.close();
    if (!file) throw RunTimeError(75, "Cannot write the error log: " + logFilename_);
}

}  // namespace stelvan::base
