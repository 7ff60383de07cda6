// A small HTTP/1.1 server on 127.0.0.1 for stream tests: serves the files of
// one folder, answers byte ranges (so players can seek), one request per
// connection.
#pragma once
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

class RangeHttpServer {
public:
    explicit RangeHttpServer(std::string root) : m_root(std::move(root)) {
        m_listen = socket(AF_INET, SOCK_STREAM, 0);
        int one = 1;
        setsockopt(m_listen, SOL_SOCKET, SO_REUSEADDR, &one, sizeof(one));
        sockaddr_in addr{};
        addr.sin_family = AF_INET;
        addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        addr.sin_port = 0;
        bind(m_listen, reinterpret_cast<sockaddr*>(&addr), sizeof(addr));
        socklen_t len = sizeof(addr);
        getsockname(m_listen, reinterpret_cast<sockaddr*>(&addr), &len);
        m_port = ntohs(addr.sin_port);
        listen(m_listen, 16);
        m_thread = std::thread([this] { Serve(); });
    }
    ~RangeHttpServer() {
        m_stopping = true;
        shutdown(m_listen, SHUT_RDWR);
        close(m_listen);
        m_thread.join();
        for (std::thread& t : m_clients)
            t.join();
    }
    RangeHttpServer(const RangeHttpServer&) = delete;
    RangeHttpServer& operator=(const RangeHttpServer&) = delete;

    int Port() const { return m_port; }
    std::string Url(const std::string& name) const {
        return "http://127.0.0.1:" + std::to_string(m_port) + "/" + name;
    }
    int Requests() const { return m_requests; }

private:
    void Serve() {
        while (!m_stopping) {
            int client = accept(m_listen, nullptr, nullptr);
            if (client < 0)
                return;
            m_clients.emplace_back([this, client] { Answer(client); });
        }
    }

    static void SendAll(int fd, const std::string& data) {
        size_t sent = 0;
        while (sent < data.size()) {
            ssize_t n = send(fd, data.data() + sent, data.size() - sent, MSG_NOSIGNAL);
            if (n <= 0)
                return;
            sent += static_cast<size_t>(n);
        }
    }

    void Answer(int fd) {
        std::string request;
        char buffer[4096];
        while (request.find("\r\n\r\n") == std::string::npos && request.size() < 65536) {
            ssize_t n = recv(fd, buffer, sizeof(buffer), 0);
            if (n <= 0)
                break;
            request.append(buffer, static_cast<size_t>(n));
        }
        ++m_requests;
        std::istringstream lines(request);
        std::string method, path;
        lines >> method >> path;
        std::ifstream in(m_root + "/" + path.substr(path.find('/') + 1), std::ios::binary);
        if (!in || path.find("..") != std::string::npos) {
            SendAll(fd, "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
            close(fd);
            return;
        }
        std::string body((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        size_t first = 0, last = body.empty() ? 0 : body.size() - 1;
        bool ranged = false;
        size_t at = request.find("Range: bytes=");
        if (at != std::string::npos) {
            ranged = true;
            first = std::stoul(request.substr(at + 13));
            size_t dash = request.find('-', at + 13);
            if (dash != std::string::npos && isdigit(static_cast<unsigned char>(request[dash + 1])))
                last = std::min(last, static_cast<size_t>(std::stoul(request.substr(dash + 1))));
            if (first > last) {
                SendAll(fd, "HTTP/1.1 416 Range Not Satisfiable\r\nContent-Length: 0\r\n"
                            "Connection: close\r\n\r\n");
                close(fd);
                return;
            }
        }
        std::string head = ranged ? "HTTP/1.1 206 Partial Content\r\n" : "HTTP/1.1 200 OK\r\n";
        head += "Content-Type: application/octet-stream\r\nAccept-Ranges: bytes\r\n";
        head += "Content-Length: " + std::to_string(last - first + 1) + "\r\n";
        if (ranged)
            head += "Content-Range: bytes " + std::to_string(first) + "-" + std::to_string(last) +
                    "/" + std::to_string(body.size()) + "\r\n";
        head += "Connection: close\r\n\r\n";
        SendAll(fd, head);
        if (method != "HEAD")
            SendAll(fd, body.substr(first, last - first + 1));
        close(fd);
    }

    std::string m_root;
    int m_listen = -1;
    int m_port = 0;
    std::atomic<bool> m_stopping{false};
    std::atomic<int> m_requests{0};
    std::thread m_thread;
    std::vector<std::thread> m_clients;
};
