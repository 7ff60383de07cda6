// The searchable fields of every station as people read them (decoded) and in
// simple case folding, made once per table instead of once per test. Each
// field is made at its first use, all stations' text of it in one block, so a
// scan over all stations reads memory in order and a first search after a
// load prepares only what it needs.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "radio/RadioRecords.h"

class CStationSearchIndex {
public:
    enum Field { name, country, state, language, tags, fieldCount };

    // For a table of `size` stations whose columns are made at first use.
    explicit CStationSearchIndex(int size) : m_size(size) {}
    // For a table being filled: every column made, growing with Append.
    CStationSearchIndex();
    // Adds the fields of the next station while they are at hand, which
    // costs far less than a walk over all stations later.
    void Append(const CStation& station);

    int GetSize() const { return m_size; }

    // One field of all stations.
    class CColumn {
    public:
        std::u16string_view Get(int station) const {
            const uint32_t begin = station == 0 ? 0 : m_ends[static_cast<size_t>(station) - 1];
            return std::u16string_view(m_text).substr(begin,
                                                      m_ends[static_cast<size_t>(station)] - begin);
        }

    private:
        friend class CStationSearchIndex;
        std::u16string m_text;
        std::vector<uint32_t> m_ends;
    };

    // The column of `field`, made from `stations` (the table this index
    // stands for) at its first use.
    const CColumn& Column(const CStationAr& stations, Field field);

    static constexpr CString CStation::*kFields[fieldCount] = {
        &CStation::m_name, &CStation::m_country, &CStation::m_state, &CStation::m_language,
        &CStation::m_tags};

private:
    int m_size = 0;
    CColumn m_columns[fieldCount];
    bool m_made[fieldCount] = {};
};
