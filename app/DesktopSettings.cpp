#include "app/DesktopSettings.h"

#include <fstream>

#include "platform/base/ReplacingFile.h"

const char16_t* const kDesktopSettingsFile = u"OrvexSettings.txt";

namespace {

constexpr const char16_t* kRecordingsFolder = u"RecordingsFolder";
constexpr const char16_t* kCloseToTray = u"CloseToTray";

} // namespace

BOOL CDesktopSettings::Load(const CString& path) {
    std::ifstream in(path.ToUtf8(), std::ios::binary);
    if (!in)
        return FALSE;
    std::string text(kMaxBytes, '\0');
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(in.gcount()));
    m_otherLines.RemoveAll();
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        CString line = CString::FromUtf8(std::string_view(text).substr(start, end - start));
        start = end + 1;
        line.TrimRight(u'\r');
        int equals = line.Find(u'=');
        CString name = equals > 0 ? line.Left(equals) : CString();
        CString value = equals > 0 ? line.Mid(equals + 1) : CString();
        if (name == kRecordingsFolder)
            m_recordingsFolder = value;
        else if (name == kCloseToTray)
            m_bCloseToTray = value == u"1";
        else if (!line.IsEmpty())
            m_otherLines.Add(line);
    }
    return TRUE;
}

BOOL CDesktopSettings::Save(const CString& path) const {
    CString text;
    text.Format(u"%s=%s\r\n%s=%d\r\n", kRecordingsFolder, m_recordingsFolder, kCloseToTray,
                m_bCloseToTray ? 1 : 0);
    for (int i = 0; i < m_otherLines.GetSize(); ++i)
        text += m_otherLines[i] + u"\r\n";
    const std::string bytes = text.ToUtf8();
    // A failed save leaves the settings as they were.
    CReplacingFile file;
    if (!file.OpenForReplace(path))
        return FALSE;
    try {
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file.Close();
        return TRUE;
    } catch (const CException&) {
        file.Abort();
        return FALSE;
    }
}
