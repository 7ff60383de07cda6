// Helpers shared by the radio tests: a station of the given fields.
#pragma once
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
