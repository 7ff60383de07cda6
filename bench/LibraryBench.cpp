// The library panes on a large library: 2,002 topics and 100,000 items, one
// topic of 50,000 items and one of 2,000 children. Prints, for each action,
// the median and the slowest of its runs in milliseconds, against its target.
// Runs headless: QT_QPA_PLATFORM defaults to offscreen.
#include <QApplication>
#include <QTreeWidget>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "app/OrvexDoc.h"
#include "bench/BenchTiming.h"
#include "platform/base/Drives.h"
#include "platform/qt/QtGlue.h"
#include "ui/ListModel.h"
#include "ui/ListView.h"
#include "ui/SplitterView.h"
#include "ui/TreeView.h"

namespace {

// A machine without removable or optical drives.
class NoDrives : public IDriveList {
public:
    std::vector<CDriveInfo> GetDrives() override { return {}; }
    UINT GetDriveType(const CString&) override { return DRIVE_NO_ROOT_DIR; }
    BOOL ListFolder(const CString&, std::vector<CFolderEntry>&) override { return FALSE; }
};

CMediaItem Item(const CString& name, const CStringArray& topics, int n) {
    CMediaItem item;
    item.m_type = MEDIA_AUDIO_FILE;
    item.m_name = name;
    item.m_location = CString(u"/home/user/Music/") + name + u".mp3";
    item.m_topics = topics;
    item.m_favorite = n % 97 == 0;
    return item;
}

// "Big": 50,000 items in a scrambled order of names. "Wide": 2,000 child
// topics of 25 items each.
void BuildLibrary(CMediaContents& tree) {
    CTopic big;
    big.Add(CNodeItem(CString(u"Big"), 0));
    big.m_mediaType = MEDIA_AUDIO_FILE;
    CStringArray bigTopics;
    bigTopics.Add(CString(u"Big"));
    for (int i = 0; i < 50000; ++i) {
        const int scrambled = static_cast<int>((static_cast<long long>(i) * 7919) % 50000);
        CString name;
        name.Format(u"%s track %05d", (scrambled % 3) ? u"Some" : u"another", scrambled);
        big.m_media.Add(Item(name, bigTopics, i));
    }
    tree.m_topics.Add(big);

    CTopic wide;
    wide.Add(CNodeItem(CString(u"Wide"), 1));
    wide.m_mediaType = MEDIA_AUDIO_FILE;
    for (int c = 0; c < 2000; ++c) {
        CTopic child;
        CString name;
        name.Format(u"Album %04d", c);
        child.Path() = wide.Path();
        child.Add(CNodeItem(name, c));
        child.m_mediaType = MEDIA_AUDIO_FILE;
        CStringArray topics;
        topics.Add(CString(u"Wide"));
        topics.Add(name);
        for (int i = 0; i < 25; ++i) {
            CString track;
            track.Format(u"%s song %02d", name, i);
            child.m_media.Add(Item(track, topics, c * 25 + i));
        }
        wide.m_children.Add(child);
    }
    tree.m_topics.Add(wide);
}

// Events the action left are handled before the next run's clock starts.
Figures MeasureWithEvents(int runs, const std::function<void()>& prepare,
                          const std::function<void()>& action) {
    return Measure(
        runs,
        [&] {
            QCoreApplication::processEvents();
            prepare();
            QCoreApplication::processEvents();
        },
        action);
}

void Print(const char* what, const Figures& figures, double target) {
    std::printf("%-58s median %7.1f ms  slowest %7.1f ms  target < %3.0f ms  %s\n", what,
                figures.median, figures.worst, target, figures.median < target ? "ok" : "OVER");
}

QTreeWidgetItem* TopRow(COrvexTreeView& tree, const QString& text) {
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        if (tree.topLevelItem(i)->text(0) == text)
            return tree.topLevelItem(i);
    }
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    InstallQtPlatformGlue();
    NoDrives noDrives;
    SetDriveList(&noDrives);

    COrvexDoc doc;
    BuildLibrary(doc.m_contents);
    int topics = 0;
    int items = 0;
    doc.m_contents.CountEntries(&topics, &items);
    std::printf("library: %d topics, %d items\n", topics, items);

    COrvexSplitterView view(&doc);
    view.resize(1280, 800);
    view.show();
    view.OnInitialUpdate();
    doc.RefreshDisplay(TRUE, TRUE, nullptr, TRUE, TRUE);
    QCoreApplication::processEvents();
    COrvexTreeView& tree = *view.GetTreeView();
    COrvexListView& list = *view.GetListView();
    const int runs = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 15;

    QTreeWidgetItem* favorites = TopRow(tree, QStringLiteral("Favorites"));
    QTreeWidgetItem* big = TopRow(tree, QStringLiteral("Big"));
    auto showRows = [&] { list.viewport()->repaint(); };
    Print("select the topic of 50,000 items -> rows shown",
          MeasureWithEvents(
              runs, [&] { tree.setCurrentItem(favorites); },
              [&] {
                  tree.setCurrentItem(big);
                  showRows();
              }),
          100);
    std::printf("  rows in the list: %d\n", list.RowCount());

    Print("sort the 50,000 items by name (heading click) -> rows shown",
          MeasureWithEvents(
              runs, [] {},
              [&] {
                  list.OnColumnClick(LIST_COLUMN_NAME);
                  showRows();
              }),
          100);

    QTreeWidgetItem* wide = TopRow(tree, QStringLiteral("Wide"));
    Print("open the topic of 2,000 children -> rows shown",
          MeasureWithEvents(
              runs, [&] { wide->setExpanded(false); },
              [&] {
                  wide->setExpanded(true);
                  tree.viewport()->repaint();
              }),
          50);
    std::printf("  rows under it: %d\n", wide->childCount());

    // A change of the tree: an album moved among its siblings. The tree is
    // built again, opened down to the album, and the list shows it.
    int swap = 0;
    Print("full rebuild after moving a topic among 2,000 siblings",
          MeasureWithEvents(
              runs, [] {},
              [&] {
                  CNodeArray from;
                  from.Add(CNodeItem(CString(u"Wide"), 1));
                  from.Add(CNodeItem(doc.m_contents.m_topics[1].m_children[swap].GetName(), swap));
                  CNodeArray to = from;
                  to.SetLastIndex(swap + 1);
                  to.SetName(doc.m_contents.m_topics[1].m_children[swap + 1].GetName());
                  doc.MoveTopic(from, to, TRUE);
                  swap = (swap + 1) % 1000;
                  showRows();
                  tree.viewport()->repaint();
              }),
          50);

    // A change inside the big topic while it shows: favourites and the
    // list are built again.
    tree.setCurrentItem(TopRow(tree, QStringLiteral("Big")));
    QCoreApplication::processEvents();
    int flip = 0;
    Print("rebuild after a change in the shown topic of 50,000 items",
          MeasureWithEvents(
              runs, [] {},
              [&] {
                  const CNodeArray path = doc.m_displayTopic.Path();
                  const CMediaItem item = doc.m_displayTopic.m_media[flip];
                  doc.SetItemFavorite(path, item, !item.m_favorite, FALSE);
                  ++flip;
                  showRows();
              }),
          100);

    // Every row of the shown big topic deleted at once, as Delete on a full
    // selection does; the rows come back before each run.
    const CMediaArray bigRows = doc.m_displayTopic.m_media;
    Print("delete all 50,000 rows of the shown topic -> list rebuilt",
          MeasureWithEvents(
              std::min(runs, 5),
              [&] {
                  const CNodeArray path = doc.m_displayTopic.Path();
                  doc.m_contents.AddItems(path, bigRows, TRUE);
                  doc.RefreshDisplay(FALSE, FALSE, &doc.m_contents.m_currentTopic, FALSE, TRUE);
              },
              [&] {
                  doc.RemoveMediaItems(doc.m_displayTopic.Path(), bigRows);
                  showRows();
              }),
          500);
    doc.m_contents.AddItems(doc.m_displayTopic.Path(), bigRows, TRUE);
    doc.RefreshDisplay(FALSE, FALSE, &doc.m_contents.m_currentTopic, FALSE, TRUE);

    // The first fill of a program run sizes the columns from the rows.
    Print("column widths from 50,000 rows (first fill of a run only)",
          MeasureWithEvents(
              runs, [&] { doc.m_columnWidths.clear(); }, [&] { list.ComputeColumnWidths(); }),
          100);
    SetDriveList(nullptr);
    return 0;
}
