#include "tests/bench/programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace stelvan::bench {

ProgramResult resultOf(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    ProgramResult result;
    if (posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ) == 0) {
        int status = 0;
        rusage usage{};
        ::wait4(child, &status, 0, &usage);
        if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
        result.peakKiB = usage.ru_maxrss;
    }
    posix_spawn_file_actions_destroy(&files);
    return result;
}

void runProgram(benchmark::State& state, const std::vector<std::string>& command, int highest) {
    for (auto _ : state) {
        const int status = resultOf(command).status;
        if (status >= 0 && status <= highest) continue;
        state.SkipWithError((command.front() + " is not there or failed").c_str());
        return;
    }
}

long answerOfSelf(const std::string& option, const std::vector<std::string>& words) {
    std::string command = std::filesystem::read_symlink("/proc/self/exe").string() + " " + option;
    for (const std::string& word : words) command += " '" + word + "'";
    long answer = -1;
    if (std::FILE* output = ::popen(command.c_str(), "r")) {
        if (std::fscanf(output, "%ld", &answer) != 1) answer = -1;
        ::pclose(output);
    }
    return answer;
}

std::string gemdb() {
    return STELVAN_BINARY_DIR "/gemdb";
}

}  // namespace stelvan::bench
