// The discs of a test program, made the first time a test asks for them
// and kept for its whole run (tests/support/DiscMaker.h).
#pragma once
#include <gtest/gtest.h>

#include "tests/support/DiscMaker.h"

// The disc's layout constants are CDiscMaker's.
class TestDiscs {
public:
    static TestDiscs& Get() {
        static TestDiscs discs;
        return discs;
    }

    const std::string& Dvd() {
        if (m_dvd.empty()) {
            EXPECT_TRUE(m_maker.MakeDvd(m_dvd)) << m_maker.Errors();
        }
        return m_dvd;
    }
    const std::string& EncryptedDvd() {
        if (m_encrypted.empty()) {
            m_encrypted = m_dir / "encrypted";
            CDiscMaker::MakeEncryptedCopy(Dvd(), m_encrypted);
        }
        return m_encrypted;
    }
    const std::string& AudioCd() {
        if (m_cd.empty())
            m_cd = m_maker.MakeAudioCd();
        return m_cd;
    }
    const TempDir& Dir() const { return m_dir; }

private:
    TestDiscs() : m_maker(m_dir.Path().string()) {}

    TempDir m_dir;
    CDiscMaker m_maker;
    std::string m_dvd;
    std::string m_encrypted;
    std::string m_cd;
};
