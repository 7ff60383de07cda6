#include "tests/support/TestHttpServer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <fstream>
#include <stdexcept>

namespace {

constexpr size_t kMaxHeaderBytes = 64 * 1024;
constexpr size_t kMaxRequestBody = 1024 * 1024;
constexpr int kSocketTimeoutSeconds = 10;
constexpr unsigned char kTlsHandshakeRecord = 0x16;

const char* ReasonPhrase(int status) {
    static const std::map<int, const char*> phrases = {{200, "OK"},
                                                       {206, "Partial Content"},
                                                       {301, "Moved Permanently"},
                                                       {302, "Found"},
                                                       {303, "See Other"},
                                                       {307, "Temporary Redirect"},
                                                       {308, "Permanent Redirect"},
                                                       {400, "Bad Request"},
                                                       {403, "Forbidden"},
                                                       {404, "Not Found"},
                                                       {416, "Range Not Satisfiable"},
                                                       {500, "Internal Server Error"},
                                                       {503, "Service Unavailable"}};
    auto it = phrases.find(status);
    return it == phrases.end() ? "Status" : it->second;
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string Trim(const std::string& text) {
    size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return std::string();
    size_t last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

void AddExtension(X509* certificate, int nid, const char* value) {
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
    X509_EXTENSION* extension = X509V3_EXT_conf_nid(nullptr, &context, nid, value);
    if (!extension)
        throw std::runtime_error("TestHttpServer: bad certificate extension");
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

// A "bytes=first-last" or "bytes=first-" range over a body of the given size.
bool ParseRange(const std::string& header, size_t size, size_t& first, size_t& last) {
    if (header.rfind("bytes=", 0) != 0 || size == 0)
        return false;
    std::string range = header.substr(6);
    size_t dash = range.find('-');
    if (dash == std::string::npos || range.find(',') != std::string::npos)
        return false;
    try {
        std::string from = Trim(range.substr(0, dash));
        std::string to = Trim(range.substr(dash + 1));
        if (from.empty()) { // the last N bytes
            size_t count = std::stoull(to);
            if (count == 0)
                return false;
            first = count >= size ? 0 : size - count;
            last = size - 1;
            return true;
        }
        first = std::stoull(from);
        last = to.empty() ? size - 1 : std::min<size_t>(std::stoull(to), size - 1);
        return first < size && first <= last;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

struct TestHttpServer::Tls {
    SSL_CTX* context = nullptr;
    ~Tls() { SSL_CTX_free(context); }
};

// One accepted socket, plain or wrapped in TLS.
struct TestHttpServer::Connection {
    int fd = -1;
    SSL* ssl = nullptr;

    ~Connection() {
        if (ssl)
            SSL_free(ssl);
    }
    long Read(char* buffer, size_t size) {
        if (ssl) {
            int n = SSL_read(ssl, buffer, static_cast<int>(size));
            return n > 0 ? n : -1;
        }
        ssize_t n = recv(fd, buffer, size, 0);
        return n > 0 ? n : -1;
    }
    bool Write(const char* data, size_t size) {
        while (size > 0) {
            long n;
            if (ssl)
                n = SSL_write(ssl, data, static_cast<int>(std::min<size_t>(size, 1 << 30)));
            else
                n = send(fd, data, size, MSG_NOSIGNAL);
            if (n <= 0)
                return false;
            data += n;
            size -= static_cast<size_t>(n);
        }
        return true;
    }
};

TestHttpServer::TestHttpServer() : m_tls(std::make_unique<Tls>()) {
    signal(SIGPIPE, SIG_IGN);

    // A fresh key and a self-signed certificate for 127.0.0.1 and localhost.
    EVP_PKEY* key = EVP_EC_gen("P-256");
    X509* certificate = X509_new();
    if (!key || !certificate)
        throw std::runtime_error("TestHttpServer: no key or certificate");
    X509_set_version(certificate, 2);
    uint64_t serial = 0;
    RAND_bytes(reinterpret_cast<unsigned char*>(&serial), sizeof serial);
    ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), serial >> 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 30L * 24 * 3600);
    X509_set_pubkey(certificate, key);
    X509_NAME* name = X509_get_subject_name(certificate);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>("127.0.0.1"), -1, -1, 0);
    X509_set_issuer_name(certificate, name);
    AddExtension(certificate, NID_basic_constraints, "critical,CA:TRUE");
    AddExtension(certificate, NID_key_usage, "critical,digitalSignature,keyCertSign");
    AddExtension(certificate, NID_ext_key_usage, "serverAuth");
    AddExtension(certificate, NID_subject_key_identifier, "hash");
    AddExtension(certificate, NID_subject_alt_name, "IP:127.0.0.1,DNS:localhost");
    X509_sign(certificate, key, EVP_sha256());

    BIO* pem = BIO_new(BIO_s_mem());
    PEM_write_bio_X509(pem, certificate);
    char* pemData = nullptr;
    long pemSize = BIO_get_mem_data(pem, &pemData);
    m_certificatePem.assign(pemData, static_cast<size_t>(pemSize));
    BIO_free(pem);

    m_tls->context = SSL_CTX_new(TLS_server_method());
    bool tlsReady = m_tls->context && SSL_CTX_use_certificate(m_tls->context, certificate) == 1 &&
                    SSL_CTX_use_PrivateKey(m_tls->context, key) == 1;
    X509_free(certificate);
    EVP_PKEY_free(key);
    if (!tlsReady)
        throw std::runtime_error("TestHttpServer: TLS set-up failed");

    m_listenFd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    int yes = 1;
    setsockopt(m_listenFd, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    if (bind(m_listenFd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(m_listenFd, 64) != 0)
        throw std::runtime_error("TestHttpServer: cannot listen on 127.0.0.1");
    socklen_t length = sizeof address;
    getsockname(m_listenFd, reinterpret_cast<sockaddr*>(&address), &length);
    m_port = ntohs(address.sin_port);
    if (pipe2(m_wakeFds, O_CLOEXEC) != 0)
        throw std::runtime_error("TestHttpServer: no pipe");
    m_acceptThread = std::thread([this] { AcceptLoop(); });
}

TestHttpServer::~TestHttpServer() {
    Stop();
}

void TestHttpServer::Stop() {
    {
        std::lock_guard<std::mutex> lock(m_lock);
        if (m_stopping.exchange(true))
            return;
        m_stopRequested.notify_all();
    }
    char wake = 1;
    [[maybe_unused]] ssize_t n = write(m_wakeFds[1], &wake, 1);
    if (m_acceptThread.joinable())
        m_acceptThread.join();
    std::vector<std::thread> workers;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        for (int fd : m_openFds)
            shutdown(fd, SHUT_RDWR);
        workers.swap(m_workers);
    }
    for (std::thread& worker : workers)
        worker.join();
    close(m_listenFd);
    close(m_wakeFds[0]);
    close(m_wakeFds[1]);
}

void TestHttpServer::AcceptLoop() {
    while (!m_stopping) {
        pollfd fds[2] = {{m_listenFd, POLLIN, 0}, {m_wakeFds[0], POLLIN, 0}};
        if (poll(fds, 2, -1) < 0)
            continue;
        if (fds[1].revents || m_stopping)
            break;
        int fd = accept4(m_listenFd, nullptr, nullptr, SOCK_CLOEXEC);
        if (fd < 0)
            continue;
        ++m_connections;
        timeval timeout{kSocketTimeoutSeconds, 0};
        setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
        setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout);
        std::lock_guard<std::mutex> lock(m_lock);
        m_openFds.push_back(fd);
        m_workers.emplace_back([this, fd] { Serve(fd); });
    }
}

void TestHttpServer::Serve(int fd) {
    Connection connection;
    connection.fd = fd;
    unsigned char first = 0;
    if (recv(fd, &first, 1, MSG_PEEK) == 1 && first == kTlsHandshakeRecord) {
        connection.ssl = SSL_new(m_tls->context);
        SSL_set_fd(connection.ssl, fd);
        if (SSL_accept(connection.ssl) != 1) {
            SSL_free(connection.ssl);
            connection.ssl = nullptr;
            connection.fd = -1;
        }
    }

    TestHttpRequest request;
    request.tls = connection.ssl != nullptr;
    std::string data;
    size_t headerEnd = std::string::npos;
    char buffer[4096];
    while (connection.fd >= 0 && headerEnd == std::string::npos && data.size() < kMaxHeaderBytes) {
        long n = connection.Read(buffer, sizeof buffer);
        if (n <= 0)
            break;
        data.append(buffer, static_cast<size_t>(n));
        headerEnd = data.find("\r\n\r\n");
    }
    if (headerEnd != std::string::npos) {
        size_t lineEnd = data.find("\r\n");
        std::string requestLine = data.substr(0, lineEnd);
        size_t space1 = requestLine.find(' ');
        size_t space2 = requestLine.find(' ', space1 + 1);
        if (space1 != std::string::npos && space2 != std::string::npos) {
            request.method = requestLine.substr(0, space1);
            request.target = requestLine.substr(space1 + 1, space2 - space1 - 1);
            request.path = request.target.substr(0, request.target.find('?'));
        }
        size_t position = lineEnd + 2;
        while (position < headerEnd) {
            size_t end = data.find("\r\n", position);
            std::string line = data.substr(position, end - position);
            size_t colon = line.find(':');
            if (colon != std::string::npos)
                request.headers[Lower(line.substr(0, colon))] = Trim(line.substr(colon + 1));
            position = end + 2;
        }
        request.body = data.substr(headerEnd + 4);
        size_t wanted = 0;
        try {
            wanted =
                std::min<size_t>(std::stoull(request.Header("content-length")), kMaxRequestBody);
        } catch (const std::exception&) {
        }
        while (request.body.size() < wanted) {
            long n = connection.Read(buffer, sizeof buffer);
            if (n <= 0)
                break;
            request.body.append(buffer, static_cast<size_t>(n));
        }
        if (!request.method.empty()) {
            Record(request);
            SendResponse(connection, request, Answer(request));
        }
    }
    if (connection.ssl && !m_stopping)
        SSL_shutdown(connection.ssl);
    {
        std::lock_guard<std::mutex> lock(m_lock);
        m_openFds.erase(std::remove(m_openFds.begin(), m_openFds.end(), fd), m_openFds.end());
    }
    close(fd);
}

void TestHttpServer::Record(const TestHttpRequest& request) {
    std::lock_guard<std::mutex> lock(m_lock);
    m_requests.push_back(request);
    m_requestArrived.notify_all();
}

TestHttpResponse TestHttpServer::Answer(const TestHttpRequest& request) {
    TestHttpHandler handler;
    {
        std::lock_guard<std::mutex> lock(m_lock);
        auto it = m_routes.find(request.target);
        if (it == m_routes.end())
            it = m_routes.find(request.path);
        if (it != m_routes.end())
            handler = it->second;
    }
    if (handler)
        return handler(request);
    TestHttpResponse notFound;
    notFound.status = 404;
    notFound.contentType = "text/html";
    notFound.body = "<html><body><h1>404 Not Found</h1><p>" + request.path +
                    " is not on this server.</p></body></html>\n";
    return notFound;
}

bool TestHttpServer::SendResponse(Connection& connection, const TestHttpRequest& request,
                                  const TestHttpResponse& response) {
    const std::string& body = response.body;
    size_t first = 0;
    size_t count = body.size();
    int status = response.status;
    std::string head;
    bool ranged = false;
    if (status == 200 && response.contentLength && !response.endless &&
        !request.Header("range").empty()) {
        size_t last = 0;
        if (ParseRange(request.Header("range"), body.size(), first, last)) {
            status = 206;
            count = last - first + 1;
            ranged = true;
        } else {
            status = 416;
            first = 0;
            count = 0;
        }
    }
    head = "HTTP/1.1 " + std::to_string(status) + " " + ReasonPhrase(status) + "\r\n";
    head += "Content-Type: " + response.contentType + "\r\n";
    head += "Accept-Ranges: bytes\r\n";
    if (ranged)
        head += "Content-Range: bytes " + std::to_string(first) + "-" +
                std::to_string(first + count - 1) + "/" + std::to_string(body.size()) + "\r\n";
    else if (status == 416)
        head += "Content-Range: bytes */" + std::to_string(body.size()) + "\r\n";
    if (response.contentLength && !response.endless)
        head += "Content-Length: " + std::to_string(count) + "\r\n";
    for (const auto& [name, value] : response.headers)
        head += name + ": " + value + "\r\n";
    head += "Connection: close\r\n\r\n";
    if (!connection.Write(head.data(), head.size()))
        return false;
    if (request.method == "HEAD")
        return true;

    size_t chunk = response.chunkBytes ? response.chunkBytes : std::max<size_t>(count, 1);
    size_t sent = 0;
    size_t offset = first;
    size_t end = first + count;
    bool firstChunk = true;
    while (!m_stopping) {
        if (offset >= end) {
            if (!response.endless || body.empty())
                break;
            offset = 0;
            end = body.size();
        }
        size_t piece = std::min(chunk, end - offset);
        if (response.cutAfter != TestHttpResponse::kWhole)
            piece = std::min(piece, response.cutAfter - sent);
        if (piece == 0)
            return false; // the cut: the connection closes with the body unfinished
        if (response.holdAt != TestHttpResponse::kWhole && response.release) {
            if (offset < response.holdAt)
                piece = std::min(piece, response.holdAt - offset);
            else if (offset == response.holdAt && !Released(response))
                return false;
        }
        if (!firstChunk && response.chunkDelayMs > 0) {
            std::unique_lock<std::mutex> lock(m_lock);
            m_stopRequested.wait_for(lock, std::chrono::milliseconds(response.chunkDelayMs),
                                     [this] { return m_stopping.load(); });
        }
        firstChunk = false;
        if (m_stopping || !connection.Write(body.data() + offset, piece))
            return false;
        offset += piece;
        sent += piece;
    }
    return true;
}

bool TestHttpServer::Released(const TestHttpResponse& response) {
    while (!m_stopping) {
        if (response.release())
            return true;
        std::unique_lock<std::mutex> lock(m_lock);
        m_stopRequested.wait_for(lock, std::chrono::milliseconds(10),
                                 [this] { return m_stopping.load(); });
    }
    return false;
}

void TestHttpServer::Route(const std::string& target, const std::string& body, int status,
                           const std::string& contentType) {
    TestHttpResponse response;
    response.status = status;
    response.body = body;
    response.contentType = contentType;
    Route(target, response);
}

void TestHttpServer::Route(const std::string& target, const TestHttpResponse& response) {
    Handle(target, [response](const TestHttpRequest&) { return response; });
}

void TestHttpServer::Redirect(const std::string& target, const std::string& location, int status) {
    TestHttpResponse response;
    response.status = status;
    response.contentType = "text/html";
    response.body = "<html><body>Moved to " + location + "</body></html>\n";
    response.headers.emplace_back("Location", location);
    Route(target, response);
}

void TestHttpServer::Trickle(const std::string& target, const std::string& body, size_t chunkBytes,
                             int delayMs) {
    TestHttpResponse response;
    response.body = body;
    response.chunkBytes = chunkBytes;
    response.chunkDelayMs = delayMs;
    Route(target, response);
}

void TestHttpServer::Cut(const std::string& target, const std::string& body, size_t cutAfter) {
    TestHttpResponse response;
    response.body = body;
    response.cutAfter = cutAfter;
    Route(target, response);
}

void TestHttpServer::Handle(const std::string& target, TestHttpHandler handler) {
    std::lock_guard<std::mutex> lock(m_lock);
    m_routes[target] = std::move(handler);
}

std::string TestHttpServer::Url(const std::string& target) const {
    return "http://127.0.0.1:" + std::to_string(m_port) + target;
}

std::string TestHttpServer::HttpsUrl(const std::string& target) const {
    return "https://127.0.0.1:" + std::to_string(m_port) + target;
}

void TestHttpServer::StageCertificates(const std::filesystem::path& startDirectory) const {
    std::filesystem::path folder = startDirectory / "Curl_Local" / "bin";
    std::filesystem::create_directories(folder);
    for (const char* name : {"cacert.pem", "curl-ca-bundle.crt"}) {
        std::ofstream out(folder / name, std::ios::binary | std::ios::trunc);
        out << m_certificatePem;
    }
}

std::vector<TestHttpRequest> TestHttpServer::Requests() const {
    std::lock_guard<std::mutex> lock(m_lock);
    return m_requests;
}

int TestHttpServer::RequestCount(const std::string& path) const {
    std::lock_guard<std::mutex> lock(m_lock);
    return static_cast<int>(
        std::count_if(m_requests.begin(), m_requests.end(),
                      [&](const TestHttpRequest& r) { return r.path == path; }));
}

bool TestHttpServer::WaitForRequest(const std::string& path, int timeoutMs) const {
    std::unique_lock<std::mutex> lock(m_lock);
    return m_requestArrived.wait_for(lock, std::chrono::milliseconds(timeoutMs), [&] {
        return std::any_of(m_requests.begin(), m_requests.end(),
                           [&](const TestHttpRequest& r) { return r.path == path; });
    });
}

namespace {

std::string IcyBlock(const std::string& title) {
    if (title.empty())
        return std::string(1, '\0');
    std::string text = "StreamTitle='" + title + "';";
    size_t units = (text.size() + 15) / 16;
    text.resize(units * 16, '\0');
    return static_cast<char>(units) + text;
}

// The body with a metadata block after every metaint bytes of audio; the
// place of each song's announcement goes to blockOffsets.
std::string IcyBody(size_t metaint, const std::vector<TestIcySong>& songs,
                    std::vector<size_t>* blockOffsets) {
    std::string audio;
    std::vector<size_t> starts;
    for (const TestIcySong& song : songs) {
        starts.push_back(audio.size());
        audio += song.bytes;
    }
    std::string body;
    blockOffsets->assign(songs.size(), 0);
    for (size_t position = 0; position < audio.size(); position += metaint) {
        body += audio.substr(position, metaint);
        if (position + metaint >= audio.size())
            break;
        std::string title;
        for (size_t i = 0; i < songs.size(); ++i) {
            if (starts[i] == position + metaint) {
                title = songs[i].title;
                (*blockOffsets)[i] = body.size();
            }
        }
        body += IcyBlock(title);
    }
    return body;
}

} // namespace

std::vector<TestIcySong> ServeIcyStation(TestHttpServer& server, const std::string& target,
                                         const std::string& mp3, std::function<bool()> release) {
    constexpr size_t kMetaint = 8192;
    const std::vector<TestIcySong> songs = {{"", mp3.substr(0, kMetaint)},
                                            {"Song One", mp3.substr(kMetaint, 2 * kMetaint)},
                                            {"Song Two", mp3.substr(3 * kMetaint)}};
    std::vector<size_t> offsets;
    IcyBody(kMetaint, songs, &offsets);
    const size_t holdAt = offsets[1];
    server.Handle(target, [songs, holdAt, release](const TestHttpRequest& request) {
        TestHttpResponse response = IcyResponse(request, kMetaint, songs);
        response.holdAt = holdAt;
        response.release = release;
        return response;
    });
    return songs;
}

TestHttpResponse IcyResponse(const TestHttpRequest& request, size_t metaint,
                             const std::vector<TestIcySong>& songs) {
    TestHttpResponse response;
    response.contentType = "audio/mpeg";
    response.contentLength = false;
    response.headers.emplace_back("icy-name", "Loopback Radio");
    if (request.Header("icy-metadata") != "1" || metaint == 0) {
        for (const TestIcySong& song : songs)
            response.body += song.bytes;
        return response;
    }
    response.headers.emplace_back("icy-metaint", std::to_string(metaint));
    std::vector<size_t> offsets;
    response.body = IcyBody(metaint, songs, &offsets);
    return response;
}
