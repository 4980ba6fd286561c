// Another program that works on the same file: a process of its own, since what this one writes is
// never taken for somebody else's.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "db/connection.h"

namespace stelvan::test {

/// Runs a statement on the file elsewhere; true when it succeeded.
inline bool elsewhere(const std::string& file, const std::string& statement) {
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            db::Connection connection;
            connection.setConnectionText(
                "Provider=Microsoft.Jet.OLEDB.4.0; Mode=Read|Write;Data Source=" + file);
            connection.open();
            connection.execute(statement);
        } catch (const std::exception&) {
            ::_exit(1);
        }
        ::_exit(0);  // no destructors: the window is the parent's
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace stelvan::test
