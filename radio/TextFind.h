// Substring search over UTF-16 units, eight positions at a time: a position
// is a candidate only when both the pattern's first and last units match
// there, and only candidates are compared in full. Gives what
// std::u16string_view::find gives.
#pragma once
#include <cstring>
#include <string_view>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

inline size_t FindUnits(std::u16string_view text, std::u16string_view pattern) {
    const size_t n = text.size();
    const size_t m = pattern.size();
    if (m == 0)
        return 0;
    if (m > n)
        return std::u16string_view::npos;
    const char16_t* t = text.data();
    const char16_t* p = pattern.data();
    size_t i = 0;
#if defined(__SSE2__)
    const __m128i first = _mm_set1_epi16(static_cast<short>(p[0]));
    const __m128i last = _mm_set1_epi16(static_cast<short>(p[m - 1]));
    for (; i + m - 1 + 8 <= n; i += 8) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(t + i));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(t + i + m - 1));
        unsigned mask = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi16(a, first), _mm_cmpeq_epi16(b, last))));
        while (mask) {
            const unsigned bit = static_cast<unsigned>(__builtin_ctz(mask));
            const size_t at = i + bit / 2;
            if (memcmp(t + at, p, m * sizeof(char16_t)) == 0)
                return at;
            mask &= ~(3u << bit);
        }
    }
#endif
    for (; i + m <= n; ++i) {
        if (t[i] == p[0] && memcmp(t + i, p, m * sizeof(char16_t)) == 0)
            return i;
    }
    return std::u16string_view::npos;
}
