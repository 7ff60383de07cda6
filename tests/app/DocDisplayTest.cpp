#include <gtest/gtest.h>

#include <functional>

#include "tests/app/DocFixtures.h"
#include "tests/contents/TreeBuilder.h"

namespace {

struct Library {
    COrvexDoc doc;
    RecordingView view;
    RecordingView second;
    CNodeArray music;
    CNodeArray jazz;
    CNodeArray news;
    CMediaItem blue = MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE);
    CMediaItem alpha = MakeItem(u"Alpha", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"});
    CMediaItem world = MakeItem(u"World", MEDIA_AUDIO_URL, {u"News"}, TRUE);

    Library() {
        jazz = Ensure(doc.m_contents, {u"Music", u"Jazz"});
        music = MakePath({{u"Music", 0}});
        news = Ensure(doc.m_contents, {u"News"}, MEDIA_AUDIO_URL);
        doc.m_contents.AddItem(jazz, blue, FALSE);
        doc.m_contents.AddItem(jazz, alpha, FALSE);
        doc.m_contents.AddItem(news, world, FALSE);
        doc.AddView(&view);
        doc.AddView(&second);
    }

    CString Rows() const {
        CString out;
        for (const CMediaItem& item : doc.m_displayTopic.m_media) {
            if (!out.IsEmpty())
                out += u',';
            out += item.m_name;
        }
        return out;
    }
};

const std::vector<int> kList{HINT_LIST};
const std::vector<int> kTreeList{HINT_TREE, HINT_LIST};

} // namespace

TEST(RefreshDisplay, EachArgumentDoesItsOwnStep) {
    Library lib;
    lib.doc.m_bFolderView = TRUE;
    lib.doc.RefreshDisplay(FALSE, FALSE, nullptr, FALSE, FALSE);
    EXPECT_FALSE(lib.doc.m_bFolderView);
    EXPECT_TRUE(lib.doc.m_favorites.IsEmpty()); // not rebuilt
    EXPECT_TRUE(lib.view.m_hints.empty());

    // Favourites shown without a rebuild are those of the last build: none yet.
    lib.doc.RefreshDisplay(FALSE, TRUE, nullptr, FALSE, TRUE);
    EXPECT_TRUE(lib.doc.m_bFavoritesView);
    EXPECT_EQ(lib.doc.m_displayTopic.GetSize(), 1);
    EXPECT_EQ(lib.doc.m_displayTopic[0], CNodeItem(CString(kFavoritesName), -1));
    EXPECT_EQ(lib.Rows(), CString());
    EXPECT_EQ(lib.view.Numbers(), kList);
    EXPECT_EQ(lib.second.Numbers(), kList);

    lib.view.Clear();
    lib.doc.RefreshDisplay(TRUE, TRUE, nullptr, TRUE, TRUE);
    EXPECT_EQ(lib.Rows(), CString(u"Blue,World"));
    EXPECT_EQ(lib.doc.m_favoritePaths.GetSize(), 2);
    EXPECT_EQ(lib.doc.m_favoritePaths[1], lib.news);
    EXPECT_EQ(lib.doc.m_displayTopic.m_mediaType, MEDIA_NONE);
    EXPECT_TRUE(lib.doc.m_displayTopic.m_children.IsEmpty());
    EXPECT_EQ(lib.view.Numbers(), kTreeList);

    // A topic replaces the favourites; the flag goes.
    CTopic jazz;
    lib.doc.m_contents.GetTopicCopy(lib.jazz, jazz);
    lib.doc.RefreshDisplay(FALSE, FALSE, &jazz, FALSE, FALSE);
    EXPECT_FALSE(lib.doc.m_bFavoritesView);
    EXPECT_EQ(lib.doc.m_displayTopic.Path(), lib.jazz);
    // The display topic handed back to itself stays intact.
    lib.doc.RefreshDisplay(FALSE, FALSE, &lib.doc.m_displayTopic, FALSE, FALSE);
    EXPECT_EQ(lib.Rows(), CString(u"Blue,Alpha"));
    // With no topic the display stays as it is.
    lib.doc.RefreshDisplay(TRUE, FALSE, nullptr, FALSE, FALSE);
    EXPECT_EQ(lib.doc.m_displayTopic.Path(), lib.jazz);
}

TEST(DocumentViews, OnlyRegisteredViewsAreToldAndTheSenderIsSkipped) {
    Library lib;
    lib.doc.RemoveView(&lib.second);
    lib.doc.AddView(&lib.view); // twice is once
    lib.doc.ShowFavorites();
    EXPECT_EQ(lib.view.Numbers(), kList);
    EXPECT_TRUE(lib.second.m_hints.empty());
    lib.doc.UpdateAllViews(&lib.view, HINT_TREE);
    EXPECT_EQ(lib.view.Numbers(), kList);
}

TEST(DisplayOperations, ShowSelectAndFavouritesChangeNoContents) {
    Library lib;
    ASSERT_TRUE(lib.doc.ShowTopic(lib.jazz));
    EXPECT_EQ(lib.view.Numbers(), kTreeList);
    EXPECT_EQ(lib.Rows(), CString(u"Blue,Alpha"));
    lib.view.Clear();
    ASSERT_TRUE(lib.doc.SelectTopic(lib.news));
    EXPECT_EQ(lib.view.Numbers(), kList);
    EXPECT_EQ(lib.Rows(), CString(u"World"));
    lib.view.Clear();
    EXPECT_FALSE(lib.doc.ShowTopic(MakePath({{u"Nowhere", 0}})));
    EXPECT_FALSE(lib.doc.SelectTopic(MakePath({{u"Music", 5}})));
    EXPECT_TRUE(lib.view.m_hints.empty());
    EXPECT_EQ(lib.Rows(), CString(u"World"));
    ASSERT_TRUE(lib.doc.ShowFavorites());
    EXPECT_TRUE(lib.doc.m_bFavoritesView);
    EXPECT_FALSE(lib.doc.m_bContentsChanged);

    COrvexDoc empty;
    ASSERT_TRUE(empty.ShowFavorites());
    EXPECT_TRUE(empty.m_displayTopic.m_media.IsEmpty());
}

TEST(DisplayOperations, AFavouriteMarkStaysOnTheViewItWasSetIn) {
    // In the favourites view the row goes, and the view stays.
    Library lib;
    lib.doc.RefreshDisplay(TRUE, TRUE, nullptr, FALSE, FALSE);
    lib.view.Clear();
    ASSERT_TRUE(lib.doc.SetItemFavorite(lib.jazz, lib.blue, FALSE, FALSE));
    EXPECT_TRUE(lib.doc.m_bFavoritesView);
    EXPECT_EQ(lib.Rows(), CString(u"World"));
    EXPECT_EQ(lib.doc.m_favoritePaths.GetSize(), 1);
    EXPECT_EQ(lib.view.Numbers(), kList);
    EXPECT_TRUE(lib.doc.m_bContentsChanged);

    // In a topic it stays on that topic, unless forced to the favourites.
    Library topic;
    topic.doc.ShowTopic(topic.jazz);
    ASSERT_TRUE(topic.doc.SetItemFavorite(topic.jazz, topic.alpha, TRUE, FALSE));
    EXPECT_FALSE(topic.doc.m_bFavoritesView);
    EXPECT_EQ(topic.doc.m_displayTopic.Path(), topic.jazz);
    EXPECT_TRUE(topic.doc.m_displayTopic.m_media[1].m_favorite);
    EXPECT_EQ(topic.doc.m_favorites.GetSize(), 3); // rebuilt
    ASSERT_TRUE(topic.doc.SetItemFavorite(topic.news, topic.world, FALSE, TRUE));
    EXPECT_TRUE(topic.doc.m_bFavoritesView);
    EXPECT_EQ(topic.Rows(), CString(u"Blue,Alpha"));
}

// Every operation of the document's table: the refresh it makes and the flag.
TEST(DisplayOperations, EachChangeRefreshesAsItsRowSaysAndMarksTheContents) {
    struct Row {
        const char* name;
        std::function<BOOL(Library&)> run;
        std::vector<int> hints;
        const char16_t* rows; // the list afterwards
    };
    const std::vector<Row> table = {
        {"RemoveMediaItem", [](Library& l) { return l.doc.RemoveMediaItem(l.jazz, l.blue); }, kList,
         u"Alpha"},
        {"RemoveMediaItems",
         [](Library& l) {
             CMediaArray items;
             items.Add(l.alpha);
             items.Add(l.blue);
             return l.doc.RemoveMediaItems(l.jazz, items);
         },
         kList, u""},
        {"MoveMediaItem", [](Library& l) { return l.doc.MoveMediaItem(l.blue, l.jazz, l.news); },
         kTreeList, u"World,Blue"},
        {"MoveMediaItems",
         [](Library& l) {
             CMediaArray items;
             items.Add(l.world);
             return l.doc.MoveMediaItems(items, l.news, l.jazz);
         },
         kTreeList, nullptr},
        {"MoveTopic", [](Library& l) { return l.doc.MoveTopic(l.news, l.music, FALSE); }, kTreeList,
         nullptr},
        {"RelocateTopic",
         [](Library& l) { return l.doc.RelocateTopic(l.news, l.music, RELOCATE_INTO); }, kTreeList,
         nullptr},
        {"DeleteTopic", [](Library& l) { return l.doc.DeleteTopic(l.news); }, kTreeList, nullptr},
        {"SortTopicMedia", [](Library& l) { return l.doc.SortTopicMedia(l.jazz, TRUE); }, kList,
         u"Alpha,Blue"},
    };
    for (const Row& row : table) {
        Library lib;
        lib.doc.RefreshDisplay(FALSE, TRUE, nullptr, FALSE, FALSE); // stale, empty favourites
        lib.view.Clear();
        ASSERT_TRUE(row.run(lib)) << row.name;
        EXPECT_EQ(lib.view.Numbers(), row.hints) << row.name;
        EXPECT_EQ(lib.second.Numbers(), row.hints) << row.name;
        EXPECT_TRUE(lib.doc.m_bContentsChanged) << row.name;
        EXPECT_FALSE(lib.doc.m_bFavoritesView) << row.name;
        if (row.rows) {
            EXPECT_EQ(lib.Rows(), CString(row.rows)) << row.name;
        }
        // The favourites were rebuilt by all but the sort.
        if (std::string(row.name) != "SortTopicMedia") {
            EXPECT_FALSE(lib.doc.m_favorites.IsEmpty()) << row.name;
            EXPECT_EQ(lib.doc.m_favorites.GetSize(), lib.doc.m_favoritePaths.GetSize());
        } else {
            EXPECT_TRUE(lib.doc.m_favorites.IsEmpty());
        }
    }
}

TEST(DisplayOperations, AFailedTreeCallChangesNeitherDisplayNorFlag) {
    Library lib;
    lib.doc.ShowTopic(lib.news);
    lib.view.Clear();
    const CNodeArray nowhere = MakePath({{u"Nowhere", 3}});
    const CMediaItem stranger = MakeItem(u"Stranger", MEDIA_AUDIO_FILE, {u"Music"});
    CMediaArray strangers;
    strangers.Add(stranger);
    EXPECT_FALSE(lib.doc.SetItemFavorite(lib.jazz, stranger, TRUE, TRUE));
    EXPECT_FALSE(lib.doc.RemoveMediaItem(lib.jazz, stranger));
    EXPECT_FALSE(lib.doc.RemoveMediaItems(nowhere, strangers));
    EXPECT_FALSE(lib.doc.MoveMediaItem(stranger, lib.jazz, lib.news));
    EXPECT_FALSE(lib.doc.MoveMediaItems(strangers, nowhere, lib.news));
    EXPECT_FALSE(lib.doc.MoveTopic(nowhere, lib.music, TRUE));
    EXPECT_FALSE(lib.doc.RelocateTopic(lib.music, lib.jazz, RELOCATE_INTO));
    EXPECT_FALSE(lib.doc.DeleteTopic(nowhere));
    EXPECT_FALSE(lib.doc.SortTopicMedia(nowhere, TRUE));
    EXPECT_TRUE(lib.view.m_hints.empty());
    EXPECT_FALSE(lib.doc.m_bContentsChanged);
    EXPECT_EQ(lib.doc.m_displayTopic.Path(), lib.news);
}
