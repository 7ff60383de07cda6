#include "radio/StationText.h"

namespace {

bool IsContinuation(char16_t unit) {
    return unit >= 0x80 && unit <= 0xBF;
}

// The length of the valid UTF-8 sequence at `at` and the code point it
// spells, or 0 when the units there spell none.
size_t ReadSequence(std::u16string_view text, size_t at, char32_t& code) {
    const char16_t lead = text[at];
    size_t length = 0;
    char16_t low = 0x80, high = 0xBF; // the bounds of the second unit
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0F;
        low = lead == 0xE0 ? 0xA0 : 0x80;  // no overlong forms
        high = lead == 0xED ? 0x9F : 0xBF; // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF; // nothing beyond U+10FFFF
    } else {
        return 0;
    }
    if (at + length > text.size() || text[at + 1] < low || text[at + 1] > high)
        return 0;
    for (size_t k = 1; k < length; ++k) {
        if (!IsContinuation(text[at + k]))
            return 0;
        code = (code << 6) | (text[at + k] & 0x3F);
    }
    return length;
}

template <typename Put>
void Decode(std::u16string_view text, Put put) {
    const size_t size = text.size();
    for (size_t i = 0; i < size;) {
        const char16_t unit = text[i];
        if (unit < 0x80) {
            put(unit);
            ++i;
            continue;
        }
        char32_t code = 0;
        const size_t length = unit >= 0xC2 && unit <= 0xF4 ? ReadSequence(text, i, code) : 0;
        if (length == 0) {
            put(unit);
            ++i;
        } else if (code < 0x10000) {
            put(static_cast<char16_t>(code));
            i += length;
        } else {
            code -= 0x10000;
            put(static_cast<char16_t>(0xD800 + (code >> 10)));
            put(static_cast<char16_t>(0xDC00 + (code & 0x3FF)));
            i += length;
        }
    }
}

} // namespace

CString StationText(const CString& stored) {
    std::u16string text;
    text.reserve(stored.str().size());
    Decode(stored.view(), [&](char16_t unit) { text.push_back(unit); });
    return CString(std::move(text));
}

void AppendFoldedStationText(std::u16string_view stored, std::u16string& out) {
    // Written through a pointer into room made beforehand: decoding never
    // makes text longer, and the search index folds millions of units.
    const size_t start = out.size();
    out.resize(start + stored.size());
    char16_t* next = out.data() + start;
    const char16_t* const fold = CaseFoldTable();
    Decode(stored, [&](char16_t unit) { *next++ = fold[unit]; });
    out.resize(static_cast<size_t>(next - out.data()));
}

std::u16string FoldedStationText(std::u16string_view stored) {
    std::u16string folded;
    folded.reserve(stored.size());
    AppendFoldedStationText(stored, folded);
    return folded;
}
