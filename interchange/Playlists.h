// M3U and PLS: playlists of names and locations. Both are read through the
// plain text stream (no byte-order mark test, CR LF a line end); titles and
// locations are two lists paired by position.
#pragma once
#include <functional>

#include "contents/Extensions.h"
#include "contents/MediaContents.h"
#include "interchange/StdioFileEx.h"

// Downloads of playlists stop at this size.
constexpr unsigned long kPlaylistDownloadLimit = 0x19000; // 102,400 bytes

// Hands every line of a playlist file to `take`, with a lower-case copy
// for the key tests. Gives 0 when the file can't be opened.
using PlaylistLineFn = std::function<void(const CString& line, const CString& lower)>;
BOOL ForEachPlaylistLine(const CString& path, const PlaylistLineFn& take);

// M3U: the text behind the first "," of each "#EXTINF:-1" line is a title,
// each line starting with "http" (any case) a URL. Gives 0 when the file
// can't be opened.
BOOL ReadM3uEntries(const CString& path, CStringArray& titles, CStringArray& urls);
// PLS: the value behind the first "=" of each file line and of each title
// line. Gives 0 when the file can't be opened.
BOOL ReadPlsEntries(const CString& path, CStringArray& titles, CStringArray& files);

// One item per location, typed from the location (an audio stream when that
// says nothing) and named by the title of the same position or "Unknown".
void BuildPlaylistItems(const CStringArray& titles, const CStringArray& locations,
                        const CExtensionArray& extensions, CMediaArray& items);

// The head of a written M3U file.
void WriteM3uHead(CStdioFileEx* file);

// A library item that stands for a playlist is read as PLS when its
// location holds "pls" anywhere, otherwise as M3U.
BOOL IsPlsPlaylistItem(const CMediaItem& item);
