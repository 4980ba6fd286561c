// Runs the built gemdb and tells what came of it.
#pragma once

#include <string>
#include <vector>

namespace stelvan::test {

struct ProgramRun {
    int status = -1;  // exit status; -1 when it died of a signal
    std::string out;
    std::string err;
};

[[nodiscard]] ProgramRun runProgram(const std::string& program,
                                    const std::vector<std::string>& arguments);
[[nodiscard]] ProgramRun runGemdb(const std::vector<std::string>& arguments);

/// The lines of a text, without their breaks.
[[nodiscard]] std::vector<std::string> splitLines(const std::string& text);

[[nodiscard]] std::string readFile(const std::string& path);

}  // namespace stelvan::test
