// orvexctl check-update: the program's update check, with its message printed.
// The version file lands in the user's data folder as results.txt, as in the
// program.
#include <cstdio>

#include "app/OrvexApp.h"
#include "app/UpdateCheck.h"
#include "platform/base/Version.h"
#include "tools/CtlCommand.h"

namespace {

constexpr const char* kName = "check-update";

int RunCheckUpdate(const CtlArgs& args) {
    CString server = DownloadServerAddress();
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--url" && i + 1 < args.size())
            server = CString(args[++i]);
        else
            return CtlUsageError(kName);
    }
    while (server.Right(1) == u"/")
        server.Truncate(server.GetLength() - 1);

    COrvexApp app;
    CString dataFolder;
    if (!app.GetUserDataFolder(dataFolder))
        dataFolder = app.m_startDirectory;
    return CheckForUpdates(dataFolder, server, GetProgramVersionText()) ? 0 : 1;
}

CtlCommandRegistrar registrar(kName, "[--url URL]",
                              "checks the download server at URL (scheme and host) for a newer "
                              "version",
                              RunCheckUpdate);

} // namespace
