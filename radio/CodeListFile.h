// The two name files beside the program, RadioBrowse_CC.txt (countries) and
// RadioBrowse_LC.txt (languages): one "name,code" record a line.
#pragma once
#include "platform/base/CString.h"
#include <functional>

// Hands each record, name and code, to `add` in the file's order. Empty lines,
// lines holding "//" anywhere and lines without a comma are skipped; the
// first comma splits name from code, and neither is trimmed. 0 when the file
// can't be read.
using CodeRecordSink = std::function<void(CString&& name, CString&& code)>;
BOOL ReadCodeListFile(const CString& path, const CodeRecordSink& add);
