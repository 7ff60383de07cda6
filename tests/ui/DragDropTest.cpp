// Drags onto the tree go through the pane's own drag handlers with the data
// a real drag carries; "Move Up Down" through keys and the mouse.
#include <QDragEnterEvent>
#include <QDropEvent>
#include <memory>

#include "tests/ui/LibraryFixture.h"
#include "ui/DragData.h"

namespace {

enum Zone { UPPER, MIDDLE, LOWER };

QPoint ZonePoint(COrvexTreeView& tree, QTreeWidgetItem* row, Zone zone) {
    const QRect rect = tree.visualItemRect(row);
    if (zone == UPPER)
        return QPoint(rect.center().x(), rect.top() + 1);
    if (zone == LOWER)
        return QPoint(rect.center().x(), rect.bottom() - 1);
    return rect.center();
}

// Enters and moves over the pane; true when a drop there is welcome.
bool DragOver(COrvexTreeView& tree, QMimeData* data, QPoint point) {
    QDragEnterEvent enter(point, Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &enter);
    QDragMoveEvent move(point, Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &move);
    return move.isAccepted();
}

void Drop(COrvexTreeView& tree, QMimeData* data, QPoint point) {
    QDropEvent drop(QPointF(point), Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &drop);
    QCoreApplication::processEvents();
}

} // namespace

class DragTest : public LibraryTest {
protected:
    // Drags a topic row onto a zone of another; gives whether the pane
    // welcomed it there, and drops it.
    bool DragTopic(QTreeWidgetItem* from, QTreeWidgetItem* onto, Zone zone) {
        std::unique_ptr<QMimeData> data(Tree().BeginTopicDrag(from, QPoint()));
        if (!data)
            return false;
        const QPoint point = ZonePoint(Tree(), onto, zone);
        const bool welcome = DragOver(Tree(), data.get(), point);
        Drop(Tree(), data.get(), point);
        return welcome;
    }
    bool DragRows(int row, QTreeWidgetItem* onto) {
        std::unique_ptr<QMimeData> data(List().BeginRowDrag(row));
        if (!data)
            return false;
        const QPoint point = ZonePoint(Tree(), onto, MIDDLE);
        const bool welcome = DragOver(Tree(), data.get(), point);
        if (welcome)
            Drop(Tree(), data.get(), point);
        return welcome;
    }
    CString Children(const CNodeArray& path) { return ChildNames(Doc().m_contents, &path); }
};

TEST_F(DragTest, ATopicLandsInFrontBehindOrIntoARowByWhereItIsDropped) {
    // The middle of a row: into it, as its last child.
    EXPECT_TRUE(DragTopic(Row({"Films"}), Row({"Radio"}), MIDDLE));
    EXPECT_EQ(ChildNames(Doc().m_contents), CString(u"Music,Radio"));
    EXPECT_EQ(Children(MakePath({{u"Radio", 1}})), CString(u"Films"));
    // The lower quarter: behind it, out of its parent with its items.
    EXPECT_TRUE(DragTopic(Row({"Music", "Jazz"}), Row({"Radio"}), LOWER));
    EXPECT_EQ(ChildNames(Doc().m_contents), CString(u"Music,Radio,Jazz"));
    CTopic jazz;
    ASSERT_TRUE(Doc().m_contents.GetTopicCopy(MakePath({{u"Jazz", 2}}), jazz));
    EXPECT_EQ(jazz.m_media[0].m_name, CString(u"Cool"));
    // The upper quarter of its own parent: in front of it, a level up.
    EXPECT_TRUE(DragTopic(Row({"Music", "Rock", "Punk"}), Row({"Music", "Rock"}), UPPER));
    EXPECT_EQ(Children(Music()), CString(u"Punk,Rock"));
    EXPECT_TRUE(Doc().m_bContentsChanged);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(DragTest, DropsThatWouldLoseOrMisplaceATopicAreRefused) {
    const CString roots = ChildNames(Doc().m_contents);
    EXPECT_TRUE(DragTopic(Row({"Music"}), Row({"Music"}), MIDDLE));
    EXPECT_TRUE(DragTopic(Row({"Music", "Jazz"}), Row({"Music"}), MIDDLE));
    EXPECT_TRUE(DragTopic(Row({"Music"}), Row({"Music", "Rock"}), MIDDLE));
    EXPECT_TRUE(DragTopic(Row({"Music"}), Row({"Favorites"}), MIDDLE));
    EXPECT_EQ(m_boxes.Texts(),
              std::vector<CString>({CString(u"A topic cannot be dropped onto itself"),
                                    CString(u"A topic cannot be dropped onto its parent"),
                                    CString(u"A topic cannot be dropped onto one of its children"),
                                    CString(u"Topics cannot be added to the Favorites topic.")}));
    // In front of a row of its own subtree: nothing, and nothing said.
    m_boxes.Clear();
    DragTopic(Row({"Music"}), Row({"Music", "Rock", "Punk"}), UPPER);
    EXPECT_TRUE(m_boxes.Boxes().empty());
    EXPECT_EQ(ChildNames(Doc().m_contents), roots);
    EXPECT_EQ(Children(Music()), CString(u"Jazz,Rock"));

    // Behind the row just in front leaves the topic in place: no mark.
    std::unique_ptr<QMimeData> data(Tree().BeginTopicDrag(Row({"Radio"}), QPoint()));
    DragOver(Tree(), data.get(), ZonePoint(Tree(), Row({"Music"}), LOWER));
    EXPECT_EQ(Tree().DropMode(), RELOCATE_AFTER);
    EXPECT_EQ(Tree().InsertMark(), nullptr);
    BOOL after = FALSE;
    DragOver(Tree(), data.get(), ZonePoint(Tree(), Row({"Music"}), UPPER));
    EXPECT_EQ(Tree().InsertMark(&after), Row({"Music"}));
    EXPECT_FALSE(after);
    // Over no row a drop isn't welcome.
    EXPECT_FALSE(DragOver(Tree(), data.get(), QPoint(5, Tree().viewport()->height() - 2)));
    Drop(Tree(), data.get(), QPoint(5, Tree().viewport()->height() - 2));
    EXPECT_EQ(ChildNames(Doc().m_contents), roots);

    // Rows that don't drag at all.
    EXPECT_EQ(Tree().BeginTopicDrag(Row({"STICK (sdb1)"}), QPoint()), nullptr);
    EXPECT_EQ(Tree().BeginTopicDrag(Row({"Favorites"}), QPoint()), nullptr);
    EXPECT_EQ(m_boxes.Texts().back(), CString(u"Favorites may not be dragged."));
}

TEST_F(DragTest, ListRowsDropOntoTopicsAndOneOntoFavorites) {
    Select(Row({"Music"}));
    // One row onto another topic: it moves, and the list shows it there.
    EXPECT_TRUE(DragRows(1, Row({"Films"})));
    EXPECT_EQ(Doc().m_displayTopic.GetName(), CString(u"Films"));
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"alpha"}));
    EXPECT_EQ(Doc().m_displayTopic.m_media[0].m_topics, Names({u"Films"}));

    // One row onto Favorites: marked, and left where it was.
    Select(Row({"Music"}));
    EXPECT_TRUE(DragRows(1, Row({"Favorites"})));
    EXPECT_EQ(Column(LIST_COLUMN_NAME), QStringList({"Blue", "Cello", "Jazz", "Rock"}));
    EXPECT_EQ(Column(LIST_COLUMN_FAVORITE).mid(0, 2), QStringList({"yes", "yes"}));

    // Several rows: not onto Favorites, nor onto their own topic.
    SelectRows({0, 1});
    EXPECT_FALSE(DragRows(0, Row({"Favorites"})));
    EXPECT_TRUE(DragRows(0, Row({"Music"})));
    EXPECT_EQ(List().RowCount(), 4);
    EXPECT_TRUE(DragRows(0, Row({"Radio"})));
    EXPECT_EQ(Column(LIST_COLUMN_NAME).mid(0, 2), QStringList({"!!Playlist: List", "Live"}));
    EXPECT_EQ(List().RowCount(), 4);

    // A topic row, a favourite row and a folder row don't drop anywhere.
    Select(Row({"Music"}));
    EXPECT_FALSE(DragRows(0, Row({"Films"})));
    Select(Row({"Favorites"}));
    EXPECT_FALSE(DragRows(0, Row({"Films"})));
    Select(Row({"STICK (sdb1)"}));
    EXPECT_EQ(List().BeginRowDrag(0), nullptr);
}

TEST_F(DragTest, MoveUpDownMovesTheMarkByKeysAndMouse) {
    QTreeWidgetItem* jazz = Row({"Music", "Jazz"});
    Menu(Tree().viewport(), Tree().visualItemRect(jazz).center(), "Move Up Down");
    ASSERT_TRUE(Tree().InMoveMode());
    // The first mark goes behind the next sibling; Up finds no other place.
    EXPECT_EQ(Tree().MoveTarget(), Row({"Music", "Rock"}));
    QTest::keyClick(&Tree(), Qt::Key_Up);
    EXPECT_EQ(Tree().MoveTarget(), Row({"Music", "Rock"}));
    QTest::keyClick(&Tree(), Qt::Key_Return);
    EXPECT_FALSE(Tree().InMoveMode());
    EXPECT_EQ(Children(Music()), CString(u"Rock,Jazz"));

    // A root behind "Favorites" goes first; drive rows are no place.
    Tree().StartMoveMode(Row({"Films"}));
    EXPECT_EQ(Tree().MoveTarget(), Row({"Music"}));
    QTest::keyClick(&Tree(), Qt::Key_Down);
    EXPECT_EQ(Tree().MoveTarget(), Row({"Music"}));
    QTest::keyClick(&Tree(), Qt::Key_Up);
    EXPECT_EQ(Tree().MoveTarget(), Row({"Favorites"}));
    QTest::keyClick(&Tree(), Qt::Key_Return);
    EXPECT_EQ(ChildNames(Doc().m_contents), CString(u"Films,Music,Radio"));

    // The only child has no place to go: no mark, and Esc ends the mode.
    Tree().StartMoveMode(Row({"Music", "Rock", "Punk"}));
    EXPECT_EQ(Tree().MoveTarget(), nullptr);
    QTest::keyClick(&Tree(), Qt::Key_Escape);
    EXPECT_FALSE(Tree().InMoveMode());

    // The mouse: the upper half of the first sibling puts the mark in front
    // of it, and a click on that row confirms.
    QTreeWidgetItem* moved = Row({"Music", "Jazz"});
    Tree().StartMoveMode(moved);
    QTreeWidgetItem* rock = Row({"Music", "Rock"});
    const QPoint upper = ZonePoint(Tree(), rock, UPPER);
    QTest::mouseMove(Tree().viewport(), upper);
    QTest::mouseMove(Tree().viewport(), upper + QPoint(1, 0));
    BOOL after = TRUE;
    EXPECT_EQ(Tree().InsertMark(&after), rock);
    EXPECT_FALSE(after);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, upper);
    EXPECT_EQ(Children(MakePath({{u"Music", 1}})), CString(u"Jazz,Rock"));
    // A click away from the marked row cancels.
    Tree().StartMoveMode(Row({"Music", "Jazz"}));
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, QPoint(5, 2));
    EXPECT_FALSE(Tree().InMoveMode());
    EXPECT_EQ(Children(MakePath({{u"Music", 1}})), CString(u"Jazz,Rock"));
}

TEST_F(DragTest, HoveringOverAClosedRowOpensIt) {
    std::unique_ptr<QMimeData> data(Tree().BeginTopicDrag(Row({"Films"}), QPoint()));
    QTreeWidgetItem* music = Row({"Music"});
    ASSERT_FALSE(music->isExpanded());
    EXPECT_TRUE(DragOver(Tree(), data.get(), ZonePoint(Tree(), music, MIDDLE)));
    EXPECT_EQ(Tree().DropHighlight(), music);
    EXPECT_TRUE(WaitFor([&] { return music->isExpanded(); }, 3000));
    EXPECT_EQ(ChildTexts(music), QStringList({"Jazz", "Rock"}));
    Drop(Tree(), data.get(), QPoint(5, Tree().viewport()->height() - 2));
}
