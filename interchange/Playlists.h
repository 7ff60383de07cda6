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
// for the key tests. A line is UTF-8 when it is valid UTF-8 and Latin-1
// otherwise; a byte-order mark in front of the first line is dropped. Gives 0
// when the file can't be opened.
using PlaylistLineFn = std::function<void(const CString& line, const CString& lower)>;
BOOL ForEachPlaylistLine(const CString& path, const PlaylistLineFn& take);

// `folder` is the folder of a playlist file on this machine, against which
// its relative entries are resolved; it is empty for a downloaded playlist.

// M3U: the title of each "#EXTINF" line (whatever its duration) is the text
// behind the first "," outside the attributes' quotes; each line starting
// with "http", "rtsp://" or "rtspt://" (any case) is a stream, and in a file
// of this machine any other line that is neither empty, a "#" line nor led by
// a blank is a local entry. Gives 0 when the file can't be opened.
BOOL ReadM3uEntries(const CString& path, const CString& folder, CStringArray& titles,
                    CStringArray& locations);
// PLS: the value behind the first "=" of each file line and of each title
// line; relative file values of a file of this machine are resolved. Gives 0
// when the file can't be opened.
BOOL ReadPlsEntries(const CString& path, const CString& folder, CStringArray& titles,
                    CStringArray& files);

// `entry` as a location of this machine: a relative path (with "\\" or "/")
// joined to `folder`, a "file://" address as its path; anything else, and
// everything when `folder` is empty, as it stands.
CString ResolvePlaylistEntry(const CString& entry, const CString& folder);

// One item per location, named by the title of the same position or
// "Unknown" and typed by the extension table: a stream as a stream (an audio
// stream when the table says nothing), a local entry as a file (an audio
// file when the table says nothing).
void BuildPlaylistItems(const CStringArray& titles, const CStringArray& locations,
                        const CExtensionArray& extensions, CMediaArray& items);

// The head of a written M3U file.
void WriteM3uHead(CStdioFileEx* file);

// A library item that stands for a playlist is read as PLS when its
// location holds "pls" anywhere, otherwise as M3U.
BOOL IsPlsPlaylistItem(const CMediaItem& item);
