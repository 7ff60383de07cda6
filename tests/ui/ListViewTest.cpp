#include <QClipboard>
#include <QHeaderView>
#include <QWheelEvent>

#include "platform/base/FileDialog.h"
#include "platform/media/GraphSettings.h"
#include "tests/support/OrvexctlRun.h"
#include "tests/ui/FrameMedia.h"
#include "tests/ui/LibraryFixture.h"
#include "ui/VideoView.h"

TEST_F(LibraryTest, DoubleClickAndEnterPlayRowsOrRefusePlaylists) {
    Select(Row({"Radio"}));
    QWidget* viewport = List().viewport();
    DoubleClick(viewport, {}, RowPoint(0));
    SelectRows({0});
    QTest::keyClick(&List(), Qt::Key_Return);
    const CString refusal(u"Cannot play. Right-click to import.");
    EXPECT_EQ(m_boxes.Texts(), std::vector<CString>({refusal, refusal}));
    EXPECT_TRUE(Frame().GetMediaPath().IsEmpty());

    // Ctrl held: nothing. A stream of an .m3u8 list plays.
    DoubleClick(viewport, Qt::ControlModifier, RowPoint(1));
    EXPECT_TRUE(Frame().GetMediaPath().IsEmpty());
    DoubleClick(viewport, {}, RowPoint(1));
    EXPECT_EQ(Frame().GetMediaPath(), CString(u"http://127.0.0.1:9/live.m3u8"));
    EXPECT_EQ(Frame().GetMediaTitle(), CString(u"Live"));
    EXPECT_EQ(Doc().m_listRestoreTopic, CString(u"Radio"));
    EXPECT_EQ(Doc().m_listRestoreItem, 1);
    // The start fails (nothing answers there) and the list is back.
    ASSERT_TRUE(WaitFor([&] { return Frame().GetSplitterView()->GetListView() != nullptr; }));
    QCoreApplication::processEvents();

    // A CD track: its title differs by the way in.
    CMediaItem track = MakeItem(u"Track01.cda", MEDIA_AUDIO_FILE, {u"Music"});
    track.m_location = u"/dev/sr0/Track01.cda";
    Doc().m_contents.AddItem(Music(), track, FALSE);
    Select(Row({"Music"}));
    DoubleClick(List().viewport(), {}, RowPoint(3));
    EXPECT_EQ(Frame().GetMediaPath(), CString(u"/dev/sr0/Track01.cda"));
    EXPECT_EQ(Frame().GetMediaTitle(), CString(u"Orvex CD: Track01.cda"));
    SelectRows({3});
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(Frame().GetMediaTitle(), CString(u"Orvex CD"));

    // A child topic opens on a double click.
    DoubleClick(List().viewport(), {}, RowPoint(4));
    QCoreApplication::processEvents();
    EXPECT_EQ(Doc().m_displayTopic.Path(), Jazz());
    EXPECT_EQ(Tree().currentItem()->text(0), "Jazz");
}

TEST_F(LibraryTest, AFilePlaysFromTheListWhereSpaceAndWheelSteerIt) {
    SetGraphAudioSink("fakesink sync=true");
    CMediaItem song = MakeItem(u"Song", MEDIA_AUDIO_FILE, {u"Music"});
    song.m_location = CString(FrameMedia::Get().song);
    Doc().m_contents.AddItem(Music(), song, FALSE);
    Select(Row({"Music"}));
    DoubleClick(List().viewport(), {}, RowPoint(3));
    CMediaPlayer& engine = Frame().m_player;
    ASSERT_TRUE(WaitFor([&] { return engine.m_state == 2; }));
    // Sound alone leaves the list in its pane.
    ASSERT_NE(Frame().GetSplitterView()->GetListView(), nullptr);
    EXPECT_EQ(Frame().windowTitle(), "Song");

    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Space);
    EXPECT_EQ(engine.m_state, 1);
    QTest::keyClick(&List(), Qt::Key_Space);
    EXPECT_EQ(engine.m_state, 2);
    const int volume = engine.m_volume;
    const QPointF at(20, 20);
    QWheelEvent wheel(at, List().viewport()->mapToGlobal(at), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(List().viewport(), &wheel);
    EXPECT_GT(engine.m_volume, volume);
    Frame().StopPlayback(FALSE);
    SetGraphAudioSink("");
}

TEST_F(LibraryTest, RowMenusOfferTheirCommandsAndChangeTheSavedContents) {
    Select(Row({"Radio"}));
    QWidget* viewport = List().viewport();
    const QPoint below(10, viewport->height() - 5);
    EXPECT_EQ(
        Menu(viewport, RowPoint(0), ""),
        QStringList({"Import .pls Playlist...", "Edit...", "Delete", "Copy as text to Clipboard"}));
    EXPECT_EQ(
        Menu(viewport, RowPoint(1), ""),
        QStringList({"Import .m3u Playlist...", "Edit...", "Delete", "Copy as text to Clipboard"}));
    EXPECT_EQ(Menu(viewport, below, ""), QStringList({"Add New MediaItem...", "Add New Topic..."}));

    Select(Row({"Music"}));
    EXPECT_EQ(Menu(viewport, below, ""), QStringList({"Add Files...", "Add New Topic..."}));
    EXPECT_EQ(
        Menu(viewport, RowPoint(0), ""),
        QStringList({"Remove From Favorites", "Edit...", "Delete", "Copy as text to Clipboard"}));
    EXPECT_EQ(Menu(viewport, RowPoint(3), ""), QStringList({"<no menu>"}));
    EXPECT_EQ(Menu(viewport, RowPoint(1), "Add To Favorites"),
              QStringList({"Edit...", "Delete", "Add To Favorites", "Copy as text to Clipboard"}));
    Menu(viewport, RowPoint(0), "Remove From Favorites");
    EXPECT_EQ(Column(LIST_COLUMN_FAVORITE), QStringList({"no", "yes", "no", "", ""}));
    Menu(viewport, RowPoint(2), "Copy as text to Clipboard");
    EXPECT_TRUE(
        QApplication::clipboard()->text().contains("10\r\nCello\r\n11\r\n/media/Cello\r\n"));
    m_boxes.Answer(IDYES);
    Menu(viewport, RowPoint(2), "Delete");
    EXPECT_EQ(m_boxes.Texts(), std::vector<CString>({CString(u"Delete single selection?")}));

    // The favourites have one entry, and none from the keyboard.
    Select(Row({"Favorites"}));
    EXPECT_EQ(Menu(viewport, RowPoint(0), ""), QStringList({"Remove From Favorites"}));
    SelectRows({0});
    EXPECT_EQ(Menu(viewport, QPoint(-1, -1), "", QContextMenuEvent::Keyboard),
              QStringList({"<no menu>"}));

    Doc().OnSaveContents();
    const CtlRun dump =
        Orvexctl(m_data, "contents-dump '" + Doc().ContentsFilePath().ToUtf8() + "'");
    EXPECT_EQ(dump.out,
              "topic\tMusic[0]\ttype 4\n"
              "item\tAUDF\tBlue\t/media/Blue\tMusic\tfavorite 0\n"
              "item\tAUDF\talpha\t/media/alpha\tMusic\tfavorite 1\n"
              "topic\tMusic[0]\\Jazz[0]\ttype 4\n"
              "item\tAUDF\tCool\t/media/Cool\tMusic\\Jazz\tfavorite 1\n"
              "topic\tMusic[0]\\Rock[1]\ttype 4\n"
              "topic\tMusic[0]\\Rock[1]\\Punk[0]\ttype 4\n"
              "topic\tRadio[1]\ttype 1\n"
              "item\tAUDU\t!!Playlist: List\thttp://radio.example/list.pls\tRadio\tfavorite 0\n"
              "item\tAUDU\tLive\thttp://127.0.0.1:9/live.m3u8\tRadio\tfavorite 0\n"
              "topic\tFilms[2]\ttype 3\n"
              "6 topics, 5 items\n");
}

TEST_F(LibraryTest, DeleteRefusesTopicRowsAndSelectsTheRowAboveAfterwards) {
    Select(Row({"Music"}));
    QWidget* viewport = List().viewport();
    SelectRows({1, 2, 3});
    QTest::keyClick(&List(), Qt::Key_Delete);
    Menu(viewport, RowPoint(1), "Delete");
    EXPECT_EQ(
        m_boxes.Texts(),
        std::vector<CString>({CString(u"Topics can only be delete from the Contents Pane."),
                              CString(u"Cannot delete topics in list. Delete in Contents.")}));
    EXPECT_EQ(List().RowCount(), 5);

    m_boxes.Clear();
    SelectRows({1, 2});
    m_boxes.Answer(IDYES);
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(m_boxes.Texts(), std::vector<CString>({CString(u"Delete multiple selections?")}));
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Blue", "Jazz", "Rock"}));
    EXPECT_EQ(List().SelectedRows(), std::vector<int>({0}));

    // Favourites: several rows can't go; one leaves the favourites.
    Select(Row({"Favorites"}));
    m_boxes.Clear();
    SelectRows({0, 1});
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_TRUE(m_boxes.Boxes().empty());
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, RowPoint(1));
    m_boxes.Answer(IDYES);
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(m_boxes.Texts(), std::vector<CString>({CString(u"Remove from Favorites?")}));
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Blue"}));
    EXPECT_TRUE(Doc().IsFavoritesDisplayed());
}

TEST_F(LibraryTest, NameHeadingSortsBothWaysAndAddFilesSelectsTheNewRows) {
    Select(Row({"Music"}));
    QHeaderView* header = List().header();
    auto clickHeading = [&](int column) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 10, 5));
        QCoreApplication::processEvents();
    };
    clickHeading(LIST_COLUMN_NAME);
    EXPECT_EQ(Column(LIST_COLUMN_NAME).mid(0, 3), QStringList({"Cello", "Blue", "alpha"}));
    clickHeading(LIST_COLUMN_NAME);
    EXPECT_EQ(Column(LIST_COLUMN_NAME).mid(0, 3), QStringList({"alpha", "Blue", "Cello"}));
    clickHeading(LIST_COLUMN_TYPE);
    EXPECT_EQ(Column(LIST_COLUMN_NAME).mid(0, 3), QStringList({"alpha", "Blue", "Cello"}));
    Select(Row({"Favorites"}));
    clickHeading(LIST_COLUMN_NAME);
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Blue", "Cool"}));

    // Add Files: the topic's type picks the dialog, a file the topic holds
    // already is left out, and the new rows are selected.
    Select(Row({"Music"}));
    Doc().m_videoFolder = u"/srv/videos";
    FileDialogRequest asked;
    MultiFileDialogHook previous =
        SetMultiFileDialogHook([&](const FileDialogRequest& request, CStringArray& paths) {
            asked = request;
            paths.Add(CString(u"/music/one.mp3"));
            paths.Add(CString(u"/media/alpha"));
            paths.Add(CString(u"/music/two.flac"));
            return TRUE;
        });
    List().setFocus();
    Menu(List().viewport(), QPoint(10, List().viewport()->height() - 5), "Add Files...");
    SetMultiFileDialogHook(previous);
    EXPECT_EQ(asked.title, CString(u"Add Audio Files"));
    EXPECT_EQ(asked.flags, 0x1A00u);
    EXPECT_EQ(asked.initialFolder, CString(u"/srv/videos"));
    EXPECT_EQ(asked.filter, CString(u"Audio Files (*.aac*.flac*.m4a*.mp3*.ogg*.wav*.wma)|*.aac;"
                                    u"*.flac;*.m4a;*.mp3;*.oog;*.wav;*.wma|All Files (*.*)|*.*||"));
    EXPECT_EQ(Column(LIST_COLUMN_NAME),
              QStringList({"alpha", "Blue", "Cello", "one.mp3", "two.flac", "Jazz", "Rock"}));
    EXPECT_EQ(List().SelectedRows(), std::vector<int>({3, 4}));
    EXPECT_TRUE(Doc().m_bContentsChanged);
}

TEST_F(LibraryTest, ANewListAfterThePictureFindsItsPlaceAndColumnWidths) {
    Select(Row({"Music"}));
    List().header()->resizeSection(LIST_COLUMN_NAME, 333);
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, RowPoint(2));
    List().RememberListState(FALSE, FALSE, FALSE);
    COrvexSplitterView* view = Frame().GetSplitterView();
    ASSERT_TRUE(view->ReplaceView(&COrvexVideoView::staticMetaObject));
    ASSERT_TRUE(view->ReplaceView(&COrvexListView::staticMetaObject));
    QCoreApplication::processEvents();
    EXPECT_EQ(List().SelectedRows(), std::vector<int>({2}));
    EXPECT_EQ(List().CurrentRow(), 2);
    EXPECT_EQ(List().header()->sectionSize(LIST_COLUMN_NAME), 333);
}
