// The hits of a search: which stations of the table, in the order of the last
// sort. It reads like a table of station records (GetSize, [], range-for)
// but copies none: a search that hits most of 55,000 stations notes their
// positions and is done. The records are the table's own, so every change of
// the table empties the results.
#pragma once
#include <vector>

#include "radio/RadioRecords.h"

class CStationResults {
public:
    explicit CStationResults(const CStationAr& stations) : m_stations(stations) {}
    CStationResults(const CStationResults&) = delete;
    CStationResults& operator=(const CStationResults&) = delete;

    int GetSize() const { return static_cast<int>(m_positions.size()); }
    int GetCount() const { return GetSize(); }
    BOOL IsEmpty() const { return m_positions.empty(); }
    const CStation& operator[](int index) const { return GetAt(index); }
    const CStation& GetAt(int index) const { return m_stations[GetStationIndex(index)]; }
    // The position in the table of result `index`.
    int GetStationIndex(int index) const {
        if (index < 0 || index >= GetSize())
            throw CInvalidArgException();
        return m_positions[static_cast<size_t>(index)];
    }

    // Takes the station at `station` of the table as the next result.
    void AddStation(int station) {
        if (station < 0 || station >= m_stations.GetSize())
            throw CInvalidArgException();
        m_positions.push_back(station);
    }
    void RemoveAll() { m_positions.clear(); }
    std::vector<int>& Positions() { return m_positions; }

    class const_iterator {
    public:
        const_iterator(const CStationResults& results, size_t at) : m_results(&results), m_at(at) {}
        const CStation& operator*() const {
            return m_results->m_stations[m_results->m_positions[m_at]];
        }
        const CStation* operator->() const { return &**this; }
        const_iterator& operator++() {
            ++m_at;
            return *this;
        }
        bool operator==(const const_iterator& other) const { return m_at == other.m_at; }

    private:
        const CStationResults* m_results;
        size_t m_at;
    };
    const_iterator begin() const { return const_iterator(*this, 0); }
    const_iterator end() const { return const_iterator(*this, m_positions.size()); }

private:
    const CStationAr& m_stations;
    std::vector<int> m_positions;
};
