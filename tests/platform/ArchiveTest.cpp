#include <gtest/gtest.h>

#include "platform/base/Archive.h"
#include "tests/support/TempDir.h"

namespace {

std::string Bytes(std::initializer_list<int> values) {
    std::string s;
    for (int v : values)
        s += static_cast<char>(v);
    return s;
}

template <typename Fn>
std::string Store(const TempDir& dir, Fn write) {
    CFile file(dir.File("a.bin"), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    write(ar);
    ar.Close();
    file.Close();
    return TempDir::Read(dir / "a.bin");
}

CString LoadString(const TempDir& dir, const std::string& bytes) {
    TempDir::Write(dir / "b.bin", bytes);
    CFile file(dir.File("b.bin"), CFile::modeRead | CFile::shareDenyWrite);
    CArchive ar(&file, CArchive::load);
    CString s;
    ar >> s;
    return s;
}

} // namespace

TEST(CArchive, WritesLittleEndianIntegersWithoutPadding) {
    TempDir dir;
    std::string bytes = Store(dir, [](CArchive& ar) {
        ar << int32_t(1) << int32_t(-2) << BYTE(0xAB) << WORD(0x1234) << uint32_t(0xA1B2C3D4);
    });
    EXPECT_EQ(bytes, Bytes({1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 0xAB, 0x34, 0x12, 0xD4, 0xC3, 0xB2,
                            0xA1}));
}

TEST(CArchive, WritesStringsInTheTaggedWideForm) {
    TempDir dir;
    EXPECT_EQ(Store(dir, [](CArchive& ar) { ar << CString(); }), Bytes({0xFF, 0xFE, 0xFF, 0x00}));
    EXPECT_EQ(Store(dir, [](CArchive& ar) { ar << CString(u"A"); }),
              Bytes({0xFF, 0xFE, 0xFF, 0x01, 0x41, 0x00}));
    EXPECT_EQ(Store(dir, [](CArchive& ar) { ar << CString(u"€"); }),
              Bytes({0xFF, 0xFE, 0xFF, 0x01, 0xAC, 0x20}));

    // 254 characters still fit the one-byte length; 255 take FF and two bytes.
    std::string s254 = Store(dir, [](CArchive& ar) { ar << CString(u'x', 254); });
    ASSERT_EQ(s254.size(), 4u + 508u);
    EXPECT_EQ(s254.substr(0, 4), Bytes({0xFF, 0xFE, 0xFF, 0xFE}));
    std::string s255 = Store(dir, [](CArchive& ar) { ar << CString(u'x', 255); });
    ASSERT_EQ(s255.size(), 6u + 510u);
    EXPECT_EQ(s255.substr(0, 6), Bytes({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}));
    // From 0xFFFE characters on, FF FF FF and four bytes.
    std::string big = Store(dir, [](CArchive& ar) { ar << CString(u'y', 0xFFFE); });
    ASSERT_EQ(big.size(), 10u + 2u * 0xFFFE);
    EXPECT_EQ(big.substr(0, 10), Bytes({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}));
    std::string fffd = Store(dir, [](CArchive& ar) { ar << CString(u'z', 0xFFFD); });
    EXPECT_EQ(fffd.substr(0, 6), Bytes({0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}));
}

TEST(CArchive, ReadsEveryLengthFormAndNarrowStrings) {
    TempDir dir;
    for (int n : {0, 1, 254, 255, 0xFFFD, 0xFFFE, 70000}) {
        CString original(u'q', n);
        Store(dir, [&](CArchive& ar) { ar << original; });
        EXPECT_EQ(LoadString(dir, TempDir::Read(dir / "a.bin")), original) << n;
    }
    // Narrow strings, which older files hold, are UTF-8 in the three length forms.
    EXPECT_EQ(LoadString(dir, Bytes({3, 'a', 'b', 'c'})), CString(u"abc"));
    EXPECT_EQ(LoadString(dir, Bytes({2, 0xC3, 0xA9})), CString(u"é"));
    EXPECT_EQ(LoadString(dir, Bytes({0xFF, 0x02, 0x00, 'h', 'i'})), CString(u"hi"));
    EXPECT_EQ(LoadString(dir, Bytes({0xFF, 0xFF, 0xFF, 0x01, 0, 0, 0, 'z'})), CString(u"z"));
    EXPECT_EQ(LoadString(dir, Bytes({0xFF, 0xFE, 0xFF, 0xFF, 0x01, 0x00, 0x41, 0x00})),
              CString(u"A"));
}

TEST(CArchive, ThrowsAtTheEndOfTheDataWithoutTrustingLengths) {
    TempDir dir;
    // A wide string that promises four billion characters and holds two.
    EXPECT_THROW(LoadString(dir, Bytes({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF,
                                        'a', 0, 'b', 0})),
                 CArchiveException);
    EXPECT_THROW(LoadString(dir, Bytes({5, 'a'})), CArchiveException);
    EXPECT_THROW(LoadString(dir, Bytes({0xFF, 0xFE})), CArchiveException);

    TempDir::Write(dir / "c.bin", Bytes({1, 0, 0}));
    CFile file(dir.File("c.bin"), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    int32_t v = 0;
    try {
        ar >> v;
        FAIL() << "no exception";
    } catch (const CArchiveException& e) {
        EXPECT_EQ(e.m_cause, CArchiveException::endOfFile);
        EXPECT_NE(e.GetErrorMessage().Find(dir.File("c.bin")), -1);
    }
}

TEST(CArchive, RawReadGivesWhatIsThereAndBufferingLeavesNoTrace) {
    TempDir dir;
    std::string big = Store(dir, [](CArchive& ar) {
        for (int i = 0; i < 3000; ++i)
            ar << int32_t(i);
    });
    ASSERT_EQ(big.size(), 12000u);
    EXPECT_EQ(static_cast<unsigned char>(big[4 * 2999]), 2999 & 0xFF);

    TempDir::Write(dir / "d.bin", "12345");
    CFile file(dir.File("d.bin"), CFile::modeRead);
    CArchive ar(&file, CArchive::load, 2);
    char buffer[8] = {};
    EXPECT_EQ(ar.Read(buffer, 8), 5u);
    EXPECT_STREQ(buffer, "12345");
    EXPECT_EQ(ar.Read(buffer, 8), 0u);
}
