// Settings of the desktop features that the user data file has no room for:
// where recordings go, and whether closing the window leaves Orvex in the
// tray. They live in a small text file of their own in the data folder,
// "OrvexSettings.txt", one "Name=Value" line each, so that the user data
// file keeps its exact form. Written as soon as one changes.
#pragma once
#include "platform/base/Array.h"
#include "platform/base/CString.h"

class CDesktopSettings {
public:
    // Empty: the desktop's music folder decides (the user interface knows it).
    CString m_recordingsFolder;
    BOOL m_bCloseToTray = FALSE;

    // A missing or unreadable file leaves the defaults; lines this version
    // does not know are kept for the next save. Never more than kMaxBytes are
    // read.
    BOOL Load(const CString& path);
    // 0 when the file can't be written; nothing is shown.
    BOOL Save(const CString& path) const;

    static constexpr size_t kMaxBytes = 64 * 1024;

private:
    CStringArray m_otherLines;
};

// The name of the file in the data folder.
extern const char16_t* const kDesktopSettingsFile;
