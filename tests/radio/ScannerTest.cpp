#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/base/AppContext.h"
#include "platform/base/Event.h"
#include "platform/base/UserMessages.h"
#include "radio/RadioBrowseDb.h"
#include "radio/StationScanner.h"
#include "tests/radio/RadioTestSupport.h"
#include "tests/support/TempDir.h"

namespace {

class ScannerTest : public ::testing::Test {
protected:
    int Parse(const std::string& document) {
        TempDir::Write(m_dir / "results.txt", document);
        m_error.Empty();
        return m_db.ParseStationFile(m_dir.File("results.txt"), &m_error);
    }
    const CStation& At(int i) { return m_db.m_stations[i]; }

    TempDir m_dir;
    CRadioBrowseDb m_db;
    CString m_error;
};

// Collects the messages posted to a window.
class PostedLog : public CMessageTarget {
public:
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM lParam) override {
        log.push_back({message, lParam});
        return 0;
    }
    std::vector<std::pair<UINT, LPARAM>> log;
};

std::string Station(const std::string& attributes) {
    return "<station " + attributes + "></station>\n";
}

} // namespace

TEST_F(ScannerTest, TakesTheKnownAttributesAndTheLaterUrl) {
    ASSERT_EQ(Parse("<result>\n" +
                    Station("name=\"One\" url=\"http://a/1\" tags=\"pop,rock\" country=\"Chad\" "
                            "countrycode=\"TD\" state=\"Kanem\" language=\"french\" "
                            "languagecodes=\"fr\" votes=\"12\" clickcount=\"34\" homepage=\"x\"") +
                    Station("name=\"A\" url=\"http://first\" url_resolved=\"http://second\" "
                            "country=\"Chad\" countrycode=\"\" language=\"french\" "
                            "languagecodes=\"\"") +
                    Station("name=\"B\" url_resolved=\"http://r\" url=\"http://u\" "
                            "countrycode=\"TD\" country=\"Chad\"") +
                    "</result>"),
              3);
    EXPECT_EQ(At(0),
              MakeStation(u"One", u"http://a/1", u"TD", u"Kanem", u"fr", u"pop,rock", 12, 34));
    // Empty codes leave the names in place.
    EXPECT_EQ(At(1), MakeStation(u"A", u"http://second", u"Chad", u"", u"french", u""));
    EXPECT_EQ(At(2), MakeStation(u"B", u"http://u", u"TD", u"", u"", u""));
    EXPECT_FALSE(m_db.m_bDirectoryCut);
}

TEST_F(ScannerTest, ADocumentNotEndingWithItsRootClosedIsCut) {
    const std::string whole = "<?xml version=\"1.0\"?>\n<result>\n" +
                              Station("name=\"a\" url=\"http://x\"") +
                              Station("name=\"b\" url=\"http://y\"") + "</result>\n";
    ASSERT_EQ(Parse(whole), 2);
    EXPECT_FALSE(m_db.m_bDirectoryCut);
    // Cut inside a value, inside a tag, between stations, in the closing tag.
    for (const std::string& cut :
         {whole.substr(0, whole.find("http://y") + 3),
          whole.substr(0, whole.rfind("</station>") + 4), whole.substr(0, whole.rfind("<station")),
          whole.substr(0, whole.size() - 4), whole.substr(0, whole.size() - 10) + "</other>",
          whole + "<result>"}) {
        Parse(cut);
        EXPECT_TRUE(m_db.m_bDirectoryCut) << cut;
    }
}

TEST_F(ScannerTest, MarksPlaylistsByTheLastSevenCharacters) {
    ASSERT_EQ(Parse(Station("name=\"m3u\" url=\"http://h/x.m3u\"") +
                    Station("name=\"m3u8\" url=\"http://h/x.m3u8\"") +
                    Station("name=\"far\" url=\"http://h/x.m3u?q=123\"") +
                    Station("name=\"caps\" url=\"http://h/x.M3U\"") +
                    Station("name=\"pls\" url=\"http://h/y.pls\"") +
                    Station("name=\"short\" url=\".pls\"")),
              6);
    EXPECT_EQ(At(0).m_name, CString(u"!!Playlist: m3u"));
    EXPECT_EQ(At(1).m_name, CString(u"m3u8"));
    EXPECT_EQ(At(2).m_name, CString(u"far"));
    EXPECT_EQ(At(3).m_name, CString(u"caps"));
    EXPECT_EQ(At(4).m_name, CString(u"!!Playlist: pls"));
    EXPECT_EQ(At(5).m_name, CString(u"!!Playlist: short"));
}

TEST_F(ScannerTest, ValuesAreTakenByteForByteAndNumbersLikeAtoi) {
    ASSERT_EQ(Parse(Station("name=\"Caf\xC3\xA9 &amp; a > b < c\" url=\"u\xFF\" xname=\"no\" "
                            "\tname=\"tab\" votes=\"many\" clickcount=\" 42abc\"") +
                    Station("name=\"b\" url=\"u\" votes=\"-3\" clickcount=\"99999999999\"") +
                    Station("url=\"http://x\" name=\"a\"votes=\"5\"")),
              3);
    // One character per byte, entities as they stand, quoted brackets inside
    // the value; "xname" and "\tname" are keys the station doesn't know.
    EXPECT_EQ(At(0).m_name, CString(u"Caf\u00C3\u00A9 &amp; a > b < c"));
    EXPECT_EQ(At(0).m_url, CString(u"u\u00FF"));
    EXPECT_EQ(At(0).m_votes, 0);
    EXPECT_EQ(At(0).m_clicks, 42);
    EXPECT_EQ(At(1).m_votes, -3);
    EXPECT_EQ(At(1).m_clicks, 2147483647);
    // Without a blank between them the keys run together: "namevotes".
    EXPECT_EQ(At(2).m_votes, 0);

    // Values and keys may span the reader's blocks.
    const std::string longName(200000, 'n');
    ASSERT_EQ(Parse(Station("homepage=\"" + std::string(70000, 'h') + "\" name=\"" + longName +
                            "\" url=\"http://x\"")),
              1);
    EXPECT_EQ(At(0).m_name.GetLength(), 200000);
}

TEST_F(ScannerTest, EmptyValuesLeaveFieldsAndSkippedRecordsFlowOn) {
    ASSERT_EQ(Parse(Station("name=\"first\" url=\"u1\" state=\"S1\"") +
                    Station("name=\"\" url=\"u2\" state=\"S2\" tags=\"t\"") +
                    Station("name=\"third\" url=\"\" state=\"\"")),
              2);
    EXPECT_EQ(At(0).m_state, CString(u"S1"));
    // The second element had no name: its fields stayed and flowed into the
    // third, whose empty url and state left them in place.
    EXPECT_EQ(At(1).m_name, CString(u"third"));
    EXPECT_EQ(At(1).m_url, CString(u"u2"));
    EXPECT_EQ(At(1).m_state, CString(u"S2"));
    EXPECT_EQ(At(1).m_tags, CString(u"t"));
}

TEST_F(ScannerTest, NineCharactersBetweenBracketsMakeARecordEight) {
    // name="a" url="b" is gathered outside any tag; then a tag of 8 and one
    // of 9 characters between the brackets.
    EXPECT_EQ(Parse("name=\"a\" url=\"b\" <12345678>"), 0);
    EXPECT_EQ(Parse("name=\"a\" url=\"b\" <123456789>"), 1);
    // A long opening tag ends the record at its ">", a short closing tag
    // adds nothing.
    EXPECT_EQ(Parse("<s name=\"a\" url=\"b\"></s>"), 1);
    // A ">" with no "<" since the last one counts from the file's start.
    EXPECT_EQ(Parse("0123456789 name=\"a\" url=\"b\">"), 1);
}

TEST_F(ScannerTest, NoStationsAndUnreadableFilesFail) {
    EXPECT_EQ(Parse("<result></result>"), 0);
    EXPECT_EQ(m_error, CString(u"CRadioBrowseDb::LoadDb - got no stations.\n"));
    m_error.Empty();
    EXPECT_EQ(m_db.ParseStationFile(m_dir.File("none.txt"), &m_error), 0);
    EXPECT_EQ(m_error.Find(CString(u"Couldn't open file: ")), 0);
}

TEST_F(ScannerTest, CancelAtATagStopsWithNothingMore) {
    CEvent cancel;
    PostedLog progress;
    m_db.m_pCancelEvent = &cancel;
    m_db.m_hwndProgress = progress.GetSafeHwnd();
    cancel.SetEvent();
    std::string document;
    for (int i = 0; i < 5; ++i)
        document += Station("name=\"a\" url=\"b\"");
    EXPECT_EQ(Parse(document), 0);
    // The first record was added at the first ">", then the poll saw the
    // event and cleared it.
    EXPECT_EQ(m_db.m_stations.GetSize(), 1);
    EXPECT_EQ(WaitForSingleObject(&cancel, 0), WAIT_TIMEOUT);
    CString status;
    AfxGetAppContext().GetUpdateStatus(status);
    EXPECT_EQ(status, CString(u"Canceling Update."));
}

TEST_F(ScannerTest, PostsProgressAtTheFirstStationThenEachThousand) {
    PostedLog progress;
    m_db.m_hwndProgress = progress.GetSafeHwnd();
    std::string document;
    for (int i = 0; i < 2500; ++i)
        document += Station("name=\"a\" url=\"b\"");
    ASSERT_EQ(Parse(document), 2500);
    PumpMessages();
    std::vector<std::pair<UINT, LPARAM>> expected = {{UM_UPDATE_STATUS, 0},
                                                     {UM_UPDATE_RANGE, 40},
                                                     {UM_UPDATE_POS, 0},
                                                     {UM_UPDATE_POS, 1},
                                                     {UM_UPDATE_POS, 2}};
    EXPECT_EQ(progress.log, expected);
}

TEST_F(ScannerTest, TheSampleDirectoryGivesWhatTheAlgorithmGives) {
    const std::string sample = TempDir::Read(std::string(getenv("ORVEX_SOURCE_DIR")) +
                                             "/fixtures/radio-stations-sample-500.xml");
    ASSERT_FALSE(sample.empty());
    ASSERT_EQ(Parse(sample), 500);
    int playlists = 0;
    for (const CStation& s : m_db.m_stations) {
        EXPECT_FALSE(s.m_name.IsEmpty());
        EXPECT_FALSE(s.m_url.IsEmpty());
        playlists += s.m_name.Find(CString(u"!!Playlist: ")) == 0;
    }
    EXPECT_EQ(playlists, 13);
    EXPECT_EQ(At(137).m_name, CString(u"Halesowen Town"));
    EXPECT_EQ(At(137).m_country, CString(u"GB"));
    EXPECT_EQ(At(137).m_tags, CString(u"sport"));
    EXPECT_EQ(At(137).m_votes, 2);
    EXPECT_EQ(At(499).m_name,
              CString(u"\u00f0\u009f\u0095\u00ba G\u00c3\u00a9n\u00c3\u00a9rations Funk"));
    EXPECT_EQ(At(499).m_url, CString(u"https://gene-wr05.ice.infomaniak.ch/gene-wr05.aac"));
    EXPECT_EQ(At(499).m_language, CString());
    EXPECT_EQ(At(499).m_clicks, 1);
}
