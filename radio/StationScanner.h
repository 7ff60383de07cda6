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
    // Whether what was fed so far ends with the closing tag of the first
    // element opened, with nothing but white space behind it: a document cut
    // short anywhere else is not.
    bool EndsWithRootClosed() const;

private:
    void EndOfTag();
    void OpenValue();
    void CloseValue();
    void ReportProgress();
    void NoteTagName(BYTE c);

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
    // The first word of the tag being read, the root element's name and the
    // last tag's, each bounded: only whether they match matters.
    bool m_inTagName = false;
    std::string m_tagName;
    std::string m_rootName;
    std::string m_lastTagName;
    bool m_textAfterLastTag = false;
};
