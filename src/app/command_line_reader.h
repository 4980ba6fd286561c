// Reads the window's command line.
#pragma once

#include <QString>
#include <QStringList>

namespace stelvan::app {

struct CommandLine {
    enum class Wish { Window, Text, Mistake };
    Wish wish = Wish::Window;
    QString file;  // of the wish for the window: a full path, or empty where none was given
    QString text;  // else what to print, with the break of its last line
};

/// `arguments` begins with the program's name. Needs a QCoreApplication.
[[nodiscard]] CommandLine readCommandLine(const QStringList& arguments);

/// Whether an argument asks for a text, which needs no display.
[[nodiscard]] bool asksForText(int argc, const char* const* argv);

}  // namespace stelvan::app
