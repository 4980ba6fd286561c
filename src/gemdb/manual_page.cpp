#include "gemdb/manual_page.h"

#include <sstream>
#include <string_view>

#include "base/text.h"

namespace stelvan::gemdb {
namespace {

/// Plain text as roff takes it: no character of it is a command.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const bool startsLine = out.empty() || out.back() == '\n';
        if (startsLine && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
    }
    return out;
}

std::string inCapitals(std::string_view text) {
    return base::upperCase(text);
}

/// "-o, --output VALUE" with the parts in the types that manuals use.
std::string spelling(const OptionFacts& option) {
    std::string text;
    for (const std::string& name : option.names) {
        if (!text.empty()) text += ", ";
        text += (option.isArgument ? "\\fI" : "\\fB") + escaped(name) + "\\fR";
    }
    if (option.takesValue && !option.isArgument) text += " \\fIVALUE\\fR";
    return text;
}

void addOptions(std::ostream& out, const std::vector<OptionFacts>& options) {
    for (const OptionFacts& option : options)
        out << ".TP\n" << spelling(option) << '\n' << escaped(option.help) << '\n';
}

/// "gemdb check FILE [options]".
std::string usageOf(const std::string& program, const VerbFacts& verb) {
    std::string text = "\\fB" + escaped(program + ' ' + verb.name) + "\\fR";
    bool hasOptions = false;
    for (const OptionFacts& option : verb.options) {
        if (!option.isArgument) {
            hasOptions = true;
            continue;
        }
        std::string word = "\\fI" + escaped(option.names.front()) + "\\fR";
        if (option.many) word += "...";
        text += ' ' + (option.required ? word : '[' + word + ']');
    }
    return hasOptions ? text + " [\\fIoptions\\fR]" : text;
}

void addVerb(std::ostream& out, const std::string& program, const VerbFacts& verb) {
    out << ".SS " << escaped(verb.name) << '\n' << usageOf(program, verb) << "\n.PP\n";
    out << escaped(verb.help) << ".\n";
    addOptions(out, verb.options);
    if (!verb.footer.empty()) out << ".PP\n.nf\n" << escaped(verb.footer) << "\n.fi\n";
}

}  // namespace

std::string manualText(const ManualPage& page) {
    std::ostringstream out;
    out << ".TH " << inCapitals(page.program) << " 1 " << page.date << " \"" << page.program << ' '
        << page.version << "\" \"User Commands\"\n";
    out << ".SH NAME\n" << page.program << " \\- " << escaped(page.summary) << '\n';
    out << ".SH SYNOPSIS\n.B " << page.program << '\n';
    out << (page.verbs.empty() ? "[\\fIoptions\\fR] [\\fIFILE\\fR]\n"
                               : "\\fIVERB\\fR [\\fIarguments\\fR] [\\fIoptions\\fR]\n");
    out << ".SH DESCRIPTION\n" << escaped(page.description) << '\n';
    if (!page.options.empty()) out << ".SH OPTIONS\n";
    addOptions(out, page.options);
    if (!page.verbs.empty()) out << ".SH VERBS\n";
    for (const VerbFacts& verb : page.verbs) addVerb(out, page.program, verb);
    out << ".SH \"EXIT STATUS\"\n" << escaped(page.exitStatus) << '\n';
    if (!page.files.empty()) out << ".SH FILES\n";
    for (const auto& [name, what] : page.files)
        out << ".TP\n\\fI" << escaped(name) << "\\fR\n" << escaped(what) << '\n';
    out << ".SH \"SEE ALSO\"\n";
    for (std::size_t i = 0; i < page.seeAlso.size(); ++i)
        out << (i > 0 ? ", " : "") << escaped(page.seeAlso[i]);
    out << '\n';
    return out.str();
}

}  // namespace stelvan::gemdb
