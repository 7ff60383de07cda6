#include <gtest/gtest.h>

#include "platform/base/File.h"
#include "platform/base/MessageBox.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

TEST(CFile, OpenModesCreateTruncateAndReport) {
    TempDir dir;
    const CString path = dir.File("f.dat");
    CFileException error;
    CFile file;
    EXPECT_FALSE(file.Open(path, CFile::modeRead | CFile::shareDenyWrite, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.GetErrorMessage(), path + u" was not found.");

    ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeWrite, &error));
    file.Write("hello", 5);
    EXPECT_EQ(file.GetLength(), 5u);
    file.Close();
    ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::modeNoTruncate));
    EXPECT_EQ(file.GetLength(), 5u);
    file.Close();
    ASSERT_TRUE(file.Open(path, CFile::modeCreate | CFile::modeWrite));
    EXPECT_EQ(file.GetLength(), 0u);
    file.Close();

    // A folder is no file, and the report names it.
    EXPECT_FALSE(file.Open(dir.Str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::accessDenied);
    MessageBoxRecorder boxes;
    error.ReportError();
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, CString(u"Access to ") + dir.Str() + u" was denied.");
    EXPECT_THROW(CFile(dir.File("missing/x"), CFile::modeRead), CFileException);
}

TEST(CFile, StatusAndCopyHonourFailIfExists) {
    TempDir dir;
    TempDir::Write(dir / "a", "AAAA");
    TempDir::Write(dir / "b", "B");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(dir.File("a"), status));
    EXPECT_EQ(status.m_size, 4u);
    EXPECT_FALSE(CFile::GetStatus(dir.File("nope"), status));

    EXPECT_FALSE(CopyFileW(dir.File("a"), dir.File("b"), TRUE));
    EXPECT_EQ(TempDir::Read(dir / "b"), "B");
    EXPECT_TRUE(CopyFileW(dir.File("a"), dir.File("c"), TRUE));
    EXPECT_EQ(TempDir::Read(dir / "c"), "AAAA");
    EXPECT_FALSE(CopyFileW(dir.File("nope"), dir.File("d"), TRUE));
    EXPECT_FALSE(CFile::GetStatus(dir.File("d"), status));
    EXPECT_TRUE(CopyFileW(dir.File("a"), dir.File("b"), FALSE));
    EXPECT_EQ(TempDir::Read(dir / "b"), "AAAA");
}

TEST(MessageBoxHook, DefaultAnswersWithTheFirstButton) {
    SetMessageBoxHook(nullptr);
    EXPECT_EQ(AfxMessageBox(CString(u"x"), MB_YESNO | MB_ICONINFORMATION), IDYES);
    EXPECT_EQ(MessageBoxW(nullptr, CString(u"x"), CString(u"c"), MB_OK), IDOK);
    MessageBoxRecorder boxes;
    boxes.Answer(IDNO);
    EXPECT_EQ(AfxMessageBox(CString(u"Save?"), MB_YESNO), IDNO);
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].caption, CString(u"Orvex"));
}
