#include <gtest/gtest.h>

#include "tests/contents/TreeBuilder.h"

namespace {

// Music (4) > Jazz (4) holding Blue (favourite); News (1) holding one stream.
CMediaContents ExampleTree() {
    CMediaContents tree;
    MediaType audio = MEDIA_AUDIO_FILE, stream = MEDIA_AUDIO_URL;
    CNodeArray path;
    tree.EnsureTopicPath(Names({u"Music", u"Jazz"}), &audio, path);
    tree.AddItem(path, MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE), FALSE);
    tree.EnsureTopicPath(Names({u"News"}), &stream, path);
    tree.AddItem(path, MakeItem(u"BBC", MEDIA_AUDIO_URL, {u"News"}), FALSE);
    return tree;
}

} // namespace

TEST(CMediaContents, ExampleTreeHasThePathsOfItsPlaces) {
    CMediaContents tree = ExampleTree();
    ASSERT_EQ(tree.m_topics.GetSize(), 2);
    EXPECT_TRUE(tree.m_topics[0].Path() == MakePath({{u"Music", 0}}));
    EXPECT_TRUE(tree.m_topics[1].Path() == MakePath({{u"News", 1}}));
    EXPECT_TRUE(tree.m_topics[0].m_children[0].Path() == MakePath({{u"Music", 0}, {u"Jazz", 0}}));
    EXPECT_EQ(tree.m_topics[1].m_mediaType, MEDIA_AUDIO_URL);

    int topics = -1, items = -1;
    tree.CountEntries(&topics, &items);
    EXPECT_EQ(topics, 3);
    EXPECT_EQ(items, 2);

    EXPECT_TRUE(tree.RemoveItem(MakePath({{u"Music", 0}, {u"Jazz", 0}}),
                                MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}), TRUE));
    EXPECT_EQ(tree.m_currentTopic.GetName(), CString(u"Jazz"));
    EXPECT_TRUE(tree.m_currentTopic.m_media.IsEmpty());
}

TEST(CMediaContents, StalePathsFindNothing) {
    CMediaContents empty;
    CTopic copy;
    EXPECT_FALSE(empty.GetTopicCopy(MakePath({{u"Music", 0}}), copy));
    CMediaArray favorites;
    CNodesArArray paths;
    int count = 5;
    EXPECT_FALSE(empty.BuildFavorites(favorites, paths, &count));
    EXPECT_EQ(count, 0);

    CMediaContents tree = ExampleTree();
    EXPECT_TRUE(tree.GetTopicCopy(MakePath({{u"News", 1}}), copy));
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"news", 1}}), copy)); // wrong name
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"News", 0}}), copy)); // wrong position
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"News", -1}}), copy));
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"Music", 0}, {u"Jazz", 0}, {u"X", 0}}), copy));
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"Music", 0}, {u"Jazz", 1}}), copy));
    EXPECT_FALSE(tree.GetTopicCopy(CNodeArray(), copy));
    // Every operation refuses a stale path and changes nothing.
    const CMediaItem item = MakeItem(u"New", MEDIA_AUDIO_FILE, {u"News"});
    EXPECT_FALSE(tree.AddItem(MakePath({{u"News", 0}}), item, TRUE));
    EXPECT_FALSE(tree.DeleteTopic(MakePath({{u"News", 0}}), TRUE));
    EXPECT_FALSE(tree.DeleteTopic(MakePath({{u"Newz", 1}}), TRUE));
    EXPECT_EQ(tree.m_topics.GetSize(), 2);
    EXPECT_TRUE(tree.m_currentTopic.IsEmpty());

    // Deleting Music moves News to position 0; the old paths are stale now.
    EXPECT_TRUE(tree.DeleteTopic(MakePath({{u"Music", 0}}), TRUE));
    EXPECT_TRUE(tree.m_topics[0].Path() == MakePath({{u"News", 0}}));
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"News", 1}}), copy));
    EXPECT_FALSE(tree.GetTopicCopy(MakePath({{u"Music", 0}, {u"Jazz", 0}}), copy));
}

TEST(CMediaContents, ATopicNamedErrorCannotBeReached) {
    CMediaContents tree;
    CNodeArray path = Ensure(tree, {u"ERROR"});
    ASSERT_EQ(tree.m_topics.GetSize(), 1);
    CTopic copy;
    EXPECT_FALSE(tree.GetTopicCopy(path, copy));
    EXPECT_FALSE(tree.AddItem(path, MakeItem(u"a", MEDIA_AUDIO_FILE, {u"ERROR"}), FALSE));
    EXPECT_FALSE(tree.EditTopic(path, CString(u"Fine"), MEDIA_AUDIO_FILE, FALSE));
    EXPECT_TRUE(tree.m_errorTopic.m_media.IsEmpty()); // the sentinel is never filled
}

TEST(CMediaContents, ItemOperationsFindItemsByEquality) {
    CMediaContents tree;
    CNodeArray jazz = Ensure(tree, {u"Music", u"Jazz"});
    const CMediaItem a = MakeItem(u"A", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    const CMediaItem b = MakeItem(u"B", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    const CMediaItem c = MakeItem(u"C", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    ASSERT_TRUE(tree.AddItem(jazz, a, FALSE));

    CMediaArray batch;
    EXPECT_FALSE(tree.AddItems(jazz, batch, TRUE)); // an empty batch is a failure
    batch.Add(a);                                   // held already: skipped
    batch.Add(b);
    batch.Add(b); // new to the topic: both copies go in
    EXPECT_TRUE(tree.AddItems(jazz, batch, TRUE));
    ASSERT_EQ(tree.m_currentTopic.m_media.GetSize(), 3);
    EXPECT_EQ(tree.m_currentTopic.m_media[2].m_name, CString(u"B"));

    CMediaItem renamed = c;
    EXPECT_FALSE(tree.ReplaceItem(jazz, c, renamed, FALSE));
    EXPECT_TRUE(tree.ReplaceItem(jazz, b, c, TRUE)); // the first equal element only
    EXPECT_EQ(tree.m_currentTopic.m_media[1].m_name, CString(u"C"));
    EXPECT_EQ(tree.m_currentTopic.m_media[2].m_name, CString(u"B"));

    EXPECT_TRUE(tree.SetItemFavorite(jazz, c, TRUE, TRUE));
    EXPECT_TRUE(tree.m_currentTopic.m_media[1].m_favorite);
    EXPECT_FALSE(tree.SetItemFavorite(jazz, MakeItem(u"Z", MEDIA_AUDIO_FILE, {}), TRUE, TRUE));

    EXPECT_TRUE(tree.SortTopic(jazz, FALSE, TRUE));
    EXPECT_EQ(tree.m_currentTopic.m_media[0].m_name, CString(u"C"));

    // Removing several stops at the first missing one; earlier removals stay.
    CMediaArray gone;
    gone.Add(a);
    gone.Add(MakeItem(u"Q", MEDIA_AUDIO_FILE, {}));
    gone.Add(b);
    tree.m_currentTopic.Clear();
    EXPECT_FALSE(tree.RemoveItems(jazz, gone, TRUE));
    CTopic copy;
    tree.GetTopicCopy(jazz, copy);
    EXPECT_EQ(copy.m_media.GetSize(), 2);
    EXPECT_FALSE(copy.m_media.Contains(a));
    EXPECT_TRUE(tree.m_currentTopic.IsEmpty());

    // Of equal items the first goes, once for each time the batch names
    // it; an item that differs only in its kind stays.
    const CNodeArray pop = Ensure(tree, {u"Pop"});
    const CMediaItem x = MakeItem(u"X", MEDIA_AUDIO_FILE, {});
    const CMediaItem xStream = MakeItem(u"X", MEDIA_AUDIO_URL, {});
    const CMediaItem y = MakeItem(u"Y", MEDIA_AUDIO_FILE, {});
    for (const CMediaItem* item : {&x, &xStream, &y, &x, &x})
        tree.AddItem(pop, *item, FALSE);
    CMediaArray twice;
    twice.Add(x);
    twice.Add(x);
    EXPECT_TRUE(tree.RemoveItems(pop, twice, TRUE));
    const CMediaArray& left = tree.m_currentTopic.m_media;
    ASSERT_EQ(left.GetSize(), 3);
    EXPECT_TRUE(left[0] == xStream && left[1] == y && left[2] == x);
}

TEST(CMediaContents, MovesCarryTopicsAndFavouriteFlags) {
    CMediaContents tree;
    CNodeArray jazz = Ensure(tree, {u"Music", u"Jazz"});
    CNodeArray rock = Ensure(tree, {u"Music", u"Rock"});
    const CMediaItem a = MakeItem(u"A", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE);
    const CMediaItem b = MakeItem(u"B", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    tree.AddItem(jazz, a, FALSE);
    tree.AddItem(jazz, b, FALSE);

    EXPECT_TRUE(tree.MoveItem(a, jazz, rock));
    CTopic copy;
    tree.GetTopicCopy(rock, copy);
    ASSERT_EQ(copy.m_media.GetSize(), 1);
    EXPECT_EQ(copy.m_media[0].TopicsAsList(), CString(u"Music,Rock"));
    EXPECT_TRUE(copy.m_media[0].m_favorite);
    EXPECT_FALSE(tree.MoveItem(a, jazz, MakePath({{u"Music", 0}, {u"Pop", 2}})));

    CMediaArray batch;
    batch.Add(b);
    batch.Add(MakeItem(u"Missing", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}));
    tree.m_currentTopic.Clear();
    EXPECT_FALSE(tree.MoveItems(batch, jazz, rock, TRUE));
    tree.GetTopicCopy(rock, copy);
    EXPECT_EQ(copy.m_media.GetSize(), 3); // the copies stay where they went
    EXPECT_TRUE(tree.m_currentTopic.IsEmpty());

    CMediaArray favorites;
    CNodesArArray paths;
    int count = 0;
    tree.BuildFavorites(favorites, paths, &count);
    ASSERT_EQ(count, 1);
    EXPECT_TRUE(paths[0] == rock);
}

TEST(CMediaContents, FavouritesAreDepthFirstWithOwnItemsFirst) {
    CMediaContents tree;
    CNodeArray music = Ensure(tree, {u"Music"});
    CNodeArray jazz = Ensure(tree, {u"Music", u"Jazz"});
    CNodeArray news = Ensure(tree, {u"News"});
    tree.AddItem(jazz, MakeItem(u"j1", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE), FALSE);
    tree.AddItem(music, MakeItem(u"m1", MEDIA_AUDIO_FILE, {u"Music"}, TRUE), FALSE);
    tree.AddItem(music, MakeItem(u"m2", MEDIA_AUDIO_FILE, {u"Music"}, FALSE), FALSE);
    tree.AddItem(news, MakeItem(u"n1", MEDIA_AUDIO_URL, {u"News"}, TRUE), FALSE);
    tree.AddItem(music, MakeItem(u"m3", MEDIA_AUDIO_FILE, {u"Music"}, TRUE), FALSE);

    CMediaArray items;
    CNodesArArray paths;
    int count = 0;
    ASSERT_TRUE(tree.BuildFavorites(items, paths, &count));
    ASSERT_EQ(count, 4);
    const char16_t* expected[] = {u"m1", u"m3", u"j1", u"n1"};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(items[k].m_name, CString(expected[k]));
        CTopic holder;
        ASSERT_TRUE(tree.GetTopicCopy(paths[k], holder));
        EXPECT_TRUE(holder.m_media.Contains(items[k]));
    }
}

TEST(CMediaContents, EnsureTopicPathReusesAndTakesTheFirstMatch) {
    CMediaContents tree;
    MediaType video = MEDIA_VIDEO_FILE;
    CNodeArray first, second;
    ASSERT_TRUE(tree.EnsureTopicPath(Names({u"Films", u"Noir"}), &video, first));
    ASSERT_TRUE(tree.EnsureTopicPath(Names({u"Films", u"Noir"}), &video, second));
    EXPECT_TRUE(first == second);
    EXPECT_EQ(tree.m_topics.GetSize(), 1);
    EXPECT_EQ(tree.m_topics[0].m_children.GetSize(), 1);
    EXPECT_EQ(tree.m_topics[0].m_mediaType, MEDIA_VIDEO_FILE);
    EXPECT_FALSE(tree.EnsureTopicPath(CStringArray(), &video, first));

    // Two siblings of one name: the first takes what is filed by name.
    CTopic twin;
    twin.SetName(CString(u"Noir"));
    ASSERT_TRUE(tree.AddChildTopic(MakePath({{u"Films", 0}}), twin, FALSE));
    ASSERT_TRUE(tree.EnsureTopicPath(Names({u"Films", u"Noir", u"Deep"}), &video, first));
    EXPECT_TRUE(first == MakePath({{u"Films", 0}, {u"Noir", 0}, {u"Deep", 0}}));

    MediaType none = MEDIA_NONE;
    EXPECT_FALSE(tree.AddTopicPath(Names({u"X"}), &none, TRUE));
    EXPECT_TRUE(tree.AddTopicPath(Names({u"X", u"Y"}), &video, TRUE));
    EXPECT_TRUE(tree.m_currentTopic.Path() == MakePath({{u"X", 1}, {u"Y", 0}}));
}

TEST(CMediaContents, AddItemByTopicsFilesByNameOrGroup) {
    CMediaContents tree;
    EXPECT_FALSE(tree.AddItemByTopics(MakeItem(u"n", MEDIA_NONE, {u"A"}), TRUE));
    EXPECT_TRUE(tree.m_topics.IsEmpty());
    ASSERT_TRUE(tree.AddItemByTopics(MakeItem(u"s", MEDIA_VIDEO_URL, {}), TRUE));
    EXPECT_EQ(tree.m_currentTopic.GetName(), CString(u"Video Streams"));
    EXPECT_EQ(tree.m_currentTopic.m_mediaType, MEDIA_VIDEO_URL);
    EXPECT_EQ(tree.m_currentTopic.m_media[0].TopicsAsList(), CString(u"Video Streams"));
    // No duplicate check: the same item twice is filed twice.
    const CMediaItem deep = MakeItem(u"d", MEDIA_AUDIO_FILE, {u"A", u"B"});
    ASSERT_TRUE(tree.AddItemByTopics(deep, FALSE));
    ASSERT_TRUE(tree.AddItemByTopics(deep, TRUE));
    EXPECT_EQ(tree.m_currentTopic.m_media.GetSize(), 2);
    EXPECT_TRUE(tree.m_currentTopic.Path() == MakePath({{u"A", 1}, {u"B", 0}}));
}
