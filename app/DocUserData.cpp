// The user data file: the two pane fonts as their 92-byte records, the LAV
// choices and the two browsing folders. Loading never speaks to the user: a
// file that can't be read only leaves defaults, or a mix of read values and
// defaults when it ends early.
#include "app/OrvexDoc.h"
#include "platform/base/Archive.h"

namespace {

// Schema 1 files end behind the LAV choices; schema 2 adds the folders.
constexpr int32_t kUserDataSchema = 2;

void StoreFlag(CArchive& ar, BOOL value) {
    ar << static_cast<int32_t>(value);
}

void LoadFlag(CArchive& ar, BOOL& value) {
    int32_t stored = 0;
    ar >> stored;
    value = stored;
}

} // namespace

BOOL COrvexDoc::SaveUserData(const CString& path) {
    CFile file;
    CFileException error;
    if (!file.Open(path, CFile::modeCreate | CFile::modeWrite, &error)) {
        error.ReportError();
        return FALSE;
    }
    try {
        CArchive ar(&file, CArchive::store);
        ar << kUserDataSchema;
        ar.Write(&m_rightFont, sizeof m_rightFont);
        ar.Write(&m_leftFont, sizeof m_leftFont);
        StoreFlag(ar, m_lavSetup.m_bWma2);
        StoreFlag(ar, m_lavSetup.m_bWmaPro);
        StoreFlag(ar, m_lavSetup.m_bWmaAll);
        StoreFlag(ar, m_lavSetup.m_bStereoSpeakers);
        ar << m_videoFolder;
        ar << m_contentsFolder;
        ar.Close();
        file.Close();
        return TRUE;
    } catch (const CException&) {
        file.Abort();
        return FALSE;
    }
}

BOOL COrvexDoc::LoadUserData(const CString& path) {
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite))
        return FALSE;
    try {
        if (file.GetLength() == 0) {
            file.Close();
            return FALSE;
        }
        CArchive ar(&file, CArchive::load);
        int32_t schema = 0;
        ar >> schema;
        if (schema > kUserDataSchema) {
            file.Abort();
            return FALSE;
        }
        // Straight into the fields: a file cut inside a record leaves the
        // bytes that were there.
        ar.ReadExact(&m_rightFont, sizeof m_rightFont);
        ar.ReadExact(&m_leftFont, sizeof m_leftFont);
        LoadFlag(ar, m_lavSetup.m_bWma2);
        LoadFlag(ar, m_lavSetup.m_bWmaPro);
        LoadFlag(ar, m_lavSetup.m_bWmaAll);
        LoadFlag(ar, m_lavSetup.m_bStereoSpeakers);
        if (schema >= 2) {
            ar >> m_videoFolder;
            ar >> m_contentsFolder;
        }
        ar.Close();
        file.Close();
        return TRUE;
    } catch (const CException&) {
        file.Abort();
        return FALSE;
    }
}
