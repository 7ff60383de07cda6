// Runs orvexctl as a program, the way a script would, and collects what it
// says. ORVEXCTL_PATH names the program (a compile definition of the test).
#pragma once
#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "tests/support/TempDir.h"

struct CtlRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs orvexctl in dir (its start directory) with the arguments,
// which the tests keep free of shell characters.
inline CtlRun Orvexctl(const TempDir& dir, const std::string& arguments,
                       const std::string& env = "") {
    std::string command = "cd '" + dir.Path().string() + "' && " + env + " '" + ORVEXCTL_PATH +
                          "' " + arguments + " 2>'" + (dir / "stderr.txt") + "'";
    CtlRun run;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return run;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0)
        run.out.append(buffer, n);
    int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = TempDir::Read(dir / "stderr.txt");
    return run;
}
