// Lets GoogleTest print CString values as readable text in its failure
// messages, instead of their bytes.
#pragma once
#include <ostream>

#include "platform/base/CString.h"

inline void PrintTo(const CString& text, std::ostream* out) {
    *out << '"' << text.ToUtf8() << '"';
}
