// "Search For Radio Stations" from the menu, on the real dialog, over the 500
// real stations of the fixture: its lists, every criterion against the
// database's own search, the headings' sorts, the rules of its boxes and tag
// list, the text as people read it, its help, and the import of the results
// into a topic, one of which then plays from the local server.
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QTableView>

#include "platform/base/HelpViewer.h"
#include "radio/StationText.h"
#include "tests/player/PlayerTestSupport.h"
#include "tests/support/PrintCString.h"
#include "tests/ui/RadioWindow.h"
#include "tests/ui/UrlRecorder.h"
#include "ui/Commands.h"
#include "ui/ListModel.h"
#include "ui/ListView.h"
#include "ui/SplitterView.h"
#include "ui/dialogs/RbSearchDlg.h"
#include "ui/dialogs/StationTableModel.h"

namespace {

constexpr int COUNTRY = 1059, STATE = 1061, LANGUAGE = 1080, NAME = 1057, TAGS = 1074;
constexpr int TAG_CHOICE = 1060, VOTES = 1058, CLICKS = 1062, MAX = 1072, CLEAR_CRITERIA = 1069;
constexpr int RESULT_LINE = 1071, TABLE = 1077, SEARCH = 1066, CLEAR_RESULTS = 1070;
constexpr int TOPIC = 1078, IMPORT = 1067, HELP = 9;

CString Fixture() {
    return CString(std::string(getenv("ORVEX_SOURCE_DIR")) +
                   "/fixtures/radio-stations-sample-500.xml");
}

// The stations and their lists, as an update would leave them (the limits
// aside, which 500 stations don't meet).
void LoadStations(CRadioBrowseDb& db) {
    CString error;
    ASSERT_EQ(db.ParseStationFile(Fixture(), &error), 500) << error.ToUtf8();
    ASSERT_TRUE(db.BuildCountryCodesArray() && db.SetCountryCodesUsed());
    ASSERT_TRUE(db.BuildTagArray(5) && db.BuildStateArray() && db.BuildLanguageCodesArray());
    db.ResolveLanguageCodes();
    db.SetLanguageCodesUsed();
}

// Text the keyboard of the test can't type, put in as a paste would.
void Paste(QWidget* dlg, int id, const QString& text) {
    auto* edit = Find<QLineEdit>(dlg, id);
    edit->selectAll();
    edit->insert(text);
}

// Focus moves as a user's would once the dialog is the active window again.
void Activate(QWidget* dlg) {
    dlg->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(dlg));
}

// The names the result list shows, top to bottom.
QStringList Rows(QWidget* dlg) {
    auto* model = Find<QTableView>(dlg, TABLE)->model();
    QStringList rows;
    for (int r = 0; r < model->rowCount(); ++r)
        rows << model->index(r, 0).data().toString();
    return rows;
}

// The names of the database's results, as the list should show them.
QStringList Names(const CStationResults& results, int limit = 0) {
    QStringList names;
    for (const CStation& station : results) {
        if (limit && names.size() == limit)
            break;
        names << ToQString(StationText(station.m_name));
    }
    return names;
}

QString Line(QWidget* dlg) {
    return Find<QLabel>(dlg, RESULT_LINE)->text();
}

void Choose(QWidget* dlg, int id, const QString& text) {
    auto* box = Find<QComboBox>(dlg, id);
    const int index = box->findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    box->setCurrentIndex(index);
    emit box->activated(index);
}

void ClickHeading(QWidget* dlg, int column) {
    QHeaderView* header = Find<QTableView>(dlg, TABLE)->horizontalHeader();
    const QPoint at(header->sectionViewportPosition(column) + 10, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
}

// Chooses `entry` from the tag list's menu, opened by a right click on
// `line` (-1: below the lines), and answers the tag dialog it opens with
// `text`; gives the menu's entries.
QStringList TagMenu(QWidget* dlg, int line, const QString& entry, const QString& text = {}) {
    if (!text.isNull()) {
        auto* poll = new QTimer;
        QObject::connect(poll, &QTimer::timeout, [poll, text] {
            QWidget* tag = QApplication::activeModalWidget();
            if (!tag || tag->objectName() != QStringLiteral("154"))
                return;
            poll->stop();
            poll->deleteLater();
            Type(tag, 1075, text);
            Click(tag, IDOK);
        });
        poll->start(5);
    }
    auto* list = Find<QListWidget>(dlg, TAGS);
    const QPoint at = line >= 0 ? list->visualItemRect(list->item(line)).center()
                                : QPoint(10, list->viewport()->height() - 4);
    return ChooseFromMenu(list->viewport(), at, entry);
}

QStringList TagLines(QWidget* dlg) {
    auto* list = Find<QListWidget>(dlg, TAGS);
    QStringList lines;
    for (int i = 0; i < list->count(); ++i)
        lines << list->item(i)->text();
    return lines;
}

void SelectTag(QWidget* dlg, int line) {
    Find<QListWidget>(dlg, TAGS)->setCurrentRow(line);
}

int SelectedTagLine(QWidget* dlg) {
    auto* list = Find<QListWidget>(dlg, TAGS);
    return list->selectedItems().isEmpty() ? -1 : list->row(list->selectedItems().first());
}

class RadioSearchDlgTest : public ::testing::Test {
protected:
    RadioSearchDlgTest() {
        LoadStations(w.doc->m_radioDb);
        LoadStations(m_reference);
    }

    // Opens the dialog from the menu and lets `act` work in it; Done closes it.
    void Run(const std::function<void(CRbSearchDlg*)>& act) {
        ModalScript script;
        script.Then("152", [&](QWidget* dlg) {
            Activate(dlg);
            act(static_cast<CRbSearchDlg*>(dlg));
            Click(dlg, IDCANCEL);
            return true;
        });
        script.Run([&] { w.frame->CommandAction(ID_RADIO_SEARCH)->trigger(); });
    }

    RadioWindow w;
    CRadioBrowseDb m_reference; // the same stations, searched directly
};

} // namespace

TEST_F(RadioSearchDlgTest, OpensWithItsListsFromTheLookupTables) {
    const CRadioBrowseDb& db = w.doc->m_radioDb;
    Run([&](CRbSearchDlg* dlg) {
        EXPECT_EQ(dlg->windowTitle(), QStringLiteral("Search Radio Stations"));
        QStringList countries{QStringLiteral("No Country")};
        for (const CCountryCode& c : db.m_countries)
            countries << ToQString(c.m_name);
        EXPECT_EQ(Entries(Find<QComboBox>(dlg, COUNTRY)), countries);
        EXPECT_EQ(Entries(Find<QComboBox>(dlg, STATE)), QStringList{"No State"});
        QStringList languages{QStringLiteral("No Language")};
        for (const CLanguageCode& l : db.m_languages) {
            if (l.m_used)
                languages << ToQString(l.m_name);
        }
        EXPECT_EQ(Entries(Find<QComboBox>(dlg, LANGUAGE)), languages);
        EXPECT_GT(languages.size(), 5);
        QStringList tags;
        for (const CTag& t : db.m_tags)
            tags << ToQString(StationText(t.m_name));
        EXPECT_EQ(Entries(Find<QComboBox>(dlg, TAG_CHOICE)), tags);
        // Tags and states read as they are written, never as their bytes.
        EXPECT_TRUE(tags.contains(QStringLiteral("méxico")));
        EXPECT_EQ(Find<QComboBox>(dlg, TAG_CHOICE)->currentIndex(), -1);
        EXPECT_EQ(Line(dlg), QStringLiteral("Search Results"));
        EXPECT_EQ(Text(dlg, TOPIC), QStringLiteral("Imported Media"));
        for (int id : {VOTES, CLICKS, MAX})
            EXPECT_EQ(Text(dlg, id), QStringLiteral("0"));
        // Name is twice as wide as Votes, as URL is.
        auto* table = Find<QTableView>(dlg, TABLE);
        EXPECT_EQ(table->columnWidth(0), 2 * table->columnWidth(1));
        EXPECT_EQ(table->columnWidth(3), 2 * table->columnWidth(2));

        // A country brings its states, each one as it reads.
        Choose(dlg, COUNTRY, QStringLiteral("Mexico"));
        const QStringList states = Entries(Find<QComboBox>(dlg, STATE));
        EXPECT_EQ(states.first(), QStringLiteral("No State"));
        EXPECT_TRUE(states.contains(QStringLiteral("Ciudad de México")));
        for (const QString& state : states)
            EXPECT_FALSE(state.contains(QChar(0xC3))) << state.toStdString();
        Choose(dlg, COUNTRY, QStringLiteral("No Country"));
        EXPECT_EQ(Entries(Find<QComboBox>(dlg, STATE)), QStringList{"No State"});
    });
}

TEST_F(RadioSearchDlgTest, CriteriaAndHeadingsGiveTheDatabasesRowsInItsOrder) {
    Run([&](CRbSearchDlg* dlg) {
        // Nothing set: a box, and the list stays as it was.
        Click(dlg, SEARCH);
        EXPECT_EQ(w.Boxes().Texts(),
                  std::vector<CString>{u"Please set one or more search criteria."});
        EXPECT_EQ(Line(dlg), QStringLiteral("Search Results"));

        // Country, state, a name in another case, a tag: all must hold.
        Choose(dlg, COUNTRY, QStringLiteral("Mexico"));
        Choose(dlg, STATE, QStringLiteral("Ciudad de México"));
        Type(dlg, NAME, QStringLiteral("RADIO"));
        Choose(dlg, TAG_CHOICE, QStringLiteral("méxico"));
        EXPECT_EQ(TagLines(dlg), QStringList{"méxico"});
        Click(dlg, SEARCH);
        m_reference.m_bFindCountry = m_reference.m_bFindState = TRUE;
        m_reference.m_bFindName = m_reference.m_bFindTags = TRUE;
        m_reference.m_findCountry = u"MX";
        m_reference.m_findState = u"Ciudad de México";
        m_reference.m_findName = u"radio";
        m_reference.m_findTags.Add(CString(u"MÉXICO"));
        const int found = m_reference.SearchStations();
        ASSERT_GT(found, 2);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results));
        EXPECT_EQ(Line(dlg), QStringLiteral("Found %1 Stations").arg(found));
        for (const QString& row : Rows(dlg)) {
            EXPECT_TRUE(row.contains(QStringLiteral("radio"), Qt::CaseInsensitive));
            EXPECT_FALSE(row.contains(QChar(0xC3))) << row.toStdString();
        }

        // Headings: the first click ascends, every later one turns; URL sorts nothing.
        ClickHeading(dlg, CStationTableModel::VOTES);
        m_reference.SortResults(TRUE, FALSE, TRUE, FALSE);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results));
        ClickHeading(dlg, CStationTableModel::NAME);
        m_reference.SortResults(FALSE, TRUE, FALSE, FALSE);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results));
        ClickHeading(dlg, CStationTableModel::URL);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results));
        ClickHeading(dlg, CStationTableModel::CLICKS);
        m_reference.SortResults(FALSE, FALSE, FALSE, TRUE);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results));

        // Cleared rows come back with the next sort.
        Click(dlg, CLEAR_RESULTS);
        EXPECT_TRUE(Rows(dlg).isEmpty());
        ClickHeading(dlg, CStationTableModel::CLICKS);
        m_reference.SortResults(TRUE, FALSE, FALSE, TRUE);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results));

        // Clear all: a minimum alone, with a limit on the rows listed.
        Click(dlg, CLEAR_CRITERIA);
        EXPECT_EQ(Find<QComboBox>(dlg, COUNTRY)->currentText(), QStringLiteral("No Country"));
        EXPECT_EQ(Entries(Find<QComboBox>(dlg, STATE)), QStringList{"No State"});
        EXPECT_TRUE(TagLines(dlg).isEmpty() && Text(dlg, NAME).isEmpty());
        Type(dlg, VOTES, QStringLiteral("100"));
        Type(dlg, MAX, QStringLiteral("5"));
        Click(dlg, SEARCH);
        m_reference.ClearCriteria();
        m_reference.m_bMinVotes = TRUE;
        m_reference.m_minVotes = 100;
        const int voted = m_reference.SearchStations();
        ASSERT_GT(voted, 5);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results, 5));
        EXPECT_EQ(Line(dlg), QStringLiteral("Showing 5 of %1 Stations found").arg(voted));
        // The sort orders all results and lists the first of them. The
        // direction goes on turning from the last click, search or not.
        ClickHeading(dlg, CStationTableModel::VOTES);
        m_reference.SortResults(FALSE, FALSE, TRUE, FALSE);
        EXPECT_EQ(Rows(dlg), Names(m_reference.m_results, 5));

        Type(dlg, CLICKS, QStringLiteral("2000000000"));
        Click(dlg, SEARCH);
        EXPECT_EQ(Line(dlg), QStringLiteral("No results in 500 Stations searched"));
        EXPECT_TRUE(Rows(dlg).isEmpty());
    });
}

TEST_F(RadioSearchDlgTest, NumberBoxesTagListAndHelp) {
    UrlRecorder browser;
    Run([&](CRbSearchDlg* dlg) {
        // Numbers out of their range are refused with the framework's words.
        w.Boxes().Clear();
        Type(dlg, NAME, QStringLiteral("radio"));
        Type(dlg, MAX, QStringLiteral("many"));
        Click(dlg, SEARCH);
        Type(dlg, MAX, QStringLiteral("-1"));
        Click(dlg, SEARCH);
        EXPECT_EQ(w.Boxes().Texts(),
                  (std::vector<CString>{u"Please enter an integer.",
                                        u"Please enter an integer between 0 and 2000000000."}));
        EXPECT_EQ(Line(dlg), QStringLiteral("Search Results"));
        // A number box left empty reads 0.
        Type(dlg, MAX, QString());
        Find<QLineEdit>(dlg, NAME)->setFocus();
        QTest::qWait(0);
        EXPECT_EQ(Text(dlg, MAX), QStringLiteral("0"));

        // The tag list: its menu, its dialog, its selection rules.
        EXPECT_EQ(TagMenu(dlg, -1, QStringLiteral("Add New Tag"), QStringLiteral("jazz")),
                  (QStringList{"Add New Tag", "Clear List"}));
        Choose(dlg, TAG_CHOICE, QStringLiteral("pop"));
        Choose(dlg, TAG_CHOICE, QStringLiteral("rock"));
        EXPECT_EQ(TagLines(dlg), (QStringList{"jazz", "pop", "rock"}));
        EXPECT_EQ(SelectedTagLine(dlg), 2);
        // A right click acts on the selected line, not on the one clicked.
        EXPECT_EQ(TagMenu(dlg, 0, QStringLiteral("Edit Tag"), QStringLiteral("blues")),
                  (QStringList{"Edit Tag", "Add New Tag", "Delete Tag", "Clear List"}));
        EXPECT_EQ(TagLines(dlg), (QStringList{"jazz", "pop", "blues"}));
        Find<QListWidget>(dlg, TAGS)->setFocus();
        SelectTag(dlg, 2);
        TagMenu(dlg, 2, QStringLiteral("Delete Tag"));
        EXPECT_EQ(TagLines(dlg), (QStringList{"jazz", "pop"}));
        EXPECT_EQ(SelectedTagLine(dlg), 1);
        TagMenu(dlg, 1, QStringLiteral("Delete Tag"));
        EXPECT_EQ(SelectedTagLine(dlg), -1);
        // Leaving the list takes its selection away.
        Activate(dlg);
        Find<QListWidget>(dlg, TAGS)->setFocus();
        SelectTag(dlg, 0);
        Find<QLineEdit>(dlg, NAME)->setFocus();
        QTest::qWait(0);
        EXPECT_EQ(SelectedTagLine(dlg), -1);
        TagMenu(dlg, 0, QStringLiteral("Clear List"));
        EXPECT_TRUE(TagLines(dlg).isEmpty());
        EXPECT_EQ(Find<QComboBox>(dlg, TAG_CHOICE)->currentIndex(), -1);

        // Help and F1 open the search's own page of the manual.
        Click(dlg, HELP);
        QTest::keyClick(dlg, Qt::Key_F1);
    });
    const QUrl page =
        QUrl::fromLocalFile(QString::fromStdString(w.StartDir()) + "/OrvexHelp/radio.html");
    ASSERT_EQ(browser.urls.size(), 2u);
    for (const QUrl& url : browser.urls) {
        EXPECT_EQ(url.adjusted(QUrl::RemoveFragment), page);
        EXPECT_EQ(url.fragment(), QStringLiteral("search"));
    }
}

TEST_F(RadioSearchDlgTest, ImportedResultsBecomeATopicWhoseStationsPlay) {
    // The stations stream from the local server, and sound goes nowhere.
    SetGraphAudioSink("fakesink sync=true");
    w.server.Route("/station.mp3", TempDir::Read(TestMedia::Get().Mp3Radio()));
    for (int i = 0; i < w.doc->m_radioDb.m_stations.GetSize(); ++i)
        w.doc->m_radioDb.m_stations[i].m_url = CString(w.server.Url("/station.mp3"));
    QStringList shown;
    Run([&](CRbSearchDlg* dlg) {
        Paste(dlg, TOPIC, QStringLiteral("Radio Ñandú"));
        Click(dlg, IMPORT); // nothing found yet: nothing happens
        EXPECT_TRUE(w.Boxes().Texts().empty());
        Paste(dlg, NAME, QStringLiteral("méxico"));
        Type(dlg, MAX, QStringLiteral("4"));
        Click(dlg, SEARCH);
        shown = Rows(dlg);
        ASSERT_EQ(shown.size(), 4);
        Type(dlg, TOPIC, QString());
        Click(dlg, IMPORT);
        EXPECT_EQ(w.Boxes().Texts(),
                  std::vector<CString>{u"Please enter a Topic name to import results into."});
        EXPECT_TRUE(Find<QLineEdit>(dlg, TOPIC)->hasFocus());
        Paste(dlg, TOPIC, QStringLiteral("Radio Ñandú"));
        Click(dlg, IMPORT);
        EXPECT_EQ(Line(dlg), QStringLiteral("4 Stations imported to Radio Ñandú Topic."));
        EXPECT_TRUE(Rows(dlg).isEmpty());
        // The search is over: a heading has nothing to sort.
        ClickHeading(dlg, CStationTableModel::NAME);
        EXPECT_TRUE(Rows(dlg).isEmpty());
    });
    // The list shows the new topic with the rows the search showed, and a
    // double click plays a station from the server.
    EXPECT_EQ(w.doc->m_displayTopic.GetName(), CString(u"Radio Ñandú"));
    EXPECT_TRUE(w.doc->m_bContentsChanged);
    COrvexListView* list = w.frame->GetSplitterView()->GetListView();
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->Model()->rowCount(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(list->Model()->index(i, 0).data().toString(), shown[i]);
    const QPoint row = list->visualRect(list->Model()->index(2, 0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row);
    EXPECT_TRUE(QTest::qWaitFor([&] { return w.frame->m_player.m_state == 2; }, 20000))
        << (w.Boxes().Texts().empty() ? std::string() : w.Boxes().Texts().back().ToUtf8());
    EXPECT_GE(w.server.RequestCount("/station.mp3"), 1);
    w.frame->StopPlayback(FALSE);
    SetGraphAudioSink("");
}
