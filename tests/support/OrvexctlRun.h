// Runs the staged orvexctl as a program for the command tests; the test
// target depends on orvexctl so that it is built first.
#pragma once
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/TempDir.h"

struct CtlRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs a shell command line: its standard output and exit code.
inline CtlRun RunCommand(const std::string& command) {
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
    return run;
}

// Runs orvexctl in dir (its start directory) with the arguments,
// which the tests keep free of shell characters.
inline CtlRun Orvexctl(const TempDir& dir, const std::string& arguments,
                       const std::string& env = "") {
    std::string command = "cd '" + dir.Path().string() + "' && " + env + " '" +
                          getenv("ORVEX_STAGE_DIR") + "/orvexctl" + "' " + arguments + " 2>'" +
                          (dir / "stderr.txt") + "'";
    CtlRun run = RunCommand(command);
    run.err = TempDir::Read(dir / "stderr.txt");
    return run;
}
