#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/OrvexctlRun.h"
#include "tests/support/TempDir.h"

namespace {

// What orvexctl printed, its messages (standard error) first.
CtlRun RunCtl(const std::string& arguments) {
    static TempDir startDir;
    CtlRun run = Orvexctl(startDir, arguments);
    run.out = run.err + run.out;
    return run;
}

} // namespace

TEST(ContentsDump, PrintsEveryTopicAndItemInFileOrder) {
    TempDir dir;
    COrvexDoc doc;
    doc.m_aliases.AddAlias(CString(u"Doc"), CString(u"Documentaries"));
    const CNodeArray jazz = Ensure(doc.m_contents, {u"Music", u"Jazz"});
    doc.m_contents.AddItem(
        jazz, MakeItem(u"Blue\tNote", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE), FALSE);
    const CNodeArray docs = Ensure(doc.m_contents, {u"Documentaries"}, MEDIA_VIDEO_URL);
    CMediaItem stream = MakeItem(u"Space", MEDIA_VIDEO_URL, {u"Documentaries"});
    stream.m_location = u"https://tv.example/space.m3u8";
    doc.m_contents.AddItem(docs, stream, FALSE);
    ASSERT_TRUE(doc.SaveContents(dir.File("lib.dat")));
    TempDir::Write(dir / "TopicAlias.txt", "Doc,Documentaries\n");

    const CtlRun stored = RunCtl("contents-dump " + (dir / "lib.dat"));
    EXPECT_EQ(stored.exitCode, 0) << stored.out;
    EXPECT_EQ(stored.out,
              "topic\tMusic[0]\ttype 4\n"
              "topic\tMusic[0]\\Jazz[0]\ttype 4\n"
              "item\tAUDF\tBlue\\x09Note\t/media/Blue\\x09Note\tMusic\\Jazz\tfavorite 1\n"
              "topic\tDoc[1]\ttype 2\n"
              "item\tVIDU\tSpace\thttps://tv.example/space.m3u8\tDoc\tfavorite 0\n"
              "3 topics, 2 items\n");

    const CtlRun mapped =
        RunCtl("contents-dump --aliases " + (dir / "TopicAlias.txt") + " " + (dir / "lib.dat"));
    EXPECT_EQ(mapped.exitCode, 0);
    EXPECT_NE(mapped.out.find("topic\tDocumentaries[1]\ttype 2\n"), std::string::npos);
    EXPECT_NE(mapped.out.find("\tDocumentaries\tfavorite 0\n"), std::string::npos);
}

TEST(ContentsDump, ReportsBadFilesAndShowsWhatWasRead) {
    TempDir dir;
    COrvexDoc doc;
    Ensure(doc.m_contents, {u"First"});
    Ensure(doc.m_contents, {u"Second"});
    ASSERT_TRUE(doc.SaveContents(dir.File("lib.dat")));
    const std::string full = TempDir::Read(dir / "lib.dat");
    TempDir::Write(dir / "cut.dat", full.substr(0, full.size() - 1));
    std::string schema2 = full;
    schema2[0] = 2;
    TempDir::Write(dir / "schema2.dat", schema2);
    TempDir::Write(dir / "empty.dat", "");

    const CtlRun cut = RunCtl("contents-dump " + (dir / "cut.dat"));
    EXPECT_EQ(cut.exitCode, 1);
    EXPECT_NE(cut.out.find("topic\tFirst[0]\ttype 4\n"), std::string::npos);
    EXPECT_EQ(cut.out.find("Second"), std::string::npos);
    EXPECT_NE(cut.out.find("Unexpected end of file"), std::string::npos);

    const CtlRun refused = RunCtl("contents-dump " + (dir / "schema2.dat"));
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.out, "User data file could not be read.\n0 topics, 0 items\n");

    const CtlRun empty = RunCtl("contents-dump " + (dir / "empty.dat"));
    EXPECT_EQ(empty.exitCode, 0);
    EXPECT_EQ(empty.out, "0 topics, 0 items\n");

    EXPECT_EQ(RunCtl("contents-dump " + (dir / "missing.dat")).exitCode, 1);
    EXPECT_EQ(RunCtl("contents-dump").exitCode, 2);
}
