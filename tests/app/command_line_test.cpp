// The window's command line: what it takes, and that its texts are the same wherever they stand.
#include "app/command_line.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "app/command_line_reader.h"
#include "base/version.h"
#include "tests/support/qt_text.h"
#include "tests/support/run_gemdb.h"
#include "tests/support/scratch_dir.h"

namespace stelvan::app {
namespace {

using Wish = CommandLine::Wish;

CommandLine read(const QStringList& arguments) {
    return readCommandLine(QStringList{"stelvan"} + arguments);
}

test::ProgramRun run(const char* option) {
    return test::runProgram(STELVAN_BINARY_DIR "/stelvan", {option});
}

/// Sets a variable of the environment as long as the object lives.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name), before_(qgetenv(name)) {
        qputenv(name, value);
    }
    ~Variable() { qputenv(name_, before_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    QByteArray before_;
};

/// The words of a text, wherever its lines are broken.
std::string words(const std::string& text) {
    return QString::fromStdString(text).simplified().toStdString();
}

TEST(WindowCommandLine, NothingAsksForTheWindowWithoutAFile) {
    EXPECT_EQ(read({}).wish, Wish::Window);
    EXPECT_EQ(read({}).file, QString());
}

TEST(WindowCommandLine, AFileIsTakenByItsFullPath) {
    EXPECT_EQ(read({"/line 3/gem.mdb"}).file, "/line 3/gem.mdb");
    EXPECT_EQ(read({"gem.mdb"}).file, QDir::currentPath() + "/gem.mdb");
    EXPECT_EQ(read({"--", "-odd/gem.mdb"}).file, QDir::currentPath() + "/-odd/gem.mdb");
    EXPECT_EQ(read({"gem.mdb"}).wish, Wish::Window);
}

TEST(WindowCommandLine, HelpAndVersionAreTextsLongAndShort) {
    for (const char* help : {"--help", "-h"}) {
        const CommandLine given = read({help});
        EXPECT_EQ(given.wish, Wish::Text);
        EXPECT_TRUE(given.text.contains("[FILE]")) << help;
    }
    for (const char* version : {"--version", "-v"})
        EXPECT_EQ(read({version}).text, QString::fromStdString(base::version() + "\n"));
    const char* const help[] = {"stelvan", "-h"};
    const char* const file[] = {"stelvan", "gem.mdb"};
    EXPECT_TRUE(asksForText(2, help));
    EXPECT_FALSE(asksForText(2, file));
    EXPECT_FALSE(asksForText(0, file));
}

TEST(WindowCommandLine, WhatIsNotUnderstoodIsOneLine) {
    EXPECT_EQ(read({"--nonsense"}).wish, Wish::Mistake);
    EXPECT_EQ(read({"--nonsense"}).text,
              "stelvan: Unknown option 'nonsense'; see stelvan --help\n");
    EXPECT_EQ(read({"a/gem.mdb", "b/gem.mdb"}).text,
              "stelvan: one FILE at most; see stelvan --help\n");
}

TEST(WindowCommandLine, TheProgramAnswersWithoutADisplay) {
    const test::ScratchDir scratch;  // where there is no folder for it the toolkit complains
    const Variable runtime("XDG_RUNTIME_DIR", scratch.path().c_str());
    {
        const Variable platform("QT_QPA_PLATFORM", "none of these");
        const test::ProgramRun help = run("--help");
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.err, "");
        EXPECT_EQ(run("-v").out, base::version() + "\n");
    }
    const test::ProgramRun mistake = run("--odd");
    EXPECT_EQ(mistake.status, 2);
    EXPECT_EQ(mistake.out, "");
    EXPECT_EQ(mistake.err, "stelvan: Unknown option 'odd'; see stelvan --help\n");
}

TEST(WindowCommandLine, HelpAndTheManualPageSayTheSame) {
    const std::string help = words(run("--help").out);
    std::string page = words(test::readFile(STELVAN_BINARY_DIR "/texts/stelvan.1"));
    std::erase(page, '\\');
    for (const std::string& place : {help, page}) {
        EXPECT_NE(place.find(kDescription), std::string::npos) << place;
        EXPECT_NE(place.find(kFile.help), std::string::npos) << place;
        for (const OptionText& option : kOptions) {
            EXPECT_NE(place.find("--" + std::string(option.name)), std::string::npos) << place;
            EXPECT_NE(place.find(option.help), std::string::npos) << place;
        }
    }
}

}  // namespace
}  // namespace stelvan::app
