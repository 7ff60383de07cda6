#include "app/UpdateCheck.h"

#include <vector>

#include "net/Curlinet.h"
#include "platform/base/Deployment.h"
#include "platform/base/File.h"
#include "platform/base/MessageBox.h"
#include "platform/base/WaitCursor.h"

namespace {

constexpr int kVersionLineLength = 13;
constexpr int kVersionLength = 7;

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

// The lines of a text file as the text-mode reader gives them: split at LF,
// a CR before the LF dropped, no line after a final LF.
std::vector<CString> SplitLines(const std::string& bytes) {
    std::vector<CString> lines;
    size_t start = 0;
    while (start < bytes.size()) {
        size_t end = bytes.find('\n', start);
        size_t next = end == std::string::npos ? bytes.size() : end + 1;
        if (end == std::string::npos)
            end = bytes.size();
        else if (end > start && bytes[end - 1] == '\r')
            --end;
        lines.push_back(CString::FromUtf8(std::string_view(bytes).substr(start, end - start)));
        start = next;
    }
    return lines;
}

} // namespace

void CompareVersionLine(const CString& line, const CString& current, CVersionCheck& check) {
    if (line.GetLength() != kVersionLineLength) {
        check.failed = TRUE;
        return;
    }
    check.latest = line.Right(kVersionLength);
    if (current.GetLength() != kVersionLength) {
        check.failed = TRUE;
        return;
    }
    for (int i = 0; i < kVersionLength; ++i) {
        char16_t mine = current[i];
        if (mine == u'.')
            continue;
        char16_t theirs = check.latest[i];
        if (!IsDigit(mine) || !IsDigit(theirs)) {
            check.failed = TRUE;
            return;
        }
        if (mine < theirs) {
            check.newer = TRUE;
            return;
        }
        if (mine > theirs)
            return;
    }
}

CString DownloadServerAddress() {
    return CString(u"https://") + kDownloadServerHost;
}

BOOL CheckForUpdates(const CString& dataFolder, const CString& serverAddress,
                     const CString& currentVersion) {
    CWaitCursor wait;
    CString target = dataFolder + u"/results.txt";
    CVersionCheck check;

    CString error;
    {
        CCurlinet net;
        if (!net.GetInternetData(serverAddress + kVersionFilePath, target, &error,
                                 kVersionDownloadLimit)) {
            wait.Restore();
            CString text;
            text.Format(u"Unable to check for updates. %s", error);
            AfxMessageBox(text);
            return FALSE;
        }
    }

    CFile file;
    CFileException openError;
    if (!file.Open(target, CFile::typeText, &openError)) {
        wait.Restore();
        CString text;
        text.Format(u"Can not open file %s, error = %u\n", target,
                    static_cast<unsigned>(openError.m_cause));
        AfxMessageBox(text);
        return FALSE;
    }
    if (file.GetLength() > kMaxVersionFileBytes) {
        file.Abort();
        wait.Restore();
        CString text;
        text.Format(u"Check for updates - file %s is too long.\n", target);
        AfxMessageBox(text);
        return FALSE;
    }
    std::string bytes(static_cast<size_t>(kMaxVersionFileBytes), '\0');
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    file.Abort();
    for (const CString& line : SplitLines(bytes))
        CompareVersionLine(line, currentVersion, check);

    // The statistics file is asked for only so that the server counts the
    // check; its body is never read.
    {
        CCurlinet net;
        net.m_bQuietLimit = TRUE;
        CString ignored;
        net.GetInternetData(serverAddress + kVersionStatsPath, target, &ignored,
                            kVersionDownloadLimit);
    }
    wait.Restore();

    if (check.failed) {
        AfxMessageBox(u"Check for updates failed");
        return FALSE;
    }
    if (check.newer) {
        CString text;
        text.Format(u"A newer version, %s, is available at: ", check.latest);
        text += kProjectWebAddress;
        AfxMessageBox(text, MB_ICONINFORMATION);
    } else {
        AfxMessageBox(u"You have the latest version.", MB_ICONINFORMATION);
    }
    return TRUE;
}
