#include <gtest/gtest.h>

#include "contents/MediaItem.h"
#include "tests/contents/TreeBuilder.h"

TEST(CMediaItem, TypeTablesFallBackForUnknownValues) {
    CMediaItem item;
    item.m_type = MEDIA_VIDEO_URL;
    EXPECT_EQ(item.GetTypeName(), CString(u"Video Stream"));
    EXPECT_EQ(item.MediaTypeToCode(), CString(u"VIDU"));
    EXPECT_EQ(item.GetGroupName(), CString(u"Video Streams"));
    item.m_type = static_cast<MediaType>(7);
    EXPECT_EQ(item.GetTypeName(), CString(u"Unknown Stream"));
    EXPECT_EQ(item.MediaTypeToCode(), CString(u"Unknown Stream"));
    EXPECT_EQ(item.GetGroupName(), CString(u"Miscellaneous"));
    item.m_type = MEDIA_NONE;
    EXPECT_EQ(item.GetGroupName(), CString(u"Miscellaneous"));

    EXPECT_EQ(CMediaItem::MediaTypeFromCode(CString(u"AUDF")), MEDIA_AUDIO_FILE);
    EXPECT_EQ(CMediaItem::MediaTypeFromCode(CString(u"VIDF")), MEDIA_VIDEO_FILE);
    EXPECT_EQ(CMediaItem::MediaTypeFromCode(CString(u"audf")), MEDIA_NONE);
    EXPECT_EQ(CMediaItem::MediaTypeFromCode(CString(u"NONE")), MEDIA_NONE);
    EXPECT_EQ(CMediaItem::MediaTypeFromCode(CString(u"XYZ")), MEDIA_NONE);
}

TEST(CMediaItem, EqualityIgnoresOnlyTheFavouriteFlag) {
    CMediaItem a = MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    CMediaItem b = a;
    b.m_favorite = TRUE;
    EXPECT_TRUE(a == b);
    b = a;
    b.m_name = u"blue";
    EXPECT_FALSE(a == b);
    b = a;
    b.m_topics = Names({u"Music"});
    EXPECT_FALSE(a == b);
    b = a;
    b.m_type = MEDIA_AUDIO_URL;
    EXPECT_FALSE(a == b);
    b = a;
    b.m_location += u"x";
    EXPECT_FALSE(a == b);

    EXPECT_TRUE(a.IsValid());
    b = a;
    b.m_location.Empty();
    EXPECT_FALSE(b.IsValid());
    b = a;
    b.m_type = MEDIA_NONE;
    EXPECT_FALSE(b.IsValid());
    b.Clear();
    EXPECT_TRUE(b.m_name.IsEmpty() && b.m_topics.IsEmpty() && b.m_type == MEDIA_NONE);
}

TEST(CMediaItem, TopicNameFilesAnUnfiledItemUnderItsGroup) {
    CMediaItem item = MakeItem(u"Radio", MEDIA_AUDIO_URL, {});
    EXPECT_EQ(item.GetTopicName(), CString(u"Audio Streams"));
    ASSERT_EQ(item.m_topics.GetSize(), 1);
    EXPECT_EQ(item.GetTopicName(), CString(u"Audio Streams"));
    EXPECT_EQ(item.m_topics.GetSize(), 1);

    CMediaItem filed = MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    EXPECT_EQ(filed.GetTopicName(), CString(u"Jazz"));
    EXPECT_EQ(filed.TopicsAsList(), CString(u"Music,Jazz"));
    EXPECT_EQ(CMediaItem().TopicsAsList(), CString());
}

TEST(CMediaItem, TopicsFromPathSplitAndTrim) {
    CMediaItem item;
    item.SetTopicsFromPath(CString());
    EXPECT_EQ(item.m_topics.GetSize(), 0);
    item.SetTopicsFromPath(CString(u" Music \\ Jazz\\"));
    EXPECT_EQ(item.TopicsAsList(), CString(u"Music,Jazz"));
    item.m_topics.RemoveAll();
    item.SetTopicsFromPath(CString(u"A\\\\B"));
    EXPECT_EQ(item.TopicsAsList(), CString(u"A,,B"));
    // Appends to what is there.
    item.SetTopicsFromPath(CString(u"C"));
    EXPECT_EQ(item.TopicsAsList(), CString(u"A,,B,C"));
}

TEST(CMediaArray, SortsByNameWithoutCaseBothWays) {
    CMediaArray items;
    items.SortByName(TRUE); // an empty array stays empty
    EXPECT_TRUE(items.IsEmpty());
    for (const char16_t* n : {u"beta", u"Alpha", u"gamma", u"Delta"})
        items.Add(MakeItem(n, MEDIA_AUDIO_FILE, {u"X"}));
    items.SortByName(TRUE);
    EXPECT_EQ(items[0].m_name, CString(u"Alpha"));
    EXPECT_EQ(items[1].m_name, CString(u"beta"));
    EXPECT_EQ(items[3].m_name, CString(u"gamma"));
    items.SortByName(FALSE);
    EXPECT_EQ(items[0].m_name, CString(u"gamma"));
    EXPECT_EQ(items[3].m_name, CString(u"Alpha"));
    EXPECT_TRUE(items.Contains(MakeItem(u"Delta", MEDIA_AUDIO_FILE, {u"X"})));
    EXPECT_FALSE(items.Contains(MakeItem(u"Delta", MEDIA_AUDIO_FILE, {u"Y"})));
}
