// What the document's file operations share.
#pragma once
#include "platform/base/ReplacingFile.h"

// Opens `path`; when that fails, shows the report of the file exception and
// gives 0.
BOOL OpenFileOrReport(CFile& file, const CString& path, UINT openFlags);
// Opens the replacement of the file at `path` (see CReplacingFile); when
// that fails, shows the report of the file exception and gives 0.
BOOL OpenReplacementOrReport(CReplacingFile& file, const CString& path);
