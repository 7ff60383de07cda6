#include "platform/base/Exceptions.h"

#include <cerrno>
#include <cstring>

#include "platform/base/MessageBox.h"

int CException::ReportError(UINT type) const {
    return AfxMessageBox(GetErrorMessage(), type);
}

const char* CException::what() const noexcept {
    try {
        m_what = GetErrorMessage().ToUtf8();
    } catch (...) {
        return "exception";
    }
    return m_what.c_str();
}

CString CInvalidArgException::GetErrorMessage() const {
    return CString(u"Invalid argument.");
}

int CFileException::OsErrorToCause(int osError) {
    switch (osError) {
    case 0:
        return none;
    case ENOENT:
        return fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return badPath;
    case EMFILE:
    case ENFILE:
        return tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EEXIST:
        return accessDenied;
    case EBADF:
        return invalidFile;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return diskFull;
    case EIO:
        return hardIO;
    case ESPIPE:
    case EOVERFLOW:
        return badSeek;
    case ETXTBSY:
    case EBUSY:
        return sharingViolation;
    default:
        return genericException;
    }
}

CFileException CFileException::FromErrno(int osError, const CString& fileName) {
    return CFileException(OsErrorToCause(osError), osError, fileName);
}

CString CFileException::GetErrorMessage() const {
    const CString name = m_strFileName.IsEmpty() ? CString(u"an unnamed file") : m_strFileName;
    CString text;
    switch (m_cause) {
    case none:
        text = u"No error occurred.";
        break;
    case fileNotFound:
        text.Format(u"%s was not found.", name);
        break;
    case badPath:
        text.Format(u"%s contains an incorrect path.", name);
        break;
    case tooManyOpenFiles:
        text.Format(u"%s could not be opened because there are too many open files.", name);
        break;
    case accessDenied:
        text.Format(u"Access to %s was denied.", name);
        break;
    case invalidFile:
        text.Format(u"An incorrect file handle was associated with %s.", name);
        break;
    case removeCurrentDir:
        text.Format(u"%s could not be removed because it is the current directory.", name);
        break;
    case directoryFull:
        text.Format(u"%s could not be created because the directory is full.", name);
        break;
    case badSeek:
        text.Format(u"Seek failed on %s.", name);
        break;
    case hardIO:
        text.Format(u"A hardware I/O error was reported while accessing %s.", name);
        break;
    case sharingViolation:
        text.Format(u"A sharing violation occurred while accessing %s.", name);
        break;
    case lockViolation:
        text.Format(u"A locking violation occurred while accessing %s.", name);
        break;
    case diskFull:
        text.Format(u"Disk full while accessing %s.", name);
        break;
    case endOfFile:
        text.Format(u"An attempt was made to access %s past its end.", name);
        break;
    default:
        text.Format(u"An unexpected error occurred while accessing %s.", name);
        break;
    }
    if (m_lOsError != 0 && m_cause == genericException)
        text.AppendFormat(u" (%s)", strerror(m_lOsError));
    return text;
}

CString CArchiveException::GetErrorMessage() const {
    const CString name = m_strFileName.IsEmpty() ? CString(u"an unnamed file") : m_strFileName;
    CString text;
    switch (m_cause) {
    case none:
        text = u"No error occurred.";
        break;
    case readOnly:
        text.Format(u"An attempt was made to write to %s while reading it.", name);
        break;
    case endOfFile:
        text.Format(u"Unexpected end of file while reading %s.", name);
        break;
    case writeOnly:
        text.Format(u"An attempt was made to read from %s while writing it.", name);
        break;
    case badIndex:
    case badClass:
    case badSchema:
        text.Format(u"Unexpected file format in %s.", name);
        break;
    default:
        text.Format(u"An unexpected error occurred while reading %s.", name);
        break;
    }
    return text;
}
