// An HTTP and HTTPS server on 127.0.0.1 for tests, on an ephemeral port and a
// thread of its own. Plain and TLS connections share the one port: the first
// byte of a connection tells them apart. The certificate is self-signed and
// made when the server starts.
//
//   TestHttpServer server;                          // listening once constructed
//   server.Route("/a.txt", "body");                 // 200 with Content-Length; Range works
//   server.Route("/gone", "<html>gone</html>", 404);// any status, with its body
//   server.Redirect("/old", "/a.txt");              // 302 to a path or an absolute URL
//   server.Trickle("/slow", body, 1024, 50);        // 1024 bytes, then 50 ms pause, ...
//   server.Cut("/cut", body, 1000);                 // announces the whole length, sends
//                                                   // 1000 bytes, then drops the connection
//   server.Handle("/x", [](const TestHttpRequest& r) { TestHttpResponse s; ...; return s; });
//   server.Route("/r", TestHttpResponse{...});      // full control (headers, endless, ...)
//   server.Handle("/radio", [&](const TestHttpRequest& r) {   // an ICY radio stream
//       return IcyResponse(r, 8192, {{"", leadIn}, {"Song One", one}, {"Song Two", two}}); });
//   ServeIcyStation(server, "/radio", mp3, release)  // the same, cut from one MP3
//
//   server.Url("/a.txt")       "http://127.0.0.1:PORT/a.txt"
//   server.HttpsUrl("/a.txt")  "https://127.0.0.1:PORT/a.txt"
//   server.Port()
//   server.CertificatePem()    the certificate (subject 127.0.0.1, names 127.0.0.1 and localhost)
//   server.StageCertificates(dir)  writes it as dir/Curl_Local/bin/cacert.pem and
//                                  curl-ca-bundle.crt, where transfers look for them
//
//   server.Requests()          every request so far, in arrival order
//   server.RequestCount("/a.txt"), server.ConnectionCount()
//   server.WaitForRequest("/slow", 5000)   true once such a request has arrived
//
// Routes match the request target with its query first ("/x?limit=5"), then
// its path alone ("/x"). Unknown paths get a 404 page with a body. Routes may
// be added while the server runs. Every response closes its connection. The
// server ignores SIGPIPE for the whole process, since clients hang up at will.
#pragma once
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

struct TestHttpRequest {
    std::string method;                         // "GET", "HEAD", ...
    std::string target;                         // as sent: path and query
    std::string path;                           // the target without its query
    std::map<std::string, std::string> headers; // names in lower case
    std::string body;
    bool tls = false;

    std::string Header(const std::string& lowerCaseName) const {
        auto it = headers.find(lowerCaseName);
        return it == headers.end() ? std::string() : it->second;
    }
};

struct TestHttpResponse {
    static constexpr size_t kWhole = static_cast<size_t>(-1);

    int status = 200;
    std::string body;
    std::string contentType = "application/octet-stream";
    std::vector<std::pair<std::string, std::string>> headers; // added as given
    size_t chunkBytes = 0;                                    // 0: the body in one piece
    int chunkDelayMs = 0;          // pause before every chunk after the first
    size_t cutAfter = kWhole;      // drop the connection after this many body bytes
    bool contentLength = true;     // false: the body ends when the connection closes
    bool endless = false;          // repeat the body until the client or server stops
                                   // (implies no Content-Length)
    size_t holdAt = kWhole;        // before this body byte goes out, wait until release()
    std::function<bool()> release; // gives true (polled; the server's stop ends it too)
};

// One song of an ICY stream: its title (empty: none announced) and bytes.
struct TestIcySong {
    std::string title;
    std::string bytes;
};

// An ICY (Shoutcast) radio stream: no length, "icy-metaint" and the
// station's name in the headers. When the request asks for metadata
// ("Icy-MetaData: 1"), a metadata block follows every metaint bytes of
// audio, and each titled song is announced in the block just before its
// first byte; so every song but the last must be a multiple of metaint
// long. Without the ask the audio comes plain.
TestHttpResponse IcyResponse(const TestHttpRequest& request, size_t metaint,
                             const std::vector<TestIcySong>& songs);

using TestHttpHandler = std::function<TestHttpResponse(const TestHttpRequest&)>;

class TestHttpServer {
public:
    TestHttpServer();
    ~TestHttpServer();
    TestHttpServer(const TestHttpServer&) = delete;
    TestHttpServer& operator=(const TestHttpServer&) = delete;

    void Route(const std::string& target, const std::string& body, int status = 200,
               const std::string& contentType = "application/octet-stream");
    void Route(const std::string& target, const TestHttpResponse& response);
    void Redirect(const std::string& target, const std::string& location, int status = 302);
    void Trickle(const std::string& target, const std::string& body, size_t chunkBytes,
                 int delayMs);
    void Cut(const std::string& target, const std::string& body, size_t cutAfter);
    void Handle(const std::string& target, TestHttpHandler handler);

    int Port() const { return m_port; }
    std::string Url(const std::string& target) const;
    std::string HttpsUrl(const std::string& target) const;
    const std::string& CertificatePem() const { return m_certificatePem; }
    void StageCertificates(const std::filesystem::path& startDirectory) const;

    std::vector<TestHttpRequest> Requests() const;
    int RequestCount(const std::string& path) const;
    int ConnectionCount() const { return m_connections.load(); }
    bool WaitForRequest(const std::string& path, int timeoutMs) const;

    // Closes every connection and ends the threads; the destructor does it too.
    void Stop();

private:
    struct Tls;
    struct Connection;

    void AcceptLoop();
    void Serve(int fd);
    TestHttpResponse Answer(const TestHttpRequest& request);
    bool SendResponse(Connection& connection, const TestHttpRequest& request,
                      const TestHttpResponse& response);
    void Record(const TestHttpRequest& request);
    // Waits for a held response's release; false when the server stops.
    bool Released(const TestHttpResponse& response);

    std::unique_ptr<Tls> m_tls;
    std::string m_certificatePem;
    int m_listenFd = -1;
    int m_wakeFds[2] = {-1, -1};
    int m_port = 0;
    std::atomic<bool> m_stopping{false};
    std::atomic<int> m_connections{0};
    std::thread m_acceptThread;

    mutable std::mutex m_lock;
    mutable std::condition_variable m_requestArrived;
    std::condition_variable m_stopRequested;
    std::map<std::string, TestHttpHandler> m_routes;
    std::vector<TestHttpRequest> m_requests;
    std::vector<std::thread> m_workers;
    std::vector<int> m_openFds;
};

// Serves at target an ICY station made of one MP3 cut into a lead-in of
// 8192 bytes, "Song One" of twice that and "Song Two" of the rest, with
// metadata every 8192 bytes; the songs wait until release() gives true.
// The songs as served.
std::vector<TestIcySong> ServeIcyStation(TestHttpServer& server, const std::string& target,
                                         const std::string& mp3, std::function<bool()> release);
