#include "model/publish/sedd.h"

#include "base/date.h"
#include "base/text.h"
#include "base/utf.h"
#include "model/core/refusal.h"
#include "model/publish/dictionary.h"
#include "model/publish/shown.h"
#include "model/publish/xml_text.h"

namespace stelvan::model {
namespace {

/// The value of the standard's variable of a name; empty where there is none.
std::string standardValue(const Catalogue& catalogue, std::string_view name) {
    for (const Item& variable : catalogue.variables)
        if (variable.part == Part::StandardVariables && base::sameWord(variable.name(), name))
            return shownRecord(variable)[gem::Control::txtVarValue].text;
    return {};
}

SeddHeader completed(SeddHeader header, const Catalogue& catalogue, Notes& notes) {
    if (!header.mdln) header.mdln = standardValue(catalogue, "MDLN");
    if (!header.softrev) header.softrev = standardValue(catalogue, "SOFTREV");
    if (header.mdln->empty()) notes.add("the dictionary has no MDLN; --mdln gives one");
    if (header.softrev->empty()) notes.add("the dictionary has no SOFTREV; --softrev gives one");
    return header;
}

/// Throws where the header cannot stand as it is.
void check(const SeddHeader& header) {
    struct Limit {
        const char* option;
        const std::string& text;
        std::size_t longest;
    };
    std::vector<std::string> lines;
    for (const Limit& limit :
         {Limit{"--mdln", *header.mdln, 20}, Limit{"--softrev", *header.softrev, 20},
          Limit{"--supplier", header.supplier, 80},
          Limit{"--description", header.description, 4096}}) {
        const std::size_t length = base::characterCount(limit.text);
        if (length > limit.longest)
            lines.push_back(std::string(limit.option) + " has " + std::to_string(length) +
                            " characters; give one of at most " + std::to_string(limit.longest));
        if (!isXmlText(limit.text))
            lines.push_back(std::string(limit.option) + " holds characters that XML cannot");
    }
    const auto day = base::parseWrittenDate(header.date);
    if (!day || !base::isoDateText(*day).value_or("").starts_with(header.date + "T"))
        lines.push_back("--date " + header.date + " is no day; write it as 2026-01-31");
    if (!lines.empty()) throw Refusal(lines);
}

}  // namespace

void writeSedd(const Catalogue& catalogue, const CrossReference& references,
               const SeddHeader& header, const Sink& sink, Notes& notes) {
    const SeddHeader whole = completed(header, catalogue, notes);
    check(whole);
    Dictionary(catalogue, references, sink, notes).write(whole);
}

}  // namespace stelvan::model
