// The subcommands of orvexctl. Each lives in a file of its own under
// commands/ and registers itself with a static CtlCommandRegistrar.
#pragma once
#include <string>
#include <vector>

using CtlArgs = std::vector<std::string>;
// Gives the process exit code.
using CtlCommandFn = int (*)(const CtlArgs& args);

struct CtlCommand {
    const char* name;
    const char* usage; // the arguments, for the help text
    const char* summary;
    CtlCommandFn run;
};

class CtlCommandRegistrar {
public:
    CtlCommandRegistrar(const char* name, const char* usage, const char* summary, CtlCommandFn run);
};

const std::vector<CtlCommand>& CtlCommands();

// Prints "usage: orvexctl NAME USAGE" to standard error and gives 2.
int CtlUsageError(const char* name);
// Prints the usage and summary of NAME to standard output and gives 0.
int CtlHelp(const char* name);
