// The user data file: the two pane fonts as their 92-byte records, the LAV
// choices and the two browsing folders. Loading never speaks to the user: a
// file that can't be read only leaves defaults, or a mix of read values and
// defaults when it ends early.
#include "app/DocFiles.h"
#include "app/OrvexDoc.h"
#include "platform/base/Archive.h"

namespace {

// Schema 1 files end behind the LAV choices; schema 2 adds the folders.
constexpr int32_t kUserDataSchema = 2;

// The four LAV choices, in the order of the file.
constexpr BOOL CLavSetup::*kLavFields[] = {&CLavSetup::m_bWma2, &CLavSetup::m_bWmaPro,
                                           &CLavSetup::m_bWmaAll, &CLavSetup::m_bStereoSpeakers};

} // namespace

BOOL COrvexDoc::SaveUserData(const CString& path) {
    CReplacingFile file;
    if (!OpenReplacementOrReport(file, path))
        return FALSE;
    try {
        CArchive ar(&file, CArchive::store);
        ar << kUserDataSchema;
        ar.Write(&m_rightFont, sizeof m_rightFont);
        ar.Write(&m_leftFont, sizeof m_leftFont);
        for (BOOL CLavSetup::*field : kLavFields)
            ar << static_cast<int32_t>(m_lavSetup.*field);
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
        for (BOOL CLavSetup::*field : kLavFields) {
            int32_t stored = 0;
            ar >> stored;
            m_lavSetup.*field = stored;
        }
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
