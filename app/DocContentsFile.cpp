// Saving and loading the contents file. Both report file trouble through the
// exception's own text; loading keeps whatever it read before trouble began.
#include "app/DocFiles.h"
#include "app/OrvexDoc.h"
#include "contents/ContentsArchive.h"
#include "platform/base/Archive.h"
#include "platform/base/MessageBox.h"

BOOL OpenFileOrReport(CFile& file, const CString& path, UINT openFlags) {
    CFileException error;
    if (file.Open(path, openFlags, &error))
        return TRUE;
    error.ReportError();
    return FALSE;
}

BOOL OpenReplacementOrReport(CReplacingFile& file, const CString& path) {
    CFileException error;
    if (file.OpenForReplace(path, &error))
        return TRUE;
    error.ReportError();
    return FALSE;
}

BOOL COrvexDoc::SaveContents(const CString& path) {
    // The old file stays until the new one is complete on the disc.
    CReplacingFile file;
    if (!OpenReplacementOrReport(file, path))
        return FALSE;
    try {
        CArchive ar(&file, CArchive::store);
        int schema = CONTENTS_SCHEMA;
        ar << CONTENTS_SCHEMA;
        m_contents.Store(ar, m_aliases, &schema);
        ar.Close();
        file.Close();
        return TRUE;
    } catch (const CException& e) {
        file.Abort();
        e.ReportError();
        return FALSE;
    }
}

BOOL COrvexDoc::LoadContents(const CString& path) {
    CFile file;
    if (!OpenFileOrReport(file, path, CFile::modeRead | CFile::shareDenyWrite))
        return FALSE;
    BOOL result = TRUE;
    try {
        if (file.GetLength() == 0) {
            file.Close();
            return FALSE;
        }
        CArchive ar(&file, CArchive::load);
        int32_t schema = 0;
        ar >> schema;
        if (schema != CONTENTS_SCHEMA) {
            ar.Abort();
            file.Abort();
            MessageBoxW(nullptr, CString(u"User data file could not be read."),
                        CString(u"Orvex Application"), MB_OK | MB_ICONINFORMATION);
            return FALSE;
        }
        m_contents.ResetContents();
        int handedDown = schema;
        m_contents.Load(ar, m_aliases, &handedDown);
        ar.Close();
        file.Close();
    } catch (const CException& e) {
        file.Abort();
        e.ReportError();
        result = FALSE;
    }
    if (m_contents.m_topics.IsEmpty())
        return FALSE;
    RefreshDisplay(TRUE, TRUE, nullptr, TRUE, TRUE);
    return result;
}
