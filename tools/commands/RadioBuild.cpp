// orvexctl radio-build: builds RadioBrowse.dat from a station directory on
// disk, the way the update job does after its download.
#include <cstdio>

#include "platform/base/File.h"
#include "radio/RadioBrowseDb.h"
#include "tools/CtlCommand.h"
#include "tools/commands/RadioConsole.h"

namespace {

int RunRadioBuild(const CtlArgs& args) {
    if (args.size() != 2)
        return CtlUsageError("radio-build");
    // The texts are printed as they are set; the dialog's pauses would only
    // slow the build down.
    CConsoleStatus status;
    CConsoleProgress progress(false);
    CRadioBrowseDb db;
    db.m_hwndProgress = progress.GetSafeHwnd();
    db.m_statusPauseMs = 0;
    CString error;
    int built = 0;
    RunWhilePumping([&] {
        const int stations = db.ParseStationFile(CString(args[0]), &error);
        built = stations > 0 && db.BuildLookupLists(stations, &error);
    });
    int usedCountries = 0;
    for (const CCountryCode& c : db.m_countries)
        usedCountries += c.m_used;
    int usedLanguages = 0;
    for (const CLanguageCode& l : db.m_languages)
        usedLanguages += l.m_used;
    printf("%d stations, %d countries (%d used), %d tags, %d states, %d languages (%d used)\n",
           db.m_stations.GetSize(), db.m_countries.GetSize(), usedCountries, db.m_tags.GetSize(),
           db.m_states.GetSize(), db.m_languages.GetSize(), usedLanguages);
    if (!built) {
        fprintf(stderr, "orvexctl: %s\n", error.ToUtf8().c_str());
        return 1;
    }
    db.m_hwndProgress = nullptr;
    if (!SaveRadioBrowseFile(db, CString(args[1])))
        return 1;
    printf("written to %s\n", args[1].c_str());
    return 0;
}

const CtlCommandRegistrar kRegistrar(
    "radio-build", "XMLFILE OUT.dat",
    "parse a station directory, derive the lists, test the limits and write RadioBrowse.dat "
    "(the name files are read from the start directory)",
    RunRadioBuild);

} // namespace
