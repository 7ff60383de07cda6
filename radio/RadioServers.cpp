// Finding the directory's servers: the server list is scanned line by line
// for the shared domain, without reading it as JSON. Each host is the domain
// and the four characters in front of it.
#include <string>

#include "net/Curlinet.h"
#include "platform/base/Deployment.h"
#include "platform/base/File.h"
#include "radio/RadioBrowseDb.h"

namespace {

constexpr ULONGLONG kMaxServerListBytes = 0x800;

} // namespace

int CRadioBrowseDb::GetServers(const CString& fileName, CString* message, CStringArray* servers) {
    return GetServers(CString(RB_SERVER_LIST_URL), fileName, message, servers);
}

int CRadioBrowseDb::GetServers(const CString& listUrl, const CString& fileName, CString* message,
                               CStringArray* servers) {
    servers->RemoveAll();
    CCurlinet transfer;
    CString error;
    if (!transfer.GetInternetData(listUrl, fileName, &error, 0)) {
        if (error.Find(CString(u"Are you connected to the internet")) >= 0)
            *message = u"Radio Browser server not available - are you connected to the internet?";
        else
            message->Format(CString(u"Could not connect to Radio Browser server: %s"), error);
        return 0;
    }
    CFile file;
    CFileException openError;
    if (!file.Open(fileName, CFile::modeRead | CFile::typeText, &openError)) {
        message->Format(CString(u"CRadioBrowseDb GetServers - can not open file %s, error = %u\n"),
                        fileName, openError.m_cause);
        return 0;
    }
    if (file.GetLength() > kMaxServerListBytes) {
        file.Abort();
        message->Format(CString(u"CRadioBrowseDb GetServers - file %s is too long.\n"), fileName);
        return 0;
    }
    std::string bytes(static_cast<size_t>(file.GetLength()), '\0');
    UINT got = 0;
    try {
        got = file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    } catch (const CFileException& e) {
        file.Abort();
        message->Format(CString(u"CRadioBrowseDb GetServers - can not open file %s, error = %u\n"),
                        fileName, e.m_cause);
        return 0;
    }
    file.Abort();
    bytes.resize(got);

    const CString domain(RB_SERVER_DOMAIN);
    const int domainLength = domain.GetLength();
    size_t begin = 0;
    while (begin < bytes.size()) {
        size_t lf = bytes.find('\n', begin);
        if (lf == std::string::npos)
            lf = bytes.size();
        std::string_view raw = std::string_view(bytes).substr(begin, lf - begin);
        if (!raw.empty() && raw.back() == '\r')
            raw.remove_suffix(1);
        begin = lf + 1;
        const CString line = CString::FromUtf8(raw);
        for (int p = line.Find(domain); p >= 0; p = line.Find(domain, p + domainLength)) {
            const int start = p - 4;
            const int end = p + domainLength;
            if (start < 0 || end >= line.GetLength()) {
                *message = u"CRadioBrowseDb GetServers - parsing error.\n";
                servers->RemoveAll();
                return 0;
            }
            const CString entry = CString(u"https://") + line.Mid(start, end - start);
            bool known = false;
            for (const CString& server : *servers)
                known |= server == entry;
            if (!known)
                servers->Add(entry);
        }
    }
    if (servers->IsEmpty()) {
        *message = u"ERROR CRadioBrowseDb GetServers - no server urls gotten.\n";
        return 0;
    }
    return servers->GetSize();
}
