// The titles heard on streams, kept in "PlayedTitles.txt" in the data
// folder: one line a title, "YYYY-MM-DD HH:MM:SS<tab>station<tab>title",
// UTF-8 with CR LF, newest last. The file keeps itself small: past
// kMaxPlayedTitlesBytes its older half goes.
#pragma once
#include <ctime>

#include "platform/base/CString.h"

extern const char16_t* const kPlayedTitlesFile;
constexpr size_t kMaxPlayedTitlesBytes = 4 * 1024 * 1024;

// One line for a title heard at `when` (local time). 0 when the file can't
// be written.
BOOL AppendPlayedTitle(const CString& path, const CString& station, const CString& title,
                       time_t when);
// The newest lines, at most maxBytes of them, whole lines only; empty when
// there is no file.
CString ReadPlayedTitles(const CString& path, size_t maxBytes);
