#include "app/command_line_reader.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <algorithm>
#include <string>

#include "app/command_line.h"
#include "base/version.h"

namespace stelvan::app {
namespace {

QString text(std::string_view known) {
    return QString::fromUtf8(known.data(), static_cast<qsizetype>(known.size()));
}

QCommandLineOption optionOf(const OptionText& facts) {
    return {{QString(QLatin1Char(facts.letter)), text(facts.name)}, text(facts.help)};
}

bool isOption(std::string_view argument, const OptionText& facts) {
    return argument == "--" + std::string(facts.name) ||
           argument == std::string("-") + facts.letter;
}

CommandLine mistake(const QString& what) {
    return {CommandLine::Wish::Mistake,
            {},
            QStringLiteral("stelvan: %1; see stelvan --help\n").arg(what)};
}

}  // namespace

CommandLine readCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(text(kDescription));
    for (const OptionText& option : kOptions) parser.addOption(optionOf(option));
    parser.addPositionalArgument(text(kFile.name), text(kFile.help),
                                 QStringLiteral("[%1]").arg(text(kFile.name)));
    if (!parser.parse(arguments)) return mistake(parser.errorText().chopped(1));
    if (parser.isSet(text(kHelp.name))) return {CommandLine::Wish::Text, {}, parser.helpText()};
    if (parser.isSet(text(kVersion.name)))
        return {CommandLine::Wish::Text, {}, text(base::version()) + QLatin1Char('\n')};
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) return mistake(QStringLiteral("one FILE at most"));
    if (files.isEmpty()) return {};
    return {CommandLine::Wish::Window, QFileInfo(files.first()).absoluteFilePath(), {}};
}

bool asksForText(int argc, const char* const* argv) {
    return std::any_of(argv + 1, argv + std::max(argc, 1), [](std::string_view argument) {
        return std::ranges::any_of(
            kOptions, [&](const OptionText& option) { return isOption(argument, option); });
    });
}

}  // namespace stelvan::app
