// Small helpers for indexing text: hash maps that can be asked with a view,
// and the upper-case form the search compares in.
#pragma once
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/base/CString.h"

struct TextKeyHash {
    using is_transparent = void;
    size_t operator()(std::u16string_view text) const noexcept {
        return std::hash<std::u16string_view>()(text);
    }
};
struct TextKeyEqual {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const noexcept { return a == b; }
};
template <typename Value>
using TextKeyMap = std::unordered_map<std::u16string, Value, TextKeyHash, TextKeyEqual>;

inline std::u16string UpperText(std::u16string_view text) {
    std::u16string upper(text);
    for (char16_t& ch : upper)
        ch = ToUpperUnit(ch);
    return upper;
}

// White space as the string class trims it.
inline std::u16string_view TrimView(std::u16string_view text) {
    while (!text.empty() && IsWhiteSpaceUnit(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsWhiteSpaceUnit(text.back()))
        text.remove_suffix(1);
    return text;
}
