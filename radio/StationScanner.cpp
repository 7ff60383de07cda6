#include "radio/StationScanner.h"

#include <algorithm>
#include <cstring>

#include "platform/base/UserMessages.h"
#include "radio/RadioBrowseDb.h"

namespace {

constexpr size_t kMaxKeyLength = 16; // longer than the longest known key
constexpr size_t kMaxTagNameLength = 64;

bool IsXmlWhiteSpace(BYTE c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

struct KnownKey {
    std::u16string_view key;
    StationField field;
};
constexpr KnownKey kKnownKeys[] = {
    {u"name", StationField::name},
    {u"url", StationField::url},
    {u"url_resolved", StationField::urlResolved},
    {u"tags", StationField::tags},
    {u"country", StationField::country},
    {u"countrycode", StationField::countryCode},
    {u"state", StationField::state},
    {u"language", StationField::language},
    {u"languagecodes", StationField::languageCodes},
    {u"votes", StationField::votes},
    {u"clickcount", StationField::clickCount},
};

CString Widen(const std::string& bytes) {
    std::u16string text(bytes.size(), u'\0');
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    for (size_t i = 0; i < bytes.size(); ++i)
        text[i] = static_cast<char16_t>(in[i]);
    return CString(std::move(text));
}

// ".m3u8" at or behind `start` plays; ".pls" or ".m3u" there is a playlist.
bool IsPlaylistUrl(const CString& url) {
    int start = url.GetLength() - 7;
    if (start < 0)
        start = 0;
    if (url.Find(CString(u".m3u8"), start) >= 0)
        return false;
    return url.Find(CString(u".pls"), start) >= 0 || url.Find(CString(u".m3u"), start) >= 0;
}

// The key as the scanner gathers it, one byte a character; no copy made,
// since it runs for every value of the directory.
StationField FieldOfKeyBytes(const std::string& key) {
    for (const KnownKey& known : kKnownKeys) {
        if (known.key.size() == key.size() &&
            std::equal(key.begin(), key.end(), known.key.begin(), [](char byte, char16_t ch) {
                return static_cast<unsigned char>(byte) == ch;
            }))
            return known.field;
    }
    return StationField::none;
}

} // namespace

StationField StationFieldFromKey(std::u16string_view key) {
    for (const KnownKey& known : kKnownKeys) {
        if (known.key == key)
            return known.field;
    }
    return StationField::none;
}

BOOL CStationScanner::Feed(const BYTE* data, size_t size) {
    const BYTE* p = data;
    const BYTE* const end = data + size;
    while (p < end) {
        if (m_inValue) {
            // A whole run up to the closing quote at once.
            const void* q = memchr(p, '"', static_cast<size_t>(end - p));
            const BYTE* stop = q ? static_cast<const BYTE*>(q) : end;
            if (m_valueField != StationField::none)
                m_value.append(reinterpret_cast<const char*>(p), static_cast<size_t>(stop - p));
            m_position += stop - p;
            p = stop;
            if (p == end)
                break;
            ++m_position;
            ++p;
            CloseValue();
            continue;
        }
        const BYTE c = *p++;
        ++m_position;
        if (m_lastOpen == 0 && !IsXmlWhiteSpace(c) && c != '<')
            m_textAfterLastTag = true;
        switch (c) {
        case '"':
            m_inTagName = false;
            OpenValue();
            break;
        case ' ':
            m_inTagName = false;
            m_key.clear();
            m_keyOverflow = false;
            break;
        case '=':
            break;
        case '<':
            m_lastOpen = m_position;
            m_inTagName = true;
            m_tagName.clear();
            break;
        case '>':
            m_inTagName = false;
            EndOfTag();
            if (m_db.IsCancelled())
                return FALSE;
            break;
        default:
            if (m_inTagName)
                NoteTagName(c);
            if (m_key.size() < kMaxKeyLength)
                m_key.push_back(static_cast<char>(c));
            else
                m_keyOverflow = true;
            break;
        }
    }
    return TRUE;
}

void CStationScanner::OpenValue() {
    m_value.clear();
    m_inValue = true;
    m_valueField = StationField::none;
    if (!m_keyOverflow)
        m_valueField = FieldOfKeyBytes(m_key);
}

void CStationScanner::CloseValue() {
    m_inValue = false;
    // An empty value never reaches the station, and neither does one whose
    // key the station doesn't take (it wasn't gathered).
    if (!m_value.empty())
        m_db.SetStationField(m_valueField, Widen(m_value));
    m_value.clear();
}

void CStationScanner::NoteTagName(BYTE c) {
    if (IsXmlWhiteSpace(c))
        m_inTagName = false;
    else if (m_tagName.size() < kMaxTagNameLength)
        m_tagName.push_back(static_cast<char>(c));
}

bool CStationScanner::EndsWithRootClosed() const {
    return !m_rootName.empty() && !m_inValue && m_lastOpen == 0 && !m_textAfterLastTag &&
           m_lastTagName == "/" + m_rootName;
}

void CStationScanner::EndOfTag() {
    if (m_lastOpen != 0) {
        m_lastTagName = m_tagName;
        m_textAfterLastTag = false;
        const char first = m_tagName.empty() ? '?' : m_tagName[0];
        if (m_rootName.empty() && first != '?' && first != '!' && first != '/')
            m_rootName = m_tagName;
    }
    const bool record = m_position - m_lastOpen > 9;
    m_lastOpen = 0;
    if (!record)
        return;
    CStation& work = m_db.m_work;
    if (work.m_name.IsEmpty() || work.m_url.IsEmpty())
        return; // what was gathered flows into the next record
    if (IsPlaylistUrl(work.m_url)) {
        CString marked;
        marked.Format(CString(u"!!Playlist: %s"), work.m_name);
        work.m_name = marked;
    }
    m_db.m_stations.Add(std::move(work));
    work.Reset();
    ++m_added;
    ReportProgress();
}

void CStationScanner::ReportProgress() {
    int position = -1;
    if (m_db.m_lastProgress == -1) {
        m_db.m_lastProgress = 0;
        position = 0;
    } else if (m_added / 1000 > m_db.m_lastProgress) {
        m_db.m_lastProgress = m_added / 1000;
        position = m_db.m_lastProgress;
    }
    if (position >= 0 && m_db.m_hwndProgress)
        PostMessageW(m_db.m_hwndProgress, UM_UPDATE_POS, 0, position);
}
