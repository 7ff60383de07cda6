#include <QKeyEvent>

#include "tests/ui/LibraryFixture.h"

namespace {

QStringList Sorted(QStringList list) {
    list.sort();
    return list;
}

} // namespace

TEST_F(LibraryTest, TreeShowsFavoritesTopicsAndDrivesAndFillsRowsWhenOpened) {
    EXPECT_EQ(TopTexts(),
              QStringList({"Favorites", "Music", "Radio", "Films", "STICK (sdb1)", "sr0"}));
    EXPECT_EQ(Tree().Drives(), (std::vector<CString>{Stick(), CString(u"/dev/sr0")}));
    QTreeWidgetItem* music = Row({"Music"});
    // A closed row with children holds one placeholder; rows without have none.
    EXPECT_EQ(ChildTexts(music), QStringList({"temp"}));
    EXPECT_EQ(Row({"Radio"})->childCount(), 0);
    EXPECT_EQ(Row({"sr0"})->childCount(), 0); // no disc: nothing to list

    music->setExpanded(true);
    EXPECT_EQ(ChildTexts(music), QStringList({"Jazz", "Rock"}));
    EXPECT_EQ(ChildTexts(Row({"Music", "Rock"})), QStringList({"temp"}));
    // Closing throws the rows away; opening again reads the tree as it is now.
    CTopic blues;
    blues.Add(CNodeItem(CString(u"Blues"), -1));
    ASSERT_TRUE(Doc().m_contents.AddChildTopic(Music(), blues, FALSE));
    music->setExpanded(false);
    EXPECT_EQ(ChildTexts(music), QStringList({"temp"}));
    music->setExpanded(true);
    EXPECT_EQ(ChildTexts(music), QStringList({"Jazz", "Rock", "Blues"}));
    CNodeArray path;
    ASSERT_TRUE(Tree().BuildPath(Row({"Music", "Blues"}), path));
    EXPECT_EQ(path, MakePath({{u"Music", 0}, {u"Blues", 2}}));

    // A drive row lists the folders of its file system, each with a
    // placeholder when it has folders of its own.
    QTreeWidgetItem* stick = Row({"STICK (sdb1)"});
    EXPECT_EQ(ChildTexts(stick), QStringList({"temp"}));
    stick->setExpanded(true);
    EXPECT_EQ(Sorted(ChildTexts(stick)), QStringList({"DVD", "Empty", "Movies"}));
    EXPECT_EQ(ChildTexts(Row({"STICK (sdb1)", "Movies"})), QStringList({"temp"}));
    EXPECT_EQ(Row({"STICK (sdb1)", "DVD"})->childCount(), 0);
    ASSERT_TRUE(Tree().BuildPath(Row({"STICK (sdb1)", "Movies", "Extras"}), path));
    EXPECT_TRUE(Tree().IsDrivePath(path));
    EXPECT_EQ(path[0].m_name, Stick());
}

TEST_F(LibraryTest, SelectingRowsShowsTopicFavoritesAndFoldersInOrder) {
    Select(Row({"Music"}));
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Blue", "alpha", "Cello", "Jazz", "Rock"}));
    EXPECT_EQ(Column(LIST_COLUMN_TYPE),
              QStringList({"Audio File", "Audio File", "Audio File", "", ""}));
    EXPECT_EQ(Column(LIST_COLUMN_TOPIC), QStringList(5, "Music"));
    EXPECT_EQ(Column(LIST_COLUMN_FAVORITE), QStringList({"yes", "no", "no", "", ""}));
    EXPECT_EQ(Column(LIST_COLUMN_LOCATION).first(), "/media/Blue");

    Select(Row({"Favorites"}));
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Blue", "Cool"}));
    EXPECT_EQ(Column(LIST_COLUMN_TOPIC), QStringList({"Music", "Jazz"}));

    // A folder of the stick is a made-up topic: media files, then folders.
    const BOOL changed = Doc().m_bContentsChanged;
    Select(Row({"STICK (sdb1)"}));
    EXPECT_TRUE(Doc().m_bFolderView);
    EXPECT_EQ(Column(LIST_COLUMN_NAME).first(), "clip.mp4");
    EXPECT_EQ(Sorted(Column(LIST_COLUMN_NAME).mid(1)), QStringList({"DVD", "Empty", "Movies"}));
    EXPECT_EQ(Column(LIST_COLUMN_LOCATION).first(), QString::fromStdString(m_stick + "/clip.mp4"));
    Select(Row({"STICK (sdb1)", "DVD"}));
    QStringList rows;
    for (int row = 0; row < List().RowCount(); ++row)
        rows << Column(LIST_COLUMN_NAME)[row] + "=" + Column(LIST_COLUMN_TOPIC)[row];
    EXPECT_EQ(Sorted(rows),
              QStringList({"VIDEO_TS.IFO=Main Movie", "VTS_01_1.VOB=movie part", "menu.avi=DVD"}));
    EXPECT_EQ(Doc().m_bContentsChanged, changed);

    // After a rebuild the selection follows the shown topic.
    Doc().ShowTopic(Jazz());
    QCoreApplication::processEvents();
    ASSERT_NE(Tree().currentItem(), nullptr);
    EXPECT_EQ(Tree().currentItem()->text(0), "Jazz");
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Cool"}));
}

TEST_F(LibraryTest, TreeMenuAndKeysAndTheDeleteThatKeepsTheParentOpen) {
    auto center = [&](QTreeWidgetItem* row) { return Tree().visualItemRect(row).center(); };
    QWidget* viewport = Tree().viewport();
    EXPECT_EQ(Menu(viewport, center(Row({"Favorites"})), ""), QStringList({"<no menu>"}));
    EXPECT_EQ(Menu(viewport, center(Row({"STICK (sdb1)"})), ""), QStringList({"<no menu>"}));
    EXPECT_EQ(Menu(viewport, center(Row({"Music"})), ""),
              QStringList({"Edit...", "Delete...", "Move Up Down", "Export Topic...",
                           "Add New Root Topic...", "Cancel (Esc)"}));
    EXPECT_EQ(
        Menu(viewport, center(Row({"Music", "Jazz"})), ""),
        QStringList({"Edit...", "Delete...", "Move Up Down", "Export Topic...", "Cancel (Esc)"}));
    EXPECT_EQ(Menu(viewport, QPoint(5, viewport->height() - 3), ""),
              QStringList({"Add New Root Topic...", "Cancel (Esc)"}));
    EXPECT_TRUE(Tree().selectedItems().isEmpty());

    // While the favourites show, Delete does nothing.
    Select(Row({"Favorites"}));
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_TRUE(m_boxes.Boxes().empty());

    Select(Row({"Music", "Jazz"}));
    m_boxes.Answer(IDYES);
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    ASSERT_EQ(m_boxes.Texts(), std::vector<CString>({CString(u"Delete selected Topic?")}));
    EXPECT_EQ(m_boxes.Boxes()[0].type, 0x44u);
    QCoreApplication::processEvents();
    const CNodeArray musicPath = Music();
    EXPECT_EQ(ChildNames(Doc().m_contents, &musicPath), CString(u"Rock"));
    QTreeWidgetItem* music = Row({"Music"});
    EXPECT_TRUE(music->isExpanded());
    EXPECT_EQ(Tree().currentItem(), music);

    // Deleting a root leaves its neighbour in front selected.
    Select(Row({"Radio"}));
    m_boxes.Answer(IDYES);
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    QCoreApplication::processEvents();
    EXPECT_EQ(ChildNames(Doc().m_contents), CString(u"Music,Films"));
    EXPECT_EQ(Tree().currentItem()->text(0), "Music");

    // Tab goes on to the list.
    Tree().setFocus();
    QTest::keyClick(&Tree(), Qt::Key_Tab);
    EXPECT_TRUE(List().hasFocus());
}

TEST_F(LibraryTest, DiscHintsAddRefreshAndDropDriveRows) {
    // A disc in the empty drive: a fresh placeholder, but a drive with
    // nothing to list doesn't open and keeps it.
    Doc().OnDiscChange(CString(u"/dev/sr0"), TRUE);
    QTreeWidgetItem* optical = Row({"sr0"});
    EXPECT_EQ(ChildTexts(optical), QStringList({"temp"}));
    optical->setExpanded(true);
    EXPECT_FALSE(optical->isExpanded());
    EXPECT_EQ(ChildTexts(optical), QStringList({"temp"}));
    // Taken out again, the drive stays and loses its rows.
    Doc().OnDiscChange(CString(u"/dev/sr0"), FALSE);
    EXPECT_EQ(Row({"sr0"})->childCount(), 0);

    // The stick shown in the list goes away: row, drive and rows go.
    Select(Row({"STICK (sdb1)"}));
    ASSERT_GT(List().RowCount(), 0);
    std::filesystem::rename(m_stick, m_stick + ".away");
    Mounts("/dev/sda1 / ext4 rw 0 0\n");
    Doc().OnDiscChange(Stick(), FALSE);
    EXPECT_EQ(TopTexts(), QStringList({"Favorites", "Music", "Radio", "Films", "sr0"}));
    EXPECT_EQ(Tree().Drives(), std::vector<CString>({CString(u"/dev/sr0")}));
    EXPECT_EQ(List().RowCount(), 0);

    // Put in again, it comes back at the end.
    std::filesystem::rename(m_stick + ".away", m_stick);
    Mounts("/dev/sdb1 " + m_stick + " vfat rw 0 0\n");
    Doc().OnDiscChange(Stick(), TRUE);
    EXPECT_EQ(TopTexts().back(), "STICK (sdb1)");
    EXPECT_EQ(Tree().Drives().back(), Stick());
}
