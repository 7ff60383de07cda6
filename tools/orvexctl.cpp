// orvexctl: the command-line companion of Orvex. It drives the same libraries
// as the program, for scripting and measurement.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/base/MessageBox.h"
#include "platform/base/Version.h"
#include "tools/CtlCommand.h"

namespace {

std::vector<CtlCommand>& Registry() {
    static std::vector<CtlCommand> commands;
    return commands;
}

void PrintHelp(FILE* out) {
    fprintf(out, "usage: orvexctl --version\n");
    std::vector<CtlCommand> commands = Registry();
    std::sort(commands.begin(), commands.end(),
              [](const CtlCommand& a, const CtlCommand& b) { return strcmp(a.name, b.name) < 0; });
    for (const CtlCommand& c : commands)
        fprintf(out, "       orvexctl %s %s\n           %s\n", c.name, c.usage, c.summary);
}

} // namespace

CtlCommandRegistrar::CtlCommandRegistrar(const char* name, const char* usage, const char* summary,
                                         CtlCommandFn run) {
    Registry().push_back({name, usage, summary, run});
}

const std::vector<CtlCommand>& CtlCommands() {
    return Registry();
}

int CtlUsageError(const char* name) {
    for (const CtlCommand& c : Registry()) {
        if (strcmp(c.name, name) == 0)
            fprintf(stderr, "usage: orvexctl %s %s\n", c.name, c.usage);
    }
    return 2;
}

int CtlHelp(const char* name) {
    for (const CtlCommand& c : Registry()) {
        if (strcmp(c.name, name) == 0)
            printf("usage: orvexctl %s %s\n       %s\n", c.name, c.usage, c.summary);
    }
    return 0;
}

int main(int argc, char** argv) {
    if (argc < 2 || strcmp(argv[1], "--help") == 0 || strcmp(argv[1], "-h") == 0) {
        PrintHelp(argc < 2 ? stderr : stdout);
        return argc < 2 ? 2 : 0;
    }
    if (strcmp(argv[1], "--version") == 0) {
        printf("%s\n", GetProgramVersionText().ToUtf8().c_str());
        return 0;
    }
    // Every message the program would show in a box is printed instead.
    SetMessageBoxHook([](const MessageBoxRequest& request) {
        printf("%s\n", request.text.ToUtf8().c_str());
        fflush(stdout);
        return DefaultMessageBoxAnswer(request.type);
    });
    for (const CtlCommand& c : Registry()) {
        if (strcmp(c.name, argv[1]) == 0)
            return c.run(CtlArgs(argv + 2, argv + argc));
    }
    fprintf(stderr, "orvexctl: unknown command '%s'\n", argv[1]);
    PrintHelp(stderr);
    return 2;
}
