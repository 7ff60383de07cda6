// The station directory's text as people read it. The database keeps the
// directory's UTF-8 bytes one per character, as the scanner gives them; what
// is shown, typed, searched, sorted or imported is the decoded text.
#pragma once
#include <string>
#include <string_view>

#include "platform/base/CString.h"

// Decodes the UTF-8 sequences of `stored`. A character that forms no valid
// sequence is taken as Latin-1 (it stands for itself), and one above 0xFF
// stays as it is, so already decoded text comes back unchanged (but for the
// rare text whose Latin-1 letters happen to spell UTF-8).
CString StationText(const CString& stored);
// The decoded text in Unicode simple case folding, added to `out`: the form
// in which the search compares and the sorts order "without case".
void AppendFoldedStationText(std::u16string_view stored, std::u16string& out);
std::u16string FoldedStationText(std::u16string_view stored);
