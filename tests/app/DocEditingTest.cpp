// The editing commands of the panes: what the dialog is opened with, and how
// little of the tree each answer touches.
#include <gtest/gtest.h>

#include "app/OrvexDoc.h"
#include "tests/app/DocFixtures.h"
#include "tests/app/ScriptedDialogs.h"
#include "tests/contents/TreeBuilder.h"
#include "tests/support/MessageBoxRecorder.h"

namespace {

struct EditFixture {
    EditFixture() {
        doc.SetDialogs(&dialogs);
        doc.AddView(&view);
        music = Ensure(doc.m_contents, {u"Music"});
        doc.m_contents.AddItem(music, MakeItem(u"One", MEDIA_AUDIO_FILE, {u"Music"}), FALSE);
        doc.m_contents.AddItem(music, MakeItem(u"Two", MEDIA_AUDIO_FILE, {u"Music"}), FALSE);
    }
    const CMediaArray& Items() { return doc.m_contents.m_topics[0].m_media; }

    ScriptedDialogs dialogs;
    RecordingView view;
    MessageBoxRecorder boxes;
    COrvexDoc doc;
    CNodeArray music;
};

} // namespace

TEST(EditMediaItem, ANewItemIsAddedWhenValidAndRefusedOtherwise) {
    EditFixture f;
    CMediaItem blank;
    blank.m_type = MEDIA_AUDIO_FILE;
    blank.m_topics = Names({u"Music"});
    f.dialogs.item.answer = [](CEditMediaItemFields& d) {
        d.m_item.m_name = u"Three";
        d.m_item.m_location = u"/m/3.mp3";
        return IDOK;
    };
    f.doc.EditMediaItem(f.music, blank, TRUE);
    EXPECT_EQ(f.dialogs.item.opened.m_title, CString(u"New Media Item"));
    EXPECT_EQ(f.dialogs.item.opened.m_pDoc, &f.doc);
    EXPECT_EQ(f.dialogs.item.opened.m_item, blank);
    ASSERT_EQ(f.Items().GetSize(), 3);
    EXPECT_EQ(f.Items()[2].m_name, CString(u"Three"));
    EXPECT_EQ(f.view.Numbers(), std::vector<int>{HINT_LIST});
    EXPECT_EQ(f.doc.m_displayTopic.m_media.GetSize(), 3);
    EXPECT_TRUE(f.doc.m_bContentsChanged);

    // OK on a blank that stayed invalid, and Cancel.
    f.doc.m_bContentsChanged = FALSE;
    f.dialogs.item.answer = [](CEditMediaItemFields&) { return IDOK; };
    f.doc.EditMediaItem(f.music, blank, TRUE);
    EXPECT_EQ(f.boxes.Texts(), std::vector<CString>{u"New Media Item failed!"});
    f.dialogs.item.answer = nullptr;
    f.doc.EditMediaItem(f.music, blank, TRUE);
    EXPECT_EQ(f.Items().GetSize(), 3);
    EXPECT_FALSE(f.doc.m_bContentsChanged);
}

TEST(EditMediaItem, EachAnswerTakesItsOwnRoad) {
    EditFixture f;
    const CMediaItem one = f.Items()[0];
    // A new name alone replaces the item where it stands.
    f.dialogs.item.answer = [](CEditMediaItemFields& d) {
        d.m_item.m_name = u"Uno";
        d.m_fieldsChanged = TRUE;
        return IDOK;
    };
    f.doc.EditMediaItem(f.music, one, FALSE);
    EXPECT_EQ(f.dialogs.item.opened.m_title, CString(u"Edit Media Item"));
    EXPECT_EQ(f.Items()[0].m_name, CString(u"Uno"));
    EXPECT_EQ(f.view.Numbers(), std::vector<int>{HINT_LIST});

    // Mark and name changed together: only the mark is applied.
    const CMediaItem uno = f.Items()[0];
    f.dialogs.item.answer = [](CEditMediaItemFields& d) {
        d.m_item.m_name = u"Eins";
        d.m_item.m_favorite = TRUE;
        d.m_fieldsChanged = TRUE;
        d.m_favoriteChanged = TRUE;
        return IDOK;
    };
    f.doc.EditMediaItem(f.music, uno, FALSE);
    EXPECT_EQ(f.Items()[0].m_name, CString(u"Uno"));
    EXPECT_TRUE(f.Items()[0].m_favorite);
    EXPECT_EQ(f.doc.m_favorites.GetSize(), 1);

    // OK with nothing changed still counts as a change.
    f.doc.m_bContentsChanged = FALSE;
    f.view.Clear();
    f.dialogs.item.answer = [](CEditMediaItemFields&) { return IDOK; };
    f.doc.EditMediaItem(f.music, f.Items()[1], FALSE);
    EXPECT_TRUE(f.doc.m_bContentsChanged);
    EXPECT_TRUE(f.view.m_hints.empty());

    // An item that is no longer there fails on both roads, and says so.
    f.dialogs.item.answer = [](CEditMediaItemFields& d) {
        d.m_item.m_name = u"X";
        d.m_fieldsChanged = TRUE;
        return IDOK;
    };
    f.doc.EditMediaItem(f.music, one, FALSE);
    f.dialogs.item.answer = [](CEditMediaItemFields& d) {
        d.m_favoriteChanged = TRUE;
        return IDOK;
    };
    f.doc.EditMediaItem(f.music, one, FALSE);
    EXPECT_EQ(f.boxes.Texts(),
              (std::vector<CString>{u"EditMediaItem failed!", u"EditMediaItem failed!"}));
    EXPECT_TRUE(f.view.m_hints.empty());
}

TEST(EditTopic, NewRootAndChildTopics) {
    EditFixture f;
    f.dialogs.topic.answer = [](CNewTopicFields& d) {
        d.m_name = u"Radio";
        d.m_mediaType = MEDIA_AUDIO_URL;
        return IDOK;
    };
    f.doc.EditTopic(CNodeArray(), MEDIA_VIDEO_FILE, TRUE);
    EXPECT_EQ(f.dialogs.topic.opened.m_title, CString(u"New Topic"));
    EXPECT_EQ(f.dialogs.topic.opened.m_mediaType, MEDIA_NONE); // a root starts with no type
    EXPECT_EQ(ChildNames(f.doc.m_contents), CString(u"Music,Radio"));
    EXPECT_EQ(f.doc.m_contents.m_topics[1].m_mediaType, MEDIA_AUDIO_URL);
    EXPECT_EQ(f.doc.m_displayTopic.GetName(), CString(u"Radio"));
    EXPECT_EQ(f.view.Numbers(), (std::vector<int>{HINT_TREE, HINT_LIST}));
    EXPECT_TRUE(f.doc.m_bContentsChanged);

    // A child: opened on the parent's type, filed under the parent.
    f.doc.EditTopic(f.music, MEDIA_AUDIO_FILE, TRUE);
    EXPECT_EQ(f.dialogs.topic.opened.m_mediaType, MEDIA_AUDIO_FILE);
    EXPECT_EQ(ChildNames(f.doc.m_contents, &f.music), CString(u"Radio"));
    EXPECT_EQ(f.doc.m_displayTopic.GetSize(), 2);

    // A parent without a type gets no dialog; Cancel adds nothing.
    f.doc.EditTopic(f.music, MEDIA_NONE, TRUE);
    EXPECT_EQ(f.dialogs.topic.count, 2);
    f.dialogs.topic.answer = nullptr;
    f.doc.m_bContentsChanged = FALSE;
    f.doc.EditTopic(CNodeArray(), MEDIA_NONE, TRUE);
    EXPECT_EQ(f.doc.m_contents.m_topics.GetSize(), 2);
    EXPECT_FALSE(f.doc.m_bContentsChanged);
}

TEST(EditTopic, EditingRenamesOrRetypesOnlyWhatChanged) {
    EditFixture f;
    f.dialogs.topic.answer = [](CNewTopicFields&) { return IDOK; };
    f.doc.EditTopic(f.music, MEDIA_NONE, FALSE);
    EXPECT_EQ(f.dialogs.topic.opened.m_title, CString(u"Edit Topic"));
    EXPECT_EQ(f.dialogs.topic.opened.m_name, CString(u"Music"));
    EXPECT_EQ(f.dialogs.topic.opened.m_mediaType, MEDIA_AUDIO_FILE);
    EXPECT_TRUE(f.doc.m_bContentsChanged);
    EXPECT_TRUE(f.view.m_hints.empty());

    f.dialogs.topic.answer = [](CNewTopicFields& d) {
        d.m_mediaType = MEDIA_VIDEO_FILE;
        return IDOK;
    };
    f.doc.EditTopic(f.music, MEDIA_NONE, FALSE);
    EXPECT_EQ(f.doc.m_contents.m_topics[0].m_mediaType, MEDIA_VIDEO_FILE);
    EXPECT_EQ(f.doc.m_contents.m_topics[0].GetName(), CString(u"Music"));
    EXPECT_EQ(f.view.Numbers(), (std::vector<int>{HINT_TREE, HINT_LIST}));

    f.dialogs.topic.answer = [](CNewTopicFields& d) {
        d.m_name = u"Songs";
        return IDOK;
    };
    f.doc.EditTopic(f.music, MEDIA_NONE, FALSE);
    EXPECT_EQ(f.doc.m_contents.m_topics[0].GetName(), CString(u"Songs"));
    EXPECT_EQ(f.doc.m_displayTopic.GetName(), CString(u"Songs"));

    // No path, or a path that finds nothing: no dialog.
    f.doc.EditTopic(CNodeArray(), MEDIA_NONE, FALSE);
    f.doc.EditTopic(MakePath({{u"Gone", 5}}), MEDIA_NONE, FALSE);
    EXPECT_EQ(f.dialogs.topic.count, 3);
}
