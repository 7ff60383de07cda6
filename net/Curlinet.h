// The one door to the network: a plain HTTP(S) GET through libcurl whose body
// lands in a file. The caller names the file and reads it back afterwards.
// One object serves one transfer at a time; make a local one for each job.
#pragma once
#include <curl/curl.h>

#include <functional>
#include <string>
#include <vector>

#include "net/JobLink.h"
#include "platform/base/File.h"

// The certificate files, under the start directory.
inline constexpr const char16_t* kCaBundleRelativePath = u"/Curl_Local/bin/curl-ca-bundle.crt";
inline constexpr const char16_t* kCaCertRelativePath = u"/Curl_Local/bin/cacert.pem";
// The user agent of transfers made for background jobs.
inline constexpr const char* kJobUserAgent = "Orvex application";

// Limits that keep a transfer from hanging or wandering: a transfer that
// moves less than a byte a second for the stall time ends with libcurl's time-out,
// at most kMaxRedirects redirects are followed, and only to http and https
// (from https only to https).
constexpr long kMaxRedirects = 10;
constexpr long kDefaultStallSeconds = 30;
// The stall time of every transfer of this process; tests shorten it.
void SetTransferStallSeconds(long seconds);
long GetTransferStallSeconds();

// One option handed to libcurl: a number, a text, a pointer or a callback,
// whichever the option takes.
struct CurlOption {
    CURLoption id;
    long number = 0;
    const char* text = nullptr;
    void* data = nullptr;
    curl_write_callback write = nullptr;
    curl_xferinfo_callback progress = nullptr;
};

class CCurlinet : public CJobLink {
public:
    CCurlinet();
    CCurlinet(const CCurlinet&) = delete;
    CCurlinet& operator=(const CCurlinet&) = delete;

    int32_t m_lastProgress; // whole MiB last posted; -1 before the first callback
    CFile m_file;
    uint32_t m_bytesReceived; // counted only while a limit is set
    uint32_t m_maxBytes;      // 0: no limit
    // A crossed limit ends the transfer without a message box: for bodies
    // that nobody reads.
    BOOL m_bQuietLimit = FALSE;
    // Set only for a blocking transfer that a window watches from another
    // thread: told the bytes so far and the announced size (0: not known);
    // answering false stops the transfer, which then fails with "Download
    // canceled by user.". Without it the blocking road asks libcurl for no
    // progress at all.
    std::function<bool(uint64_t received, uint64_t total)> m_watch;

    // Blocks until the transfer ends; nonzero when libcurl reported success,
    // whatever the HTTP status. maxBytes 0 means no limit.
    BOOL GetInternetData(CString url, CString fileName, CString* error, unsigned maxBytes);
    // For a worker thread: reports status and progress to hwndProgress and
    // stops when pCancelEvent is set. All three handles must be given.
    BOOL GetInternetDataUnicodeThread(CString url, CString fileName, CString* error, HWND hwndMain,
                                      HWND hwndProgress, CEvent* pCancelEvent);

    static size_t WriteCallback(char* buffer, size_t size, size_t nmemb, void* job);
    static int ProgressCallback(void* job, curl_off_t dltotal, curl_off_t dlnow, curl_off_t ultotal,
                                curl_off_t ulnow);
    // Posts UM_UPDATE_POS with the position when there is a progress window.
    void PostProgress(int position);

    // The options of one transfer, in the order they are given to libcurl.
    // A user agent is given only on the worker road, which also reports
    // progress; a watched blocking transfer reports progress too.
    std::vector<CurlOption> TransferOptions(const std::string& url, const std::string* userAgent,
                                            const std::string& caBundle, const std::string& caCert);

private:
    size_t OnWrite(const char* buffer, size_t count);
    int OnProgress(curl_off_t dltotal, curl_off_t dlnow);
    // Runs one transfer with the options; gives libcurl's result, or -1 when
    // no handle could be made.
    int Perform(const std::vector<CurlOption>& options);
    void CloseFile();

    bool m_watchStopped = false;
};

// The text a failed transfer reports: libcurl's own words, with a hint when
// the host could not be resolved (lineEnd before it) and, when cancelled
// counts, the words for a cancel by the user.
CString CurlErrorText(const char* curlText, const char16_t* lineEnd, bool cancelByUser);

// UTF-8, the program's narrow code page, for libcurl.
std::string StringToAnsi(const CString& text);
