// orvexctl import and export, run as programs on library files.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/OrvexctlRun.h"
#include "tests/support/TempDir.h"

namespace {

const std::string kRecords = "\r\n// Orvex Media List\r\n\r\n"
                             "0\r\nVIDF\r\n6\r\nVideo Files,Holidays\r\n7\r\nyes\r\n"
                             "10\r\nHarbour at dusk\r\n11\r\n/films/harbour.mp4\r\n\r\n"
                             "0\r\nAUDU\r\n6\r\nRadio\r\n10\r\nMorning Talk\r\n"
                             "11\r\nhttp://radio.example/talk\r\n\r\n";

} // namespace

TEST(OrvexctlImportExport, RecordsThroughALibraryAndBackAreTheSame) {
    TempDir dir;
    TempDir::Write(dir / "in.txt", kRecords);
    CtlRun import = Orvexctl(dir, "import --format mrf in.txt lib.dat");
    EXPECT_EQ(import.exitCode, 0);
    EXPECT_EQ(import.out, "Contents overwritten with 2 Media Items.\n");

    CtlRun exported = Orvexctl(dir, "export --format mrf lib.dat out.txt");
    EXPECT_EQ(exported.exitCode, 0);
    EXPECT_EQ(exported.out, "2 Media records saved to out.txt.\n");
    EXPECT_EQ(TempDir::Read(dir / "out.txt"),
              kRecords.substr(0, 25) +
                  "// Media Record Format 0.1\r\n"
                  "// See MediaRecordFormat.txt for definitions.\r\n" +
                  kRecords.substr(25));

    CtlRun dat = Orvexctl(dir, "export --format dat lib.dat copy.dat");
    EXPECT_EQ(dat.exitCode, 0);
    EXPECT_EQ(dat.out, "3 Topics and 2 Media items saved to copy.dat.\n");
    EXPECT_EQ(TempDir::Read(dir / "copy.dat"), TempDir::Read(dir / "lib.dat"));
}

TEST(OrvexctlImportExport, PlacingPlaylistsAndTopicExport) {
    TempDir dir;
    TempDir::Write(dir / "in.txt", kRecords);
    ASSERT_EQ(Orvexctl(dir, "import --format mrf in.txt lib.dat").exitCode, 0);
    TempDir::Write(dir / "p.pls", "[playlist]\nFile1=http://s/a\nTitle1=A\nFile2=http://s/b\n");
    CtlRun pls = Orvexctl(dir, "import --format pls --topic Radio p.pls lib.dat");
    EXPECT_EQ(pls.exitCode, 0);
    EXPECT_EQ(pls.out, "2 Media Items placed under Radio Topic.\n");

    CtlRun m3u = Orvexctl(dir, "export --format m3u --topic Radio lib.dat radio.m3u");
    EXPECT_EQ(m3u.exitCode, 0);
    EXPECT_EQ(m3u.out, "3 Media records saved to radio.m3u.\n");
    EXPECT_EQ(TempDir::Read(dir / "radio.m3u"),
              "\r\n#EXTM3U\r\n\r\n#EXTINF:-1,Morning Talk\r\nhttp://radio.example/talk\r\n\r\n"
              "#EXTINF:-1,A\r\nhttp://s/a\r\n\r\n#EXTINF:-1,Unknown\r\nhttp://s/b\r\n\r\n");

    CtlRun placed = Orvexctl(dir, "import --format mrf --topic Old in.txt lib.dat");
    EXPECT_EQ(placed.out, "2 Media Items placed under Old Topic.\n");
    CtlRun sub = Orvexctl(dir, "export --format mrf --topic Old\\\\Video\\ Files lib.dat sub.txt");
    EXPECT_EQ(sub.exitCode, 0);
    EXPECT_NE(TempDir::Read(dir / "sub.txt").find("6\r\nOld,Video Files,Holidays\r\n"),
              std::string::npos);
}

TEST(OrvexctlImportExport, FailuresPrintTheProgramsWords) {
    TempDir dir;
    TempDir::Write(dir / "in.txt", kRecords);
    ASSERT_EQ(Orvexctl(dir, "import --format mrf in.txt lib.dat").exitCode, 0);
    const std::string library = TempDir::Read(dir / "lib.dat");

    CtlRun missing = Orvexctl(dir, "import --format m3u --topic X none.m3u lib.dat");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.out, "Import from none.m3u failed.\n");
    EXPECT_EQ(TempDir::Read(dir / "lib.dat"), library);

    CtlRun dat = Orvexctl(dir, "export --format dat --topic Radio lib.dat t.dat");
    EXPECT_EQ(dat.exitCode, 1);
    EXPECT_EQ(dat.out, "Cannot export topic to .dat file.\n");
    CtlRun noTopic = Orvexctl(dir, "export --format mrf --topic Nowhere lib.dat t.txt");
    EXPECT_EQ(noTopic.out, "Topic error - export failed\n");
    CtlRun badForm = Orvexctl(dir, "export --format xml lib.dat t.txt");
    EXPECT_EQ(badForm.exitCode, 2);
}
