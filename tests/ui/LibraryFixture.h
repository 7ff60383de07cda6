// The whole program over a small library, on a made-up machine
// (FakeMachine.h).
#pragma once
#include <QApplication>
#include <QContextMenuEvent>
#include <QMimeData>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

#include "tests/contents/TreeBuilder.h"
#include "tests/support/PrintCString.h"
#include "tests/ui/DialogTestSupport.h"
#include "tests/ui/FakeMachine.h"
#include "tests/ui/FrameFixture.h"
#include "ui/ListModel.h"
#include "ui/ListView.h"
#include "ui/SplitterView.h"
#include "ui/TreeView.h"

class LibraryTest : protected FakeMachine, public FrameTest {
protected:
    LibraryTest() {
        CMediaContents& tree = Doc().m_contents;
        tree.ResetContents();
        Ensure(tree, {u"Music"});
        Ensure(tree, {u"Music", u"Jazz"});
        Ensure(tree, {u"Music", u"Rock", u"Punk"});
        MediaType streams = MEDIA_AUDIO_URL;
        CNodeArray radio;
        tree.EnsureTopicPath(Names({u"Radio"}), &streams, radio);
        Ensure(tree, {u"Films"}, MEDIA_VIDEO_FILE);
        tree.AddItem(Music(), MakeItem(u"Blue", MEDIA_AUDIO_FILE, {u"Music"}, TRUE), FALSE);
        tree.AddItem(Music(), MakeItem(u"alpha", MEDIA_AUDIO_FILE, {u"Music"}), FALSE);
        tree.AddItem(Music(), MakeItem(u"Cello", MEDIA_AUDIO_FILE, {u"Music"}), FALSE);
        tree.AddItem(Jazz(), MakeItem(u"Cool", MEDIA_AUDIO_FILE, {u"Music", u"Jazz"}, TRUE), FALSE);
        CMediaItem pls = MakeItem(u"!!Playlist: List", MEDIA_AUDIO_URL, {u"Radio"});
        pls.m_location = u"http://radio.example/list.pls";
        CMediaItem hls = MakeItem(u"Live", MEDIA_AUDIO_URL, {u"Radio"});
        hls.m_location = u"http://127.0.0.1:9/live.m3u8";
        tree.AddItem(radio, pls, FALSE);
        tree.AddItem(radio, hls, FALSE);
        Doc().RefreshDisplay(TRUE, TRUE, nullptr, TRUE, TRUE);
        QCoreApplication::processEvents();
    }

    static CNodeArray Music() { return MakePath({{u"Music", 0}}); }
    static CNodeArray Jazz() { return MakePath({{u"Music", 0}, {u"Jazz", 0}}); }
    static CNodeArray Rock() { return MakePath({{u"Music", 0}, {u"Rock", 1}}); }
    static CNodeArray Radio() { return MakePath({{u"Radio", 1}}); }

    COrvexTreeView& Tree() { return *Frame().GetSplitterView()->GetTreeView(); }
    COrvexListView& List() { return *Frame().GetSplitterView()->GetListView(); }

    // The top-level row of that name, or the row of that path of names.
    QTreeWidgetItem* Row(std::initializer_list<const char*> names) {
        QTreeWidgetItem* row = nullptr;
        for (const char* name : names) {
            // Rows on the way down are opened, which fills them.
            if (row && !row->isExpanded())
                row->setExpanded(true);
            QTreeWidgetItem* next = nullptr;
            const int count = row ? row->childCount() : Tree().topLevelItemCount();
            for (int i = 0; i < count && !next; ++i) {
                QTreeWidgetItem* candidate = row ? row->child(i) : Tree().topLevelItem(i);
                if (candidate->text(0) == QString::fromUtf8(name))
                    next = candidate;
            }
            if (!next)
                return nullptr;
            row = next;
        }
        return row;
    }
    QStringList ChildTexts(QTreeWidgetItem* row) {
        QStringList texts;
        for (int i = 0; i < row->childCount(); ++i)
            texts << row->child(i)->text(0);
        return texts;
    }
    QStringList TopTexts() {
        QStringList texts;
        for (int i = 0; i < Tree().topLevelItemCount(); ++i)
            texts << Tree().topLevelItem(i)->text(0);
        return texts;
    }
    // One column of the list, top to bottom.
    QStringList Column(int column) {
        QStringList texts;
        COrvexListModel* model = List().Model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, column).data().toString();
        return texts;
    }
    void Select(QTreeWidgetItem* row) {
        Tree().setCurrentItem(row);
        QCoreApplication::processEvents();
    }
    // A double click as the system delivers one: a click, then the second press.
    static void DoubleClick(QWidget* widget, Qt::KeyboardModifiers modifiers, QPoint point) {
        QTest::mouseClick(widget, Qt::LeftButton, modifiers, point);
        QTest::mouseDClick(widget, Qt::LeftButton, modifiers, point);
    }
    QPoint RowPoint(int row) { return List().visualRect(List().Model()->index(row, 0)).center(); }
    void SelectRows(std::initializer_list<int> rows) {
        List().clearSelection();
        for (int row : rows)
            List().selectionModel()->select(List().Model()->index(row, 0),
                                            QItemSelectionModel::Select |
                                                QItemSelectionModel::Rows);
    }

    // Opens a context menu on a widget's viewport and answers it (see
    // ChooseFromMenu), then makes the window active again.
    QStringList Menu(QWidget* viewport, QPoint point, const QString& choice,
                     QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
        const QStringList entries = ChooseFromMenu(viewport, point, choice, reason);
        // The window is active again once the menu has gone.
        Frame().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Frame()));
        return entries;
    }
};
