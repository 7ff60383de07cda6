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

TEST(StdioFileExRead, EmptyFileIsCodePageAndEndsAtOnce) {
    TempDir dir;
    TempDir::Write(dir / "e.txt", "");
    BOOL utf16 = TRUE;
    EXPECT_TRUE(ReadAll(dir.File("e.txt"), &utf16).empty());
    EXPECT_FALSE(utf16);
}

TEST(StdioFileExRead, MarkAloneIsUtf16WithNoLine) {
    TempDir dir;
    TempDir::Write(dir / "m.txt", "\xFF\xFE");
    BOOL utf16 = FALSE;
    EXPECT_TRUE(ReadAll(dir.File("m.txt"), &utf16).empty());
    EXPECT_TRUE(utf16);
}

TEST(StdioFileExRead, Utf16LinesDropTheMarkAndOneLineEnd) {
    TempDir dir;
    TempDir::Write(dir / "u.txt",
                   "\xFF\xFE" +
                       Utf16Bytes(u"Gr\u00FC\u00DFe \u65E5\u672C\r\n\r\nzwei\r\r\ndrei\nlast"));
    const auto lines = ReadAll(dir.File("u.txt"));
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], u"Gr\u00FC\u00DFe \u65E5\u672C");
    EXPECT_EQ(lines[1], u"");
    EXPECT_EQ(lines[2], u"zwei\r"); // only one line end comes off
    EXPECT_EQ(lines[3], u"drei");
    EXPECT_EQ(lines[4], u"last");
}

TEST(StdioFileExRead, Utf8LinesWithEveryKindOfLineEnd) {
    TempDir dir;
    TempDir::Write(dir / "a.txt", "caf\xC3\xA9\r\n\r\nlf only\ncr only\r\rnext\r\nno end");
    const auto lines = ReadAll(dir.File("a.txt"));
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], u"caf\u00E9");
    EXPECT_EQ(lines[1], u"");
    EXPECT_EQ(lines[2], u"lf only");
    // A CR that no LF follows is no line end and stays in the line.
    EXPECT_EQ(lines[3], u"cr only\r\rnext");
    EXPECT_EQ(lines[4], u"no end");
}

TEST(StdioFileExRead, OtherMarksAreReadAsText) {
    TempDir dir;
    TempDir::Write(dir / "b.txt", "\xEF\xBB\xBFone\r\n");
    const auto utf8 = ReadAll(dir.File("b.txt"));
    ASSERT_EQ(utf8.size(), 1u);
    EXPECT_EQ(utf8[0], u"\uFEFFone");
    TempDir::Write(dir / "c.txt", "\xFE\xFF\x00o");
    BOOL utf16 = TRUE;
    ReadAll(dir.File("c.txt"), &utf16);
    EXPECT_FALSE(utf16);
}

TEST(StdioFileExRead, LongAnsiLineArrivesIn4095BytePieces) {
    TempDir dir;
    TempDir::Write(dir / "l.txt", std::string(5000, 'x') + "\r\nshort\r\n");
    const auto lines = ReadAll(dir.File("l.txt"));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].GetLength(), 4095);
    EXPECT_EQ(lines[1].GetLength(), 905);
    EXPECT_EQ(lines[2], u"short");
}

TEST(StdioFileExRead, LongUtf16LineIsWhole) {
    TempDir dir;
    TempDir::Write(dir / "w.txt", "\xFF\xFE" + Utf16Bytes(std::u16string(9000, u'y') + u"\r\n"));
    const auto lines = ReadAll(dir.File("w.txt"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].GetLength(), 9000);
}

TEST(StdioFileExRead, LineWithoutCharactersLeavesTheCallersText) {
    TempDir dir;
    TempDir::Write(dir / "z.txt", std::string("first\n\0second\n", 14));
    CStdioFileEx file;
    ASSERT_TRUE(file.Open(dir.File("z.txt"), CStdioFileEx::kRead));
    CString line;
    ASSERT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, u"first");
    ASSERT_TRUE(file.ReadString(line)); // conversion stops at the NUL: nothing new
    EXPECT_EQ(line, u"first");
    EXPECT_FALSE(file.ReadString(line));
}

TEST(StdioFileExRead, MissingFileFailsToOpenWithAReport) {
    TempDir dir;
    CStdioFileEx file;
    CFileException error;
    EXPECT_FALSE(file.Open(dir.File("none.txt"), CStdioFileEx::kRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
}

TEST(StdioFileExWrite, Utf16GoldenBytes) {
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
}

TEST(StdioFileExWrite, CodePageIsUtf8WithNoMark) {
    TempDir dir;
    EXPECT_EQ(WriteWith(dir, CStdioFileEx::kWriteCodePage,
                        {CString(u"caf\u00E9\r\n"), CString(u""), CString(u"\u65E5\r\n")}),
              "caf\xC3\xA9\r\n\xE6\x97\xA5\r\n");
}

TEST(StdioFileExWrite, TextEndsAtItsFirstNul) {
    TempDir dir;
    EXPECT_EQ(WriteWith(dir, CStdioFileEx::kWriteCodePage, {CString(std::u16string(u"ab\0cd", 5))}),
              "ab");
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

TEST(StdioFileExWrite, WrittenUtf16ReadsBack) {
    TempDir dir;
    WriteWith(dir, CStdioFileEx::kWriteUtf16,
              {CString(u"\u041C\u043E\u0441\u043A\u0432\u0430\r\n"), CString(u"two\r\n")});
    BOOL utf16 = FALSE;
    const auto lines = ReadAll(CString(dir / "out.txt"), &utf16);
    EXPECT_TRUE(utf16);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], u"\u041C\u043E\u0441\u043A\u0432\u0430");
    EXPECT_EQ(lines[1], u"two");
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
