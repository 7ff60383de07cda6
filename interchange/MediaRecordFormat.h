// The Media Record Format: the program's own line-oriented text form of media
// items, the one text form that carries every field of an item. Field lines
// ("0", "6", "7", "10", "11") announce that the next line is their value.
#pragma once
#include "contents/MediaContents.h"
#include "contents/TopicAliases.h"
#include "interchange/StdioFileEx.h"

// The head every whole file starts with, line by line.
void WriteMediaRecordHead(CStdioFileEx* file);

// One record as the media list copies it to the clipboard: no head, the topic
// and favourite fields always present, names as they are, and no empty line
// behind the record.
CString MediaRecordClipboardText(const CMediaItem& item);

// A local file item: one the export can leave out as a disc file. Paths with
// a drive (":\") count, and so do absolute local paths ("/..."); streams and
// relative paths never do.
BOOL IsDiscFileItem(const CMediaItem& item);

// Reads every valid record of a file into `items`, in file order, and counts
// them in *count. Gives 0 when the file can't be opened. Names in the topic
// field pass through `aliases` from stored to display form.
BOOL ReadMediaRecordFile(const CString& path, const CTopicStrAliasAr* aliases, CMediaArray& items,
                         int* count);
