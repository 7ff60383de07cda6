// Check for updates: compares the program's version with the one line of the
// version file on the project's download server and tells the user.
#pragma once
#include "platform/base/CString.h"

// What the lines of a version file have shown so far.
struct CVersionCheck {
    BOOL failed = FALSE;
    BOOL newer = FALSE;
    CString latest; // the version part of the last well-formed line
};

// The longest version file that is read at all.
constexpr ULONGLONG kMaxVersionFileBytes = 20;
// Downloads of the version and statistics files stop here, so that a server
// that answers without end can't fill the disc.
constexpr unsigned kVersionDownloadLimit = 4096;

// One line: 6 characters that aren't looked at, then a.b.c.d with one digit
// in each place. Compared digit by digit with current, the program's version
// in the same form; the flags are only ever set, never cleared.
void CompareVersionLine(const CString& line, const CString& current, CVersionCheck& check);

// "https://" and the download server's host.
CString DownloadServerAddress();

// The whole check against a server address ("https://host[:port]"): fetches
// the version file into dataFolder + "/results.txt", compares it with
// currentVersion, asks for the statistics file, and reports in one message box.
// Gives 1 when the box told the user which version is the latest, 0 when it
// reported a failure.
BOOL CheckForUpdates(const CString& dataFolder, const CString& serverAddress,
                     const CString& currentVersion);
