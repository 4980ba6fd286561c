#include "gemdb/completions.h"

#include <algorithm>
#include <sstream>

namespace stelvan::gemdb {
namespace {

constexpr const char* kTableArgument = "TABLE";

bool takesTable(const VerbFacts& verb) {
    return std::ranges::any_of(verb.options, [](const OptionFacts& option) {
        return option.isArgument && option.names.front() == kTableArgument;
    });
}

/// The names of all options of a verb, parted by blanks.
std::string optionWords(const VerbFacts& verb) {
    std::string words;
    for (const OptionFacts& option : verb.options) {
        if (option.isArgument) continue;
        for (const std::string& name : option.names) words += (words.empty() ? "" : " ") + name;
    }
    return words;
}

std::string verbWords(const std::vector<VerbFacts>& verbs) {
    std::string words;
    for (const VerbFacts& verb : verbs) words += (words.empty() ? "" : " ") + verb.name;
    return words;
}

/// In single quotes, as all three shells read them.
std::string quoted(std::string text) {
    for (std::size_t at = 0; (at = text.find('\'', at)) != std::string::npos; at += 4)
        text.replace(at, 1, "'\\''");
    return '\'' + text + '\'';
}

/// A zsh description ends at a bracket or colon.
std::string zshText(std::string text) {
    std::string out;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':') out += '\\';
        out += c;
    }
    return out;
}

std::string tableVerbs(const std::vector<VerbFacts>& verbs, const char* separator) {
    std::string names;
    for (const VerbFacts& verb : verbs)
        if (takesTable(verb)) names += (names.empty() ? "" : separator) + verb.name;
    return names;
}

}  // namespace

std::string bashCompletion(const std::string& program, const std::vector<VerbFacts>& verbs) {
    std::ostringstream out;
    out << "# bash completion for " << program << "\n_" << program << "()\n{\n"
        << "    local word=${COMP_WORDS[COMP_CWORD]} options=\n    COMPREPLY=()\n"
        << "    if ((COMP_CWORD == 1)); then\n"
        << "        mapfile -t COMPREPLY < <(compgen -W '" << verbWords(verbs)
        << " --help --version' -- \"$word\")\n        return\n    fi\n"
        << "    case ${COMP_WORDS[1]} in\n";
    for (const VerbFacts& verb : verbs)
        out << "        " << verb.name << ") options='" << optionWords(verb) << "' ;;\n";
    out << "    esac\n"
        << "    if [[ $word == -* ]]; then\n"
        << "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n"
        << "        return\n    fi\n"
        << "    case ${COMP_WORDS[1]} in\n        " << tableVerbs(verbs, "|") << ")\n"
        << "            if ((COMP_CWORD == 3)); then\n"
        << "                mapfile -t COMPREPLY < <(compgen -W \"$(" << program
        << " tables \"${COMP_WORDS[2]}\" 2>/dev/null)\" -- \"$word\")\n"
        << "                return\n            fi ;;\n    esac\n"
        << "    mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
        << "    compopt -o filenames 2>/dev/null\n}\n"
        << "complete -F _" << program << ' ' << program << '\n';
    return out.str();
}

std::string zshCompletion(const std::string& program, const std::vector<VerbFacts>& verbs) {
    std::ostringstream out;
    out << "#compdef " << program << "\n_" << program << "_table() {\n"
        << "    local -a names\n    names=(${(f)\"$(" << program
        << " tables \"${words[2]}\" 2>/dev/null)\"})\n    compadd -a names\n}\n"
        << "local -a verbs\nverbs=(\n";
    for (const VerbFacts& verb : verbs)
        out << "    " << quoted(verb.name + ':' + zshText(verb.help)) << '\n';
    out << ")\nif ((CURRENT == 2)); then\n    _describe verb verbs\n    return\nfi\n"
        << "shift words\n((CURRENT--))\ncase $words[1] in\n";
    for (const VerbFacts& verb : verbs) {
        out << "    " << verb.name << ") _arguments -S";
        for (const OptionFacts& option : verb.options) {
            if (option.isArgument) continue;
            for (const std::string& name : option.names)
                out << " \\\n        "
                    << quoted(name + '[' + zshText(option.help) + ']' +
                              (option.takesValue ? ":value:_files" : ""));
        }
        out << " \\\n        '1:file:_files'";
        if (takesTable(verb)) out << " '2:table:_" << program << "_table'";
        out << " '*:file:_files' ;;\n";
    }
    out << "esac\n";
    return out.str();
}

std::string fishCompletion(const std::string& program, const std::vector<VerbFacts>& verbs) {
    const std::string complete = "complete -c " + program;
    std::ostringstream out;
    out << "# fish completion for " << program << '\n';
    for (const VerbFacts& verb : verbs) {
        out << complete << " -n __fish_use_subcommand -f -a " << verb.name << " -d "
            << quoted(verb.help) << '\n';
        for (const OptionFacts& option : verb.options) {
            if (option.isArgument) continue;
            out << complete << " -n '__fish_seen_subcommand_from " << verb.name << '\'';
            for (const std::string& name : option.names)
                out << (name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1));
            if (option.takesValue) out << " -r";
            out << " -d " << quoted(option.help) << '\n';
        }
    }
    out << complete << " -n '__fish_seen_subcommand_from " << tableVerbs(verbs, " ")
        << "; and test (count (commandline -opc)) -eq 3' -f -a '(" << program
        << " tables (commandline -opc)[3] 2>/dev/null)'\n";
    return out.str();
}

}  // namespace stelvan::gemdb
