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

TEST(RadioImport, ResultsBecomeAudioStreamsUnderARootTopic) {
    COrvexDoc doc;
    for (int i = 0; i < 12; ++i)
        doc.m_radioDb.m_results.Add(Station(u"Station", u"http://s/stream"));
    doc.m_radioDb.m_results[0].m_name = u"!!Playlist: List";
    doc.m_radioDb.m_bFindName = TRUE;
    EXPECT_EQ(doc.ImportStationResults(CString(u"Imported Media"), 10), 10);
    const CTopic* topic = RootTopic(doc, CString(u"Imported Media"));
    ASSERT_NE(topic, nullptr);
    EXPECT_EQ(topic->m_mediaType, MEDIA_AUDIO_URL);
    ASSERT_EQ(topic->m_media.GetSize(), 10);
    EXPECT_EQ(topic->m_media[0].m_name, CString(u"!!Playlist: List"));
    EXPECT_EQ(topic->m_media[0].m_location, CString(u"http://s/stream"));
    EXPECT_EQ(topic->m_media[0].m_type, MEDIA_AUDIO_URL);
    EXPECT_TRUE(doc.m_bContentsChanged);
    // Results and criteria are gone; a second import has nothing to take.
    EXPECT_TRUE(doc.m_radioDb.m_results.IsEmpty());
    EXPECT_EQ(doc.m_radioDb.CountCriteria(), 0);
    EXPECT_EQ(doc.ImportStationResults(CString(u"Imported Media"), 0), 0);
}

TEST(RadioImport, ASecondImportDoublesAndAnEmptyTopicTakesNothing) {
    COrvexDoc doc;
    doc.m_radioDb.m_results.Add(Station(u"A", u"http://a"));
    EXPECT_EQ(doc.ImportStationResults(CString(), 0), 0);
    EXPECT_EQ(doc.m_radioDb.m_results.GetSize(), 1);
    EXPECT_EQ(doc.ImportStationResults(CString(u"Radio"), 0), 1);
    doc.m_radioDb.m_results.Add(Station(u"A", u"http://a"));
    EXPECT_EQ(doc.ImportStationResults(CString(u"Radio"), 0), 1);
    const CTopic* topic = RootTopic(doc, CString(u"Radio"));
    ASSERT_NE(topic, nullptr);
    EXPECT_EQ(topic->m_media.GetSize(), 2);
}
