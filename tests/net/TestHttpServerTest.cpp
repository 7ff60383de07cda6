// The test server itself: what the other suites rely on when they use it.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/TestHttpServer.h"

namespace {

// Sends a raw request and reads until the server closes, or until limit bytes.
std::string Exchange(int port, const std::string& request, size_t limit = 1 << 24) {
    int fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<uint16_t>(port));
    if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        close(fd);
        return std::string();
    }
    send(fd, request.data(), request.size(), MSG_NOSIGNAL);
    std::string answer;
    char buffer[4096];
    while (answer.size() < limit) {
        ssize_t n = recv(fd, buffer, sizeof buffer, 0);
        if (n <= 0)
            break;
        answer.append(buffer, static_cast<size_t>(n));
    }
    close(fd);
    return answer;
}

std::string Body(const std::string& answer) {
    size_t end = answer.find("\r\n\r\n");
    return end == std::string::npos ? std::string() : answer.substr(end + 4);
}

TEST(TestHttpServer, ServesRangesAndHeadRequests) {
    TestHttpServer server;
    server.Route("/media.bin", "0123456789", 200, "audio/mpeg");
    std::string ranged =
        Exchange(server.Port(), "GET /media.bin HTTP/1.1\r\nHost: x\r\nRange: bytes=2-5\r\n\r\n");
    EXPECT_EQ(ranged.rfind("HTTP/1.1 206 ", 0), 0u);
    EXPECT_NE(ranged.find("Content-Range: bytes 2-5/10\r\n"), std::string::npos);
    EXPECT_NE(ranged.find("Content-Type: audio/mpeg\r\n"), std::string::npos);
    EXPECT_EQ(Body(ranged), "2345");
    std::string tail =
        Exchange(server.Port(), "GET /media.bin HTTP/1.1\r\nHost: x\r\nRange: bytes=7-\r\n\r\n");
    EXPECT_EQ(Body(tail), "789");
    std::string head = Exchange(server.Port(), "HEAD /media.bin HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_NE(head.find("Content-Length: 10\r\n"), std::string::npos);
    EXPECT_EQ(Body(head), "");
    std::string beyond =
        Exchange(server.Port(), "GET /media.bin HTTP/1.1\r\nHost: x\r\nRange: bytes=20-\r\n\r\n");
    EXPECT_EQ(beyond.rfind("HTTP/1.1 416 ", 0), 0u);
}

TEST(TestHttpServer, MatchesTheQueryFirstAndRecordsRequests) {
    TestHttpServer server;
    server.Route("/xml/stations", "plain");
    server.Route("/xml/stations?limit=5", "limited");
    EXPECT_EQ(Body(Exchange(server.Port(), "GET /xml/stations?limit=5 HTTP/1.1\r\n\r\n")),
              "limited");
    EXPECT_EQ(Body(Exchange(server.Port(), "GET /xml/stations?x=1 HTTP/1.1\r\n\r\n")), "plain");
    std::string missing = Exchange(server.Port(), "GET /none HTTP/1.1\r\nUser-Agent: t\r\n\r\n");
    EXPECT_EQ(missing.rfind("HTTP/1.1 404 ", 0), 0u);
    EXPECT_NE(Body(missing).find("404 Not Found"), std::string::npos);
    std::vector<TestHttpRequest> requests = server.Requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].target, "/xml/stations?limit=5");
    EXPECT_EQ(requests[0].path, "/xml/stations");
    EXPECT_EQ(requests[2].Header("user-agent"), "t");
    EXPECT_FALSE(requests[2].tls);
    EXPECT_EQ(server.RequestCount("/xml/stations"), 2);
    EXPECT_EQ(server.ConnectionCount(), 3);
}

TEST(TestHttpServer, HandlersSeeTheRequest) {
    TestHttpServer server;
    server.Handle("/echo", [](const TestHttpRequest& request) {
        TestHttpResponse response;
        response.body = request.method + " " + request.target;
        return response;
    });
    EXPECT_EQ(Body(Exchange(server.Port(), "GET /echo?a=b HTTP/1.1\r\n\r\n")), "GET /echo?a=b");
}

TEST(TestHttpServer, CutsAndEndlessStreamsAndStopsPromptly) {
    TestHttpServer server;
    server.Cut("/cut", std::string(5000, 'c'), 700);
    std::string cut = Exchange(server.Port(), "GET /cut HTTP/1.1\r\n\r\n");
    EXPECT_NE(cut.find("Content-Length: 5000\r\n"), std::string::npos);
    EXPECT_EQ(Body(cut), std::string(700, 'c'));

    TestHttpResponse endless;
    endless.body = "radio!";
    endless.endless = true;
    server.Route("/stream", endless);
    std::string stream = Exchange(server.Port(), "GET /stream HTTP/1.1\r\n\r\n", 100000);
    EXPECT_EQ(stream.find("Content-Length"), std::string::npos);
    EXPECT_GE(Body(stream).size(), 90000u);
    EXPECT_EQ(Body(stream).substr(0, 12), "radio!radio!");

    server.Trickle("/slow", std::string(100000, 's'), 10, 60000);
    std::thread client([&] { Exchange(server.Port(), "GET /slow HTTP/1.1\r\n\r\n"); });
    ASSERT_TRUE(server.WaitForRequest("/slow", 5000));
    auto started = std::chrono::steady_clock::now();
    server.Stop();
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    client.join();
}

} // namespace
