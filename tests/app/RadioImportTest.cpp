#include <gtest/gtest.h>

#include "app/OrvexDoc.h"

namespace {

CStation Station(const char16_t* name, const char16_t* url) {
    CStation s;
    s.m_name = name;
    s.m_url = url;
    return s;
}

const CTopic* RootTopic(const COrvexDoc& doc, const CString& name) {
    for (const CTopic& topic : doc.m_contents.m_topics) {
        if (topic.GetName() == name)
            return &topic;
    }
    return nullptr;
}

} // namespace

TEST(RadioImport, ResultsBecomeAudioStreamsAsPeopleReadThemUnderARootTopic) {
    COrvexDoc doc;
    CStationAr& stations = doc.m_radioDb.m_stations;
    for (int i = 0; i < 12; ++i)
        stations.Add(Station(u"Station", u"http://s/stream"));
    stations[0].m_name = u"!!Playlist: List";
    // The directory's UTF-8 bytes, one per character, as the database keeps them.
    stations[1].m_name = u"R\u00C3\u00A1dio \u00E6\u009D\u00B1";
    stations[1].m_url = u"http://s/caf\u00C3\u00A9";
    EXPECT_EQ(doc.ImportStationResults(CString(u"Imported Media"), 0), 0); // no results
    doc.m_radioDb.m_bMinVotes = TRUE;
    ASSERT_EQ(doc.m_radioDb.SearchStations(), 12);
    EXPECT_EQ(doc.ImportStationResults(CString(), 0), 0);
    EXPECT_EQ(doc.ImportStationResults(CString(u"Imported Media"), 10), 10);
    const CTopic* topic = RootTopic(doc, CString(u"Imported Media"));
    ASSERT_NE(topic, nullptr);
    EXPECT_EQ(topic->m_mediaType, MEDIA_AUDIO_URL);
    ASSERT_EQ(topic->m_media.GetSize(), 10);
    EXPECT_EQ(topic->m_media[0].m_name, CString(u"!!Playlist: List"));
    EXPECT_EQ(topic->m_media[0].m_location, CString(u"http://s/stream"));
    EXPECT_EQ(topic->m_media[0].m_type, MEDIA_AUDIO_URL);
    EXPECT_EQ(topic->m_media[1].m_name, CString(u"R\u00E1dio \u6771"));
    EXPECT_EQ(topic->m_media[1].m_location, CString(u"http://s/caf\u00E9"));
    EXPECT_EQ(doc.m_contents.m_currentTopic.m_media.GetSize(), 10);
    EXPECT_TRUE(doc.m_bContentsChanged);
    // Results and criteria are gone.
    EXPECT_TRUE(doc.m_radioDb.m_results.IsEmpty());
    EXPECT_EQ(doc.m_radioDb.CountCriteria(), 0);

    // A second import of the same stations doubles them.
    doc.m_radioDb.m_results.AddStation(2);
    EXPECT_EQ(doc.ImportStationResults(CString(u"Imported Media"), 0), 1);
    doc.m_radioDb.m_results.AddStation(2);
    EXPECT_EQ(doc.ImportStationResults(CString(u"Imported Media"), 0), 1);
    EXPECT_EQ(RootTopic(doc, CString(u"Imported Media"))->m_media.GetSize(), 12);
}
