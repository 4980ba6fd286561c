// Writes what is installed beside the programs: their manual pages, and gemdb's completions for
// three shells, all made of the texts that --help shows.
//
// Usage: make_texts FOLDER DATE, the date of the release as YYYY-MM-DD.
#include <cstdio>
#include <exception>
#include <filesystem>

#include "app/command_line.h"
#include "base/version.h"
#include "gemdb/application.h"
#include "gemdb/completions.h"
#include "gemdb/manual_page.h"
#include "model/core/sink.h"

namespace {

namespace fs = std::filesystem;
using namespace stelvan::gemdb;

ManualPage gemdbPage(const CLI::App& app, const std::string& date) {
    return {
        "gemdb",
        stelvan::base::version(),
        date,
        "look into a GEM database, and change it, from the command line",
        app.get_description() +
            " A GEM database is one Access file, gem.mdb, which holds the SECS/GEM model of one "
            "piece of equipment. Verbs that write are one unit of work: whatever interrupts "
            "them, the file is as before or as after.",
        optionsOf(app),
        verbsOf(app),
        "0 fine, 1 findings or differences, 2 it could not be done: then standard error says "
        "why, and nothing was written.",
        {{"gem.mdb", "the model"},
         {"gem.ldb", "beside it while somebody has it open; other programs look at it"}},
        {"stelvan(1)"}};
}

std::vector<OptionFacts> stelvanOptions() {
    using namespace stelvan::app;
    std::vector<OptionFacts> all = {
        {{std::string(kFile.name)}, std::string(kFile.help), false, false, true, false}};
    for (const OptionText& option : kOptions)
        all.push_back({{"--" + std::string(option.name), std::string("-") + option.letter},
                       std::string(option.help),
                       false,
                       false,
                       false,
                       false});
    return all;
}

ManualPage stelvanPage(const std::string& date) {
    return {"stelvan",
            stelvan::base::version(),
            date,
            std::string(stelvan::app::kSummary),
            std::string(stelvan::app::kDescription),
            stelvanOptions(),
            {},
            std::string(stelvan::app::kExitStatus),
            {{"gem.mdb", "the model"}},
            {"gemdb(1)"}};
}

void write(const fs::path& file, const std::string& text) {
    stelvan::model::writeWhole(file, [&](const stelvan::model::Sink& sink) { sink(text); });
}

void makeTexts(const fs::path& folder, const std::string& date) {
    int status = 0;
    const auto app = makeApplication(status);
    const std::vector<VerbFacts> verbs = verbsOf(*app);
    fs::create_directories(folder);
    write(folder / "gemdb.1", manualText(gemdbPage(*app, date)));
    write(folder / "stelvan.1", manualText(stelvanPage(date)));
    write(folder / "gemdb.bash", bashCompletion("gemdb", verbs));
    write(folder / "_gemdb", zshCompletion("gemdb", verbs));
    write(folder / "gemdb.fish", fishCompletion("gemdb", verbs));
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::fputs("usage: make_texts FOLDER DATE\n", stderr);
        return 2;
    }
    makeTexts(argv[1], argv[2]);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "make_texts: %s\n", failure.what());
    return 2;
}
