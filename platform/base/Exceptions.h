// The exceptions of the file layer. Each carries the report a user sees when
// the operation that failed is shown to him.
#pragma once
#include <exception>

#include "platform/base/CString.h"

class CException : public std::exception {
public:
    ~CException() override = default;
    // The text of the report, as a user reads it.
    virtual CString GetErrorMessage() const = 0;
    // Shows the report in a message box and gives the box's answer.
    int ReportError(UINT type = 0x30 /* MB_ICONEXCLAMATION */) const;
    const char* what() const noexcept override;

private:
    mutable std::string m_what;
};

// An index outside the bounds the caller's own tests cover: a programming error.
class CInvalidArgException : public CException {
public:
    CString GetErrorMessage() const override;
};

class CFileException : public CException {
public:
    enum Cause {
        none = 0,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile,
    };

    CFileException() = default;
    CFileException(int cause, int osError, const CString& fileName)
        : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

    static int OsErrorToCause(int osError);
    static CFileException FromErrno(int osError, const CString& fileName);

    CString GetErrorMessage() const override;

    int m_cause = none;
    int m_lOsError = 0; // errno of the failed call, 0 when none
    CString m_strFileName;
};

class CArchiveException : public CException {
public:
    enum Cause {
        none = 0,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema,
    };

    CArchiveException() = default;
    CArchiveException(int cause, const CString& fileName)
        : m_cause(cause), m_strFileName(fileName) {}

    CString GetErrorMessage() const override;

    int m_cause = none;
    CString m_strFileName;
};
