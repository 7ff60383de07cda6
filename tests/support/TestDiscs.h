// The discs of a test program, made the first time a test asks for them
// and kept for its whole run (tests/support/DiscMaker.h).
#pragma once
#include <gtest/gtest.h>

#include "tests/support/DiscMaker.h"

class TestDiscs {
public:
    static constexpr int kButtonTop = CDiscMaker::kButtonTop;
    static constexpr int kButtonBottom = CDiscMaker::kButtonBottom;
    static constexpr int kButton1Left = CDiscMaker::kButton1Left;
    static constexpr int kButton1Right = CDiscMaker::kButton1Right;
    static constexpr int kButton2Left = CDiscMaker::kButton2Left;
    static constexpr int kButton2Right = CDiscMaker::kButton2Right;
    static constexpr const double (&kTrackSeconds)[2] = CDiscMaker::kTrackSeconds;

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
