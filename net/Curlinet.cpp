#include "net/Curlinet.h"

#include <atomic>
#include <cerrno>
#include <strings.h>

#include "platform/base/AppContext.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"

namespace {

constexpr UINT kTargetOpenFlags = CFile::modeCreate | CFile::modeWrite; // 0x1001
constexpr uint32_t kBytesPerProgressStep = 0x100000;
constexpr int kNoHandle = -1;

// libcurl's words for the two failures that get words of their own.
constexpr const char* kResolveFailedText = "Couldn't resolve host name";
constexpr const char* kAbortedByCallbackText = "Operation was aborted by an application callback";

std::atomic<long> g_stallSeconds{kDefaultStallSeconds};

void ApplyOption(CURL* curl, const CurlOption& option) {
    if (option.write)
        curl_easy_setopt(curl, option.id, option.write);
    else if (option.progress)
        curl_easy_setopt(curl, option.id, option.progress);
    else if (option.id >= CURLOPTTYPE_OBJECTPOINT && option.id < CURLOPTTYPE_FUNCTIONPOINT)
        curl_easy_setopt(curl, option.id,
                         option.text ? static_cast<const void*>(option.text) : option.data);
    else
        curl_easy_setopt(curl, option.id, option.number);
}

} // namespace

void SetTransferStallSeconds(long seconds) {
    g_stallSeconds = seconds;
}

long GetTransferStallSeconds() {
    return g_stallSeconds;
}

std::string StringToAnsi(const CString& text) {
    return text.ToUtf8();
}

CString CurlErrorText(const char* curlText, const char16_t* lineEnd, bool cancelByUser) {
    std::string libcurl = curlText ? curlText : "";
    if (cancelByUser && libcurl == kAbortedByCallbackText)
        return CString(u"Download canceled by user.");
    CString text = CString(u"Download Failed: Error ") + CString::FromUtf8(libcurl);
    if (libcurl == kResolveFailedText) {
        text += lineEnd;
        text += u"Are you connected to the internet?";
    }
    return text;
}

CCurlinet::CCurlinet() : m_lastProgress(-1), m_bytesReceived(0), m_maxBytes(0) {}

std::vector<CurlOption> CCurlinet::TransferOptions(const std::string& url,
                                                   const std::string* userAgent,
                                                   const std::string& caBundle,
                                                   const std::string& caCert) {
    std::vector<CurlOption> options;
    options.push_back({.id = CURLOPT_URL, .text = url.c_str()});
    if (userAgent)
        options.push_back({.id = CURLOPT_USERAGENT, .text = userAgent->c_str()});
    options.push_back({.id = CURLOPT_HEADER, .number = 0});
    options.push_back({.id = CURLOPT_WRITEFUNCTION, .write = &CCurlinet::WriteCallback});
    options.push_back({.id = CURLOPT_FOLLOWLOCATION, .number = 1});
    options.push_back({.id = CURLOPT_CAPATH, .text = caBundle.c_str()});
    options.push_back({.id = CURLOPT_CAINFO, .text = caCert.c_str()});
    options.push_back({.id = CURLOPT_HTTPGET, .number = 1});
    options.push_back({.id = CURLOPT_WRITEDATA, .data = this});
    options.push_back({.id = CURLOPT_VERBOSE, .number = 1});
    options.push_back({.id = CURLOPT_PROTOCOLS_STR, .text = "http,https"});
    // Never from https to plain http: the answer of a trusted server must not
    // lead to one nobody can check.
    const bool secure = strncasecmp(url.c_str(), "https:", 6) == 0;
    options.push_back({.id = CURLOPT_REDIR_PROTOCOLS_STR, .text = secure ? "https" : "http,https"});
    options.push_back({.id = CURLOPT_MAXREDIRS, .number = kMaxRedirects});
    options.push_back({.id = CURLOPT_LOW_SPEED_LIMIT, .number = 1});
    options.push_back({.id = CURLOPT_LOW_SPEED_TIME, .number = g_stallSeconds});
    if (userAgent || m_watch) {
        options.push_back({.id = CURLOPT_NOPROGRESS, .number = 0});
        options.push_back(
            {.id = CURLOPT_XFERINFOFUNCTION, .progress = &CCurlinet::ProgressCallback});
        options.push_back({.id = CURLOPT_XFERINFODATA, .data = this});
    }
    return options;
}

int CCurlinet::Perform(const std::vector<CurlOption>& options) {
    CURL* curl = curl_easy_init();
    if (!curl)
        return kNoHandle;
    for (const CurlOption& option : options)
        ApplyOption(curl, option);
    CURLcode result = curl_easy_perform(curl);
    curl_easy_cleanup(curl);
    return result;
}

void CCurlinet::CloseFile() {
    try {
        m_file.Close();
    } catch (const CFileException&) {
        m_file.Abort();
    }
}

BOOL CCurlinet::GetInternetData(CString url, CString fileName, CString* error, unsigned maxBytes) {
    m_maxBytes = 0;
    m_bytesReceived = 0;
    m_watchStopped = false;
    if (maxBytes)
        m_maxBytes = maxBytes;
    if (!m_file.Open(fileName, kTargetOpenFlags))
        return FALSE;

    CString startDirectory = AfxGetAppContext().GetStartDirectory();
    std::string ansiUrl = StringToAnsi(url);
    std::string caBundle = StringToAnsi(startDirectory + kCaBundleRelativePath);
    std::string caCert = StringToAnsi(startDirectory + kCaCertRelativePath);

    curl_global_init(CURL_GLOBAL_ALL);
    int result = Perform(TransferOptions(ansiUrl, nullptr, caBundle, caCert));
    if (result == kNoHandle) {
        CString text;
        text.Format(u"EasyInit failed with %d", errno);
        AfxMessageBox(text);
    } else if (result != CURLE_OK && error) {
        *error =
            CurlErrorText(curl_easy_strerror(static_cast<CURLcode>(result)), u"\n", m_watchStopped);
    }
    curl_global_cleanup();
    CloseFile();
    return result == CURLE_OK;
}

BOOL CCurlinet::GetInternetDataUnicodeThread(CString url, CString fileName, CString* error,
                                             HWND hwndMain, HWND hwndProgress,
                                             CEvent* pCancelEvent) {
    if (!hwndMain || !hwndProgress || !pCancelEvent) {
        if (error)
            *error = u"CCurlinet::GetInternetDataUnicodeThread param errors.\n";
        return FALSE;
    }
    m_hwndMain = hwndMain;
    m_hwndProgress = hwndProgress;
    m_pCancelEvent = pCancelEvent;
    m_lastProgress = -1;
    if (!m_file.Open(fileName, kTargetOpenFlags))
        return FALSE;

    CString startDirectory = AfxGetAppContext().GetStartDirectory();
    std::string ansiUrl = StringToAnsi(url);
    std::string userAgent = kJobUserAgent;
    std::string caBundle = StringToAnsi(startDirectory + kCaBundleRelativePath);
    std::string caCert = StringToAnsi(startDirectory + kCaCertRelativePath);

    if (IsCancelled()) {
        CloseFile();
        ShowStatus(u"Canceling download.");
        return FALSE;
    }
    ShowStatus(u"Connecting to Radio Browser server.");

    curl_global_init(CURL_GLOBAL_ALL);
    int result = Perform(TransferOptions(ansiUrl, &userAgent, caBundle, caCert));
    if (result == kNoHandle) {
        CString text;
        text.Format(u"Connection failed with %d", errno);
        ShowStatus(text);
    } else if (result == CURLE_OK) {
        ShowStatus(u"Download complete.");
    } else {
        CString text =
            CurlErrorText(curl_easy_strerror(static_cast<CURLcode>(result)), u"\r\n", true);
        if (error)
            *error = text;
        ShowStatus(text);
    }
    curl_global_cleanup();
    CloseFile();
    return result == CURLE_OK;
}

size_t CCurlinet::WriteCallback(char* buffer, size_t size, size_t nmemb, void* job) {
    return static_cast<CCurlinet*>(job)->OnWrite(buffer, size * nmemb);
}

int CCurlinet::ProgressCallback(void* job, curl_off_t dltotal, curl_off_t dlnow, curl_off_t,
                                curl_off_t) {
    return static_cast<CCurlinet*>(job)->OnProgress(dltotal, dlnow);
}

size_t CCurlinet::OnWrite(const char* buffer, size_t count) {
    if (m_maxBytes) {
        m_bytesReceived += static_cast<uint32_t>(count);
        if (m_bytesReceived > m_maxBytes) {
            if (!m_bQuietLimit)
                AfxMessageBox(u"Cancelling download - maximum file size exceeded.");
            return 0;
        }
    }
    try {
        m_file.Write(buffer, static_cast<UINT>(count));
    } catch (const CFileException& e) {
        // The report is cut where the classic 255-character buffer would cut it.
        AfxMessageBox(CString(u"Unknown error: ") + e.GetErrorMessage().Left(254));
        return 0;
    }
    return count;
}

int CCurlinet::OnProgress(curl_off_t dltotal, curl_off_t dlnow) {
    if (m_watch) {
        if (m_watch(static_cast<uint64_t>(dlnow), static_cast<uint64_t>(dltotal)))
            return CURL_PROGRESSFUNC_CONTINUE;
        m_watchStopped = true;
        return 1;
    }
    int32_t mb = static_cast<int32_t>(static_cast<uint32_t>(dlnow) / kBytesPerProgressStep);
    if (m_lastProgress == -1) {
        ShowStatus(u"Downloading Radio Browser data.\r\nPlease wait.");
        m_lastProgress = 0;
        PostProgress(0);
    }
    if (mb > m_lastProgress) {
        m_lastProgress = mb;
        PostProgress(mb);
    }
    if (IsCancelled()) {
        ShowStatus(u"Canceling download.");
        return 1;
    }
    return CURL_PROGRESSFUNC_CONTINUE;
}

void CCurlinet::PostProgress(int position) {
    if (m_hwndProgress)
        PostMessageW(m_hwndProgress, UM_UPDATE_POS, 0, position);
}
