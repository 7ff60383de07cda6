// The scanner of the directory's XML answer. It knows only double quotes,
// blanks, equals signs and angle brackets, and turns each byte into one
// character of the same number: nothing is decoded.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/base/Types.h"

class CRadioBrowseDb;

// The attributes a station takes; every other attribute is passed over.
enum class StationField : int8_t {
    none = -1,
    name,
    url,
    urlResolved,
    tags,
    country,
    countryCode,
    state,
    language,
    languageCodes,
    votes,
    clickCount,
};

StationField StationFieldFromKey(std::u16string_view key);

class CStationScanner {
public:
    explicit CStationScanner(CRadioBrowseDb& db) : m_db(db) {}

    // Feeds the next bytes of the document. Gives 0 when the job was
    // cancelled at a ">", after which nothing more may be fed.
    BOOL Feed(const BYTE* data, size_t size);
    int Added() const { return m_added; }

private:
    void EndOfTag();
    void OpenValue();
    void CloseValue();
    void ReportProgress();

    CRadioBrowseDb& m_db;
    int64_t m_position = 0;
    int64_t m_lastOpen = 0;
    bool m_inValue = false;
    // The key as gathered, bounded: a key longer than any known one can
    // never match, so only the fact that it overflowed is kept.
    std::string m_key;
    bool m_keyOverflow = false;
    StationField m_valueField = StationField::none;
    std::string m_value;
    int m_added = 0;
};
