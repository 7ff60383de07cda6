// The searchable fields of every station as people read them (decoded) and in
// simple case folding, made once per table instead of once per test. Laid out
// in one block so that a scan over all stations reads memory in order.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "radio/RadioRecords.h"

class CStationSearchIndex {
public:
    enum Field { name, country, state, language, tags, fieldCount };

    explicit CStationSearchIndex(const CStationAr& stations);

    int GetSize() const { return m_size; }
    std::u16string_view Get(int station, Field field) const {
        const Span& span = m_spans[static_cast<size_t>(station) * fieldCount + field];
        return std::u16string_view(m_text).substr(span.begin, span.length);
    }

private:
    struct Span {
        uint32_t begin;
        uint32_t length;
    };
    int m_size = 0;
    std::u16string m_text;
    std::vector<Span> m_spans;
};
