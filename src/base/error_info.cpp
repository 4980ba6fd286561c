#include "base/error_info.h"

#include <fstream>
#include <new>

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
    // Counted first: showing the box may let other handlers run, and they must see that this one
    // failed.
    ++failures_;
    const std::string text = reportLine(source, number, description, line);
    if (logToFile_) writeLog(text);
    show_(text);
}

bool ErrorInfo::trap(const std::string& window, const std::string& procedure,
                     const std::function<void()>& body) {
    const std::string source = window + "." + procedure;
    try {
        body();
        return true;
    } catch (const RunTimeError& failure) {
        reportTrapped(source, failure);
    } catch (const std::bad_alloc&) {
        reportTrapped(source, RunTimeError(7, "Out of memory"));
    } catch (const std::exception& failure) {
        reportTrapped(source, RunTimeError(51, std::string("Internal error: ") + failure.what()));
    }
    return false;
}

void ErrorInfo::reportTrapped(const std::string& source, const RunTimeError& failure) {
    try {
        ReportErr(source, failure.number(), failure.what(), 0);
    } catch (const RunTimeError& log) {
        // The log could not be written, so nothing was shown yet. Both lines go to the box alone: a
        // report is never lost, and logging the log's own failure would never end.
        show_(reportLine(source, failure.number(), failure.what(), 0));
        show_(reportLine(source, log.number(), log.what(), 0));
    }
}

void ErrorInfo::writeLog(const std::string& line) const {
    std::ofstream file(logFilename_, std::ios::binary | std::ios::trunc);
    file << line << '\n';
    file.close();
    if (!file) throw RunTimeError(75, "Cannot write the error log: " + logFilename_);
}

}  // namespace stelvan::base
