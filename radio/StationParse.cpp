// The parsing half of the station download: the file through the scanner.
#include <climits>
#include <vector>

#include "platform/base/File.h"
#include "platform/base/UserMessages.h"
#include "radio/RadioBrowseDb.h"
#include "radio/StationScanner.h"

namespace {

// A decimal number the way the C library's wide atoi reads it: leading white
// space, a sign, digits up to the first other character; no number gives 0.
// Values beyond 32 bits stop at the nearest bound.
int32_t ReadDecimal(const CString& text) {
    const std::u16string& s = text.str();
    size_t i = 0;
    while (i < s.size() && (s[i] == u' ' || (s[i] >= u'\t' && s[i] <= u'\r')))
        ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-'))
        negative = s[i++] == u'-';
    long long value = 0;
    for (; i < s.size() && s[i] >= u'0' && s[i] <= u'9'; ++i) {
        value = value * 10 + (s[i] - u'0');
        if (value > static_cast<long long>(INT_MAX) + 1)
            break;
    }
    if (negative)
        value = -value;
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return static_cast<int32_t>(value);
}

// Larger than a disk block for speed; block ends mean nothing to the scanner.
constexpr UINT kReadBlock = 0x10000;

} // namespace

void CRadioBrowseDb::SetStationField(const CString& key, const CString& value) {
    SetStationField(StationFieldFromKey(key.view()), value);
}

void CRadioBrowseDb::SetStationField(StationField field, CString value) {
    switch (field) {
    case StationField::name:
        m_work.m_name = std::move(value);
        break;
    case StationField::url:
    case StationField::urlResolved:
        m_work.m_url = std::move(value);
        break;
    case StationField::tags:
        m_work.m_tags = std::move(value);
        break;
    case StationField::country:
        if (m_work.m_country.IsEmpty())
            m_work.m_country = std::move(value);
        break;
    case StationField::countryCode:
        m_work.m_country = std::move(value);
        break;
    case StationField::state:
        m_work.m_state = std::move(value);
        break;
    case StationField::language:
        if (m_work.m_language.IsEmpty())
            m_work.m_language = std::move(value);
        break;
    case StationField::languageCodes:
        m_work.m_language = std::move(value);
        break;
    case StationField::votes:
        m_work.m_votes = ReadDecimal(value);
        break;
    case StationField::clickCount:
        m_work.m_clicks = ReadDecimal(value);
        break;
    case StationField::none:
        break;
    }
}

int CRadioBrowseDb::ParseStationFile(const CString& fileName, CString* error) {
    ShowStatus(CString(u"Proccessing Radio Browser station data.\r\nPlease wait."));
    if (m_hwndProgress)
        PostMessageW(m_hwndProgress, UM_UPDATE_RANGE, 0, 40);
    CFile file;
    CFileException openError;
    if (!file.Open(fileName, CFile::modeRead | CFile::typeBinary, &openError)) {
        if (error)
            error->Format(CString(u"Couldn't open file: %s"), openError.GetErrorMessage());
        return 0;
    }
    InvalidateSearchIndex();
    m_stations.RemoveAll();
    // A job that was cancelled half way through a record must not hand its
    // fields to the first record of the next one.
    m_work.Reset();
    CStationScanner scanner(*this);
    std::vector<BYTE> block(kReadBlock);
    try {
        for (;;) {
            const UINT got = file.Read(block.data(), kReadBlock);
            if (got == 0)
                break;
            if (!scanner.Feed(block.data(), got)) {
                file.Abort();
                return 0;
            }
        }
    } catch (const CException& e) {
        file.Abort();
        if (error)
            *error = e.GetErrorMessage();
        return 0;
    }
    file.Abort();
    m_bDirectoryCut = !scanner.EndsWithRootClosed();
    if (m_stations.IsEmpty()) {
        const CString text(u"CRadioBrowseDb::LoadDb - got no stations.\n");
        if (error)
            *error = text;
        ShowStatus(text);
        return 0;
    }
    return m_stations.GetSize();
}
