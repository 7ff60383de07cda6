#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>

#include "platform/base/File.h"
#include "platform/base/MessageBox.h"
#include "platform/base/ReplacingFile.h"
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

namespace {

std::vector<std::string> Names(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void Replace(const CString& path, const std::string& bytes) {
    CReplacingFile file;
    CFileException error;
    ASSERT_TRUE(file.OpenForReplace(path, &error)) << error.GetErrorMessage().ToUtf8();
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    file.Close();
}

} // namespace

TEST(CReplacingFile, ReplacesWholeKeepsModeAndLeavesNothingBeside) {
    TempDir dir;
    Replace(dir.File("c.dat"), "first");
    chmod((dir / "c.dat").c_str(), 0640);
    Replace(dir.File("c.dat"), "second");
    EXPECT_EQ(TempDir::Read(dir / "c.dat"), "second");
    struct stat st;
    ASSERT_EQ(stat((dir / "c.dat").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640u);
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"c.dat"});

    // Until Close the old file is untouched; an abandoned file leaves it.
    {
        CReplacingFile file;
        ASSERT_TRUE(file.OpenForReplace(dir.File("c.dat")));
        file.Write("third", 5);
        EXPECT_EQ(TempDir::Read(dir / "c.dat"), "second");
    }
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"c.dat"});
    EXPECT_EQ(TempDir::Read(dir / "c.dat"), "second");
}

TEST(CReplacingFile, ThroughASymlinkReplacesTheTargetAndKeepsTheLink) {
    TempDir dir;
    TempDir::Write(dir / "real/c.dat", "old");
    std::filesystem::create_directory(dir / "data");
    std::filesystem::create_symlink("../real/c.dat", dir / "data/c.dat");
    Replace(dir.File("data/c.dat"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(dir / "data/c.dat"));
    EXPECT_EQ(TempDir::Read(dir / "real/c.dat"), "new");
    EXPECT_EQ(Names(dir.Path() / "real"), std::vector<std::string>{"c.dat"});
    EXPECT_EQ(Names(dir.Path() / "data"), std::vector<std::string>{"c.dat"});
}

TEST(CReplacingFile, AFailedWriteLeavesTheOldFileAndNamesItInTheReport) {
    TempDir dir;
    const std::string old(3000, 'o');
    TempDir::Write(dir / "c.dat", old);
    CReplacingFile file;
    ASSERT_TRUE(file.OpenForReplace(dir.File("c.dat")));
    const std::string bytes(8192, 'n');
    try {
        ScopedFileSizeLimit limit(4096);
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        FAIL() << "the write passed the limit";
    } catch (const CFileException& e) {
        EXPECT_EQ(e.GetErrorMessage(),
                  CString(u"Disk full while accessing ") + dir.File("c.dat") + u".");
    }
    file.Abort();
    EXPECT_EQ(TempDir::Read(dir / "c.dat"), old);
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"c.dat"});

    // A folder that takes no new file refuses at once, in the open's words.
    CFileException error;
    EXPECT_FALSE(file.OpenForReplace(dir.File("none/c.dat"), &error));
    EXPECT_EQ(error.GetErrorMessage(), dir.File("none/c.dat") + u" was not found.");
}
