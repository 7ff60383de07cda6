// A start directory holding the test server's certificate, a recorded status
// slot and message boxes, and a server on 127.0.0.1: what every transfer
// test starts from.
#pragma once
#include <gtest/gtest.h>

#include <string>

#include "net/Curlinet.h"
#include "tests/support/JobRecorders.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"

class CurlinetTest : public ::testing::Test {
protected:
    CurlinetTest() : m_context(m_dir.Str()) { m_server.StageCertificates(m_dir.Path()); }

    CString Target() const { return m_dir.File("results.txt"); }
    std::string TargetBytes() const { return TempDir::Read(m_dir / "results.txt"); }
    static CString U(const std::string& text) { return CString(text); }

    // Bytes that differ from position to position, so a prefix can be told
    // from any other slice.
    static std::string Pattern(size_t size) {
        std::string bytes(size, '\0');
        for (size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<char>('a' + (i * 7 + i / 251) % 26);
        return bytes;
    }

    TempDir m_dir;
    TestHttpServer m_server;
    RecordingAppContext m_context;
    MessageBoxRecorder m_boxes;
};
