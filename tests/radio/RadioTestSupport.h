// Helpers shared by the radio tests: small station and table builders.
#pragma once
#include <string>

#include "radio/RadioBrowseDb.h"
#include "tests/support/PrintCString.h"

inline CStation MakeStation(const char16_t* name, const char16_t* url, const char16_t* country,
                            const char16_t* state, const char16_t* language, const char16_t* tags,
                            int votes = 0, int clicks = 0) {
    CStation s;
    s.m_name = name;
    s.m_url = url;
    s.m_country = country;
    s.m_state = state;
    s.m_language = language;
    s.m_tags = tags;
    s.m_votes = votes;
    s.m_clicks = clicks;
    return s;
}

// Bytes as written in a format table: each int one byte.
inline std::string Bytes(std::initializer_list<int> values) {
    std::string s;
    for (int v : values)
        s += static_cast<char>(v);
    return s;
}

// A wide string in the file's tagged form, for strings under 255 units of
// ASCII.
inline std::string WideField(const std::string& ascii) {
    std::string s = Bytes({0xFF, 0xFE, 0xFF, static_cast<int>(ascii.size())});
    for (char c : ascii) {
        s += c;
        s += '\0';
    }
    return s;
}

inline std::string Int32(int32_t v) {
    std::string s(4, '\0');
    for (int i = 0; i < 4; ++i)
        s[i] = static_cast<char>((static_cast<uint32_t>(v) >> (8 * i)) & 0xFF);
    return s;
}
