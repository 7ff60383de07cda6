// The small "name,value" text files that ship beside the program: the topic
// aliases and the radio country and language names share one grammar.
#pragma once
#include <functional>

#include "platform/base/CString.h"

// Hands each record, the text before the first comma and all behind it, to
// `add` in the file's order. The file is UTF-8 text (a leading byte-order mark
// is dropped); a CR in front of a line end goes with the line end. Empty
// lines, lines holding "//" anywhere and lines without a comma are skipped,
// and neither part is trimmed. 0 when the file can't be read.
using CommaRecordSink = std::function<void(CString&& name, CString&& value)>;
BOOL ReadCommaRecordFile(const CString& path, const CommaRecordSink& add);
