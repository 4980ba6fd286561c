#include <ctime>
#include <stdexcept>

#include "base/date.h"
#include "gemdb/commands.h"
#include "model/core/kept_copies.h"

namespace stelvan::gemdb {
namespace {

/// By the clock of whoever asks.
std::string dateOf(const model::KeptCopy& copy) {
    const std::time_t seconds = copy.made.time_since_epoch().count();
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return base::dateText(base::serialDate(std::chrono::seconds{seconds + local.tm_gmtoff}));
}

}  // namespace

int copiesCommand(const std::filesystem::path& file, std::size_t restored) {
    const model::KeptCopies kept(model::KeptCopies::folderOfUser());
    const std::vector<model::KeptCopy> copies = kept.of(file);
    Output output;
    if (restored > 0) {
        if (restored > copies.size())
            throw std::runtime_error(file.string() + ": has " + std::to_string(copies.size()) +
                                     " copies; their numbers are listed without --restore");
        const model::KeptCopy& copy = copies[restored - 1];
        kept.restore(file, copy);
        output.write(file.string() + " is again as it was on " + dateOf(copy) + "\n");
    } else {
        for (std::size_t at = 0; at < copies.size(); ++at)
            output.write(std::to_string(at + 1) + "  " + dateOf(copies[at]) + "  " +
                         std::to_string(copies[at].bytes) + " bytes\n");
    }
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
