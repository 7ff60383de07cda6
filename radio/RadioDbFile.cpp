// The tables as a whole: the file's body, copying, clearing.
#include "platform/base/File.h"
#include "platform/base/MessageBox.h"
#include "platform/base/ReplacingFile.h"
#include "radio/ListIndexes.h"
#include "radio/RadioBrowseDb.h"
#include "radio/StationSearchIndex.h"

namespace {

void WriteCodeRecord(CArchive& ar, const CString& name, const CString& code, int32_t number) {
    ar << name << code << number;
}

// Reads `count` records with `read`; a count is never trusted to reserve
// memory, so a corrupt one costs no more than the file really holds.
template <typename Array, typename ReadOne>
void ReadTable(CArchive& ar, Array& table, ReadOne readOne) {
    table.RemoveAll();
    int32_t count = 0;
    ar >> count;
    for (int32_t i = 0; i < count; ++i) {
        typename Array::value_type record;
        readOne(record);
        table.Add(std::move(record));
    }
}

std::unique_ptr<CStationSearchIndex> IndexOf(const CStationAr& stations) {
    auto index = std::make_unique<CStationSearchIndex>();
    for (const CStation& station : stations)
        index->Append(station);
    return index;
}

template <typename Record>
void ReadCodeRecord(CArchive& ar, Record& record) {
    ar >> record.m_name >> record.m_code >> record.m_used;
}

} // namespace

CRadioBrowseDb::CRadioBrowseDb() = default;
CRadioBrowseDb::~CRadioBrowseDb() = default;

void CRadioBrowseDb::StoreTo(CArchive& ar) const {
    ar << static_cast<int32_t>(m_stations.GetSize());
    for (const CStation& s : m_stations) {
        ar << s.m_name << s.m_url << s.m_country << s.m_state << s.m_language << s.m_tags;
        ar << s.m_votes << s.m_clicks;
    }
    ar << static_cast<int32_t>(m_countries.GetSize());
    for (const CCountryCode& c : m_countries)
        WriteCodeRecord(ar, c.m_name, c.m_code, c.m_used);
    ar << static_cast<int32_t>(m_tags.GetSize());
    for (const CTag& t : m_tags)
        ar << t.m_name << t.m_count;
    ar << static_cast<int32_t>(m_states.GetSize());
    for (const CState& s : m_states)
        WriteCodeRecord(ar, s.m_name, s.m_countryCode, s.m_count);
    ar << static_cast<int32_t>(m_languages.GetSize());
    for (const CLanguageCode& l : m_languages)
        WriteCodeRecord(ar, l.m_name, l.m_code, l.m_used);
}

void CRadioBrowseDb::LoadFrom(CArchive& ar) {
    InvalidateSearchIndex();
    // The search's index grows with the stations, each indexed while its
    // text is at hand, so that even the first search after a load is quick.
    m_searchIndex = std::make_unique<CStationSearchIndex>();
    ReadTable(ar, m_stations, [&](CStation& s) {
        ar >> s.m_name >> s.m_url >> s.m_country >> s.m_state >> s.m_language >> s.m_tags;
        ar >> s.m_votes >> s.m_clicks;
        m_searchIndex->Append(s);
    });
    ReadTable(ar, m_countries, [&](CCountryCode& c) { ReadCodeRecord(ar, c); });
    ReadTable(ar, m_tags, [&](CTag& t) { ar >> t.m_name >> t.m_count; });
    ReadTable(ar, m_states, [&](CState& s) { ar >> s.m_name >> s.m_countryCode >> s.m_count; });
    ReadTable(ar, m_languages, [&](CLanguageCode& l) { ReadCodeRecord(ar, l); });
}

void CRadioBrowseDb::AssignTables(const CRadioBrowseDb& other) {
    if (&other == this)
        return;
    InvalidateSearchIndex();
    m_stations.Copy(other.m_stations);
    m_searchIndex = IndexOf(m_stations);
    m_countries.Copy(other.m_countries);
    m_tags.Copy(other.m_tags);
    m_states.Copy(other.m_states);
    m_languages.Copy(other.m_languages);
}

void CRadioBrowseDb::ClearTables() {
    InvalidateSearchIndex();
    // Swapping with empty arrays gives the memory back, which clearing alone
    // would keep.
    m_stations = CStationAr();
    m_countries = CCountryCodeArray();
    m_tags = CTagArray();
    m_states = CStateArray();
    m_languages = CLanguageCodeArray();
}

int CRadioBrowseDb::FindNoCase(const CString& text, const CString& pattern) {
    m_scratchA = text;
    m_scratchB = pattern;
    m_scratchA.MakeUpper();
    m_scratchB.MakeUpper();
    return m_scratchA.Find(m_scratchB);
}

void CRadioBrowseDb::InvalidateSearchIndex() {
    m_searchIndex.reset();
    m_results.RemoveAll();
}

namespace {

// Runs `work` on a file that `open` opened; a failure to open and any
// exception on the way are shown with the exception's own report and give 0.
// `work` gives 0 when it has abandoned the file itself.
template <typename Open, typename Work>
BOOL WithRadioFile(CFile& file, Open open, Work work) {
    CFileException error;
    if (!open(error)) {
        error.ReportError();
        return FALSE;
    }
    try {
        if (!work()) {
            file.Abort();
            return FALSE;
        }
        file.Close();
        return TRUE;
    } catch (const CException& e) {
        file.Abort();
        e.ReportError();
        return FALSE;
    }
}

} // namespace

BOOL SaveRadioBrowseFile(const CRadioBrowseDb& db, const CString& path) {
    // The old database stays until the new one is complete on the disc.
    CReplacingFile file;
    const auto open = [&](CFileException& error) { return file.OpenForReplace(path, &error); };
    return WithRadioFile(file, open, [&] {
        CArchive ar(&file, CArchive::store, 4096);
        ar << int32_t{1};
        db.StoreTo(ar);
        ar.Close();
        return TRUE;
    });
}

BOOL LoadRadioBrowseFile(CRadioBrowseDb& db, const CString& path) {
    CFile file;
    const auto open = [&](CFileException& error) {
        return file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &error);
    };
    return WithRadioFile(file, open, [&] {
        if (file.GetLength() == 0)
            return FALSE;
        CArchive ar(&file, CArchive::load, 4096);
        int32_t schema = 0;
        ar >> schema;
        if (schema != 1) {
            MessageBoxW(nullptr, CString(u"RB data wrong schema."), CString(u"Orvex Application"),
                        MB_ICONINFORMATION);
            return FALSE;
        }
        db.LoadFrom(ar);
        ar.Close();
        return TRUE;
    });
}
