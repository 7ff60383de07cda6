#include <gtest/gtest.h>
#include <unistd.h>

#include "interchange/StdioFileEx.h"
#include "tests/support/TempDir.h"

namespace {

std::vector<CString> ReadAll(const CString& path, BOOL* isUtf16 = nullptr) {
    CStdioFileEx file;
    EXPECT_TRUE(file.Open(path, CStdioFileEx::kRead));
    std::vector<CString> lines;
    CString line;
    while (file.ReadString(line))
        lines.push_back(line);
    if (isUtf16)
        *isUtf16 = file.m_isUtf16;
    file.Close();
    return lines;
}

std::string Utf16Bytes(const std::u16string& text) {
    std::string out;
    for (char16_t c : text) {
        out += static_cast<char>(c & 0xFF);
        out += static_cast<char>(c >> 8);
    }
    return out;
}

std::string WriteWith(TempDir& dir, UINT flags, std::initializer_list<CString> texts) {
    const std::string path = dir / "out.txt";
    CStdioFileEx file;
    EXPECT_TRUE(file.Open(CString(path), flags));
    for (const CString& t : texts)
        file.WriteString(t);
    file.Close();
    return TempDir::Read(path);
}

} // namespace

TEST(StdioFileExRead, OnlyFFFEMarksUtf16) {
    TempDir dir;
    const struct {
        std::string bytes;
        bool utf16;
        std::vector<CString> lines;
    } cases[] = {
        {"", false, {}},
        {"\xFF\xFE", true, {}}, // the mark alone: no line
        {"\xEF\xBB\xBFone\r\n", false, {u"\uFEFFone"}},
        {std::string("\xFE\xFF\x00o", 4), false, {u"\uFFFD\uFFFD"}},
    };
    for (const auto& c : cases) {
        TempDir::Write(dir / "f.txt", c.bytes);
        BOOL utf16 = !c.utf16;
        EXPECT_EQ(ReadAll(dir.File("f.txt"), &utf16), c.lines);
        EXPECT_EQ(utf16, c.utf16 ? TRUE : FALSE);
    }
    CStdioFileEx file;
    CFileException error;
    EXPECT_FALSE(file.Open(dir.File("none.txt"), CStdioFileEx::kRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
}

TEST(StdioFileExRead, OneLineEndComesOffAndLongLinesArriveAsTheEncodingGives) {
    TempDir dir;
    TempDir::Write(dir / "u.txt",
                   "\xFF\xFE" + Utf16Bytes(u"Gr\u00FC\u00DFe \u65E5\r\n\r\nzwei\r\r\ndrei\nlast\n" +
                                           std::u16string(9000, u'y')));
    EXPECT_EQ(ReadAll(dir.File("u.txt")),
              (std::vector<CString>{u"Gr\u00FC\u00DFe \u65E5", u"", u"zwei\r", u"drei", u"last",
                                    CString(std::u16string(9000, u'y'))}));
    // A CR that no LF follows is no line end; a code-page line comes in
    // pieces of 4095 bytes.
    TempDir::Write(dir / "a.txt", "caf\xC3\xA9\r\n\r\ncr only\r\rnext\r\n" +
                                      std::string(5000, 'x') + "\r\nno end");
    EXPECT_EQ(ReadAll(dir.File("a.txt")),
              (std::vector<CString>{u"caf\u00E9", u"", u"cr only\r\rnext",
                                    CString(std::u16string(4095, u'x')),
                                    CString(std::u16string(905, u'x')), u"no end"}));

    // A line whose conversion gives nothing leaves the caller's text.
    TempDir::Write(dir / "z.txt", std::string("first\n\0second\n", 14));
    CStdioFileEx file;
    ASSERT_TRUE(file.Open(dir.File("z.txt"), CStdioFileEx::kRead));
    CString line;
    ASSERT_TRUE(file.ReadString(line));
    ASSERT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, u"first");
    EXPECT_FALSE(file.ReadString(line));
}

TEST(StdioFileExWrite, GoldenBytesInBothEncodings) {
    TempDir dir;
    EXPECT_EQ(WriteWith(dir, CStdioFileEx::kWriteUtf16, {CString(u"\r\n")}),
              std::string("\xFF\xFE\x0D\x00\x0A\x00", 6));
    EXPECT_EQ(WriteWith(dir, CStdioFileEx::kWriteUtf16, {CString(u"")}), "\xFF\xFE");
    EXPECT_EQ(WriteWith(dir, CStdioFileEx::kWriteUtf16,
                        {CString(u"A\u00E9"), CString(u"\u20AC\r\n"), CString(u"\U0001F600")}),
              std::string("\xFF\xFE"
                          "A\x00\xE9\x00"
                          "\xAC\x20\x0D\x00\x0A\x00"
                          "\x3D\xD8\x00\xDE",
                          16));
    BOOL utf16 = FALSE;
    EXPECT_EQ(ReadAll(CString(dir / "out.txt"), &utf16),
              (std::vector<CString>{u"A\u00E9\u20AC", u"\U0001F600"}));
    EXPECT_TRUE(utf16);
    // Code-page text is UTF-8 with no mark, and a text ends at its first NUL.
    EXPECT_EQ(WriteWith(dir, CStdioFileEx::kWriteCodePage,
                        {CString(u"caf\u00E9\r\n"), CString(u""), CString(u"\u65E5\r\n"),
                         CString(std::u16string(u"ab\0cd", 5))}),
              "caf\xC3\xA9\r\n\xE6\x97\xA5\r\nab");
}

TEST(StdioFileExWrite, SingleBytePageWritesHashForWhatItCantShow) {
    TempDir dir;
    const std::string path = dir / "l1.txt";
    CStdioFileEx file;
    file.m_codePage = CP_LATIN1;
    ASSERT_TRUE(file.Open(CString(path), CStdioFileEx::kWriteCodePage));
    file.WriteString(u"\u00E9\u65E5\u20AC!\r\n");
    file.Close();
    EXPECT_EQ(TempDir::Read(path), "\xE9##!\r\n");
    CStdioFileEx in;
    in.m_codePage = CP_LATIN1;
    ASSERT_TRUE(in.Open(CString(path), CStdioFileEx::kRead));
    CString line;
    ASSERT_TRUE(in.ReadString(line));
    EXPECT_EQ(line, u"\u00E9##!");
}

TEST(StdioFileExWrite, FullDiscIsReportedByTheWriteOrByClose) {
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "no /dev/full";
    CStdioFileEx big;
    ASSERT_TRUE(big.Open(u"/dev/full", CStdioFileEx::kWriteCodePage));
    EXPECT_THROW(big.WriteString(CString(std::u16string(70000, u'x'))), CFileException);
    big.Abort();
    CStdioFileEx small;
    ASSERT_TRUE(small.Open(u"/dev/full", CStdioFileEx::kWriteUtf16));
    small.WriteString(u"a");
    EXPECT_EQ(small.GetPosition(), 4u);
    EXPECT_THROW(small.Close(), CFileException);
    CStdioFileEx closed;
    EXPECT_THROW(closed.WriteString(u"a"), CFileException);
}
