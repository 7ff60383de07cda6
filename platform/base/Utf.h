// Conversions between UTF-16 (all text in memory) and UTF-8, which is the
// program's code page for narrow text: archive strings, text files without a
// byte-order mark, URLs and paths handed to the operating system.
#pragma once
#include <string>
#include <string_view>

#include "platform/base/Types.h"

constexpr UINT CP_UTF8 = 65001;

// The code page that stands for the system's ANSI code page.
UINT GetACP();

// Malformed input becomes U+FFFD, one per bad sequence; never fails.
std::u16string Utf8ToUtf16(std::string_view utf8);
// Whether the bytes are well-formed UTF-8 throughout.
bool IsValidUtf8(std::string_view bytes);
// Unpaired surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);
