// The Import and Export dialogs on real widgets: every click rule of their
// check-box groups, the order of OK's refusals, Browse, the import dialog's
// scrolling, and both commands from the menu, with a playlist download that
// the user cancels.
#include <QProgressBar>
#include <QScrollBar>

#include "app/OrvexDoc.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"
#include "tests/ui/DialogTestSupport.h"
#include "ui/Commands.h"
#include "ui/FileChooser.h"
#include "ui/MainFrame.h"
#include "ui/dialogs/DialogScroller.h"
#include "ui/dialogs/ExportDlg.h"
#include "ui/dialogs/ImportDlg.h"

namespace {

// The controls of both dialogs.
constexpr int PATH = 1010, BROWSE = 1011, OVERWRITE = 1016, PLS = 1017, M3U = 1018;
constexpr int TOPIC = 1021, PLACE = 1022, DAT = 1036, TEXT = 1037;
constexpr int TO_TEXT = 1014, EXCLUDE = 1035, UNICODE = 1038, ALIASES = 1039;

// Checked and enabled, as "11", "10", "01", "00".
std::string State(QWidget* dlg, int id) {
    return std::string(Checked(dlg, id) ? "1" : "0") + (Enabled(dlg, id) ? "1" : "0");
}

std::string Sources(QWidget* dlg) {
    std::string s;
    for (int id : {DAT, TEXT, PLS, M3U})
        s += Checked(dlg, id) ? "1" : "0";
    return s;
}

} // namespace

TEST(ImportDlg, EachClickSetsItsNeighbours) {
    TestApp();
    CImportDlg dlg;
    RunModal(dlg, [&] {
        EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Import Contents Media"));
        EXPECT_EQ(Sources(&dlg), "0000");
        EXPECT_EQ(State(&dlg, OVERWRITE) + State(&dlg, PLACE), "0101");

        // .dat can only overwrite; unticking it clears the group and frees both.
        Click(&dlg, TEXT);
        Click(&dlg, DAT);
        EXPECT_EQ(Sources(&dlg), "1000");
        EXPECT_EQ(State(&dlg, OVERWRITE) + State(&dlg, PLACE), "1000");
        EXPECT_FALSE(Enabled(&dlg, TOPIC));
        EXPECT_TRUE(dlg.m_fromDat && dlg.m_overwrite); // the fields follow each click
        Click(&dlg, DAT);
        EXPECT_EQ(Sources(&dlg), "0000");
        EXPECT_EQ(State(&dlg, OVERWRITE) + State(&dlg, PLACE), "0101");
        EXPECT_TRUE(Enabled(&dlg, TOPIC));

        // A playlist can only be placed; its place box can't be cleared.
        Click(&dlg, M3U);
        Click(&dlg, PLS);
        EXPECT_EQ(Sources(&dlg), "0010");
        EXPECT_EQ(State(&dlg, OVERWRITE) + State(&dlg, PLACE), "0011");
        EXPECT_EQ(Text(&dlg, TOPIC), QStringLiteral("Imported Media"));
        Type(&dlg, TOPIC, QStringLiteral("Mine"));
        Click(&dlg, PLACE);
        EXPECT_EQ(State(&dlg, PLACE), "11");
        EXPECT_EQ(Text(&dlg, TOPIC), QStringLiteral("Mine"));
        Click(&dlg, PLS); // clearing a playlist box changes nothing else
        EXPECT_EQ(State(&dlg, PLACE) + State(&dlg, OVERWRITE), "1100");

        // The Media Record Format leaves the choice open, twice over.
        Click(&dlg, TEXT);
        Click(&dlg, TEXT);
        EXPECT_EQ(Sources(&dlg), "0000");
        EXPECT_EQ(State(&dlg, OVERWRITE) + State(&dlg, PLACE), "0101");
        EXPECT_FALSE(Enabled(&dlg, TOPIC));
        Click(&dlg, TEXT);
        Click(&dlg, PLACE);
        EXPECT_EQ(Text(&dlg, TOPIC), QStringLiteral("Imported Media"));
        Type(&dlg, TOPIC, QStringLiteral("Edited"));
        Click(&dlg, PLACE);
        EXPECT_EQ(State(&dlg, OVERWRITE), "11");
        EXPECT_FALSE(Enabled(&dlg, TOPIC));
        Click(&dlg, PLACE);
        EXPECT_EQ(Text(&dlg, TOPIC), QStringLiteral("Imported Media"));
        EXPECT_EQ(State(&dlg, OVERWRITE), "01");
        Click(&dlg, OVERWRITE);
        EXPECT_EQ(State(&dlg, PLACE), "01");
        EXPECT_TRUE(Text(&dlg, TOPIC).isEmpty());
        Click(&dlg, OVERWRITE);
        EXPECT_EQ(State(&dlg, PLACE), "11");
        EXPECT_EQ(Text(&dlg, TOPIC), QStringLiteral("Imported Media"));
        EXPECT_TRUE(Enabled(&dlg, TOPIC));
    });
}

TEST(ImportDlg, OkRefusesInItsOrderAndPlaylistsMayBeUrls) {
    TestApp();
    MessageBoxRecorder boxes;
    CImportDlg dlg;
    const int answer = RunModal(dlg, [&] {
        Click(&dlg, IDOK);
        Click(&dlg, TEXT);
        Click(&dlg, IDOK);
        Type(&dlg, PATH, QStringLiteral("C:\\lib\\list.txt"));
        Click(&dlg, IDOK);
        Type(&dlg, PATH, QStringLiteral("/home/u/list.txt"));
        Click(&dlg, IDOK);
        Click(&dlg, PLACE);
        Type(&dlg, TOPIC, QString());
        Click(&dlg, IDOK);
        // A URL with characters a file name can't hold is still a playlist's source.
        Click(&dlg, M3U);
        Type(&dlg, PATH, QStringLiteral("http://host/list.m3u?a=\\|"));
        Type(&dlg, TOPIC, QStringLiteral("Radio"));
        Click(&dlg, IDOK);
    });
    EXPECT_EQ(boxes.Texts(),
              (std::vector<CString>{u"Please select an Import From check box.",
                                    u"Please enter or browse for a File Path or URL.",
                                    u"File path contains one or more invalid characters.",
                                    u"Please check either overwrite or topic.",
                                    u"Please enter the Topic to place media items under. This can "
                                    u"be an existing or new topic."}));
    ASSERT_EQ(answer, IDOK);
    EXPECT_TRUE(dlg.m_fromM3u && !dlg.m_fromText && dlg.m_place && !dlg.m_overwrite);
    EXPECT_EQ(dlg.m_path, CString(u"http://host/list.m3u?a=\\|"));
    EXPECT_EQ(dlg.m_topic, CString(u"Radio"));

    // .dat passes the mode test with overwrite set for it, and an empty topic.
    CImportDlg dat;
    EXPECT_EQ(RunModal(dat,
                       [&] {
                           Click(&dat, DAT);
                           Type(&dat, PATH, QStringLiteral("/home/u/lib.dat"));
                           Click(&dat, IDOK);
                       }),
              IDOK);
    EXPECT_TRUE(dat.m_fromDat && dat.m_overwrite && dat.m_topic.IsEmpty());
}

TEST(ImportDlg, BrowseAsksForTheChosenSourcesFiles) {
    TestApp();
    MessageBoxRecorder boxes;
    PickerAnswers pickers;
    pickers.Answer(u"/home/u/a.pls");
    pickers.Answer(u"<cancel>");
    CImportDlg dlg;
    dlg.m_startFolder = u"/home/u";
    RunModal(dlg, [&] {
        Click(&dlg, BROWSE);
        Click(&dlg, PLS);
        Click(&dlg, BROWSE);
        EXPECT_EQ(Text(&dlg, PATH), QStringLiteral("/home/u/a.pls"));
        Click(&dlg, DAT);
        Click(&dlg, BROWSE);
        EXPECT_EQ(Text(&dlg, PATH), QStringLiteral("/home/u/a.pls"));
    });
    EXPECT_EQ(boxes.Texts(), std::vector<CString>{u"Please select an Import From check box."});
    ASSERT_EQ(pickers.m_files.size(), 2u);
    const FileDialogRequest& pls = pickers.m_files[0];
    EXPECT_TRUE(pls.open);
    EXPECT_EQ(pls.defaultExt, CString(u".pls"));
    EXPECT_EQ(pls.filter, CString(u"pls playlist (*.pls)|*.pls|All Files (*.*)|*.*||"));
    EXPECT_EQ(pls.initialFolder, CString(u"/home/u"));
    EXPECT_EQ(pls.flags, 0x802u);
    EXPECT_EQ(pickers.m_files[1].filter,
              CString(u"Orvex Contents File (*.dat)|*.dat|All Files (*.*)|*.*||"));
    EXPECT_EQ(QtNameFilters(pls.filter), (QStringList{"pls playlist (*.pls)", "All Files (*)"}));
}

TEST(ImportDlg, ScrollsWhatIsMissingOfItsOpeningHeight) {
    TestApp();
    CImportDlg dlg;
    CDialogScroller& s = *dlg.Scroller();
    RunModal(dlg, [&] {
        QScrollBar* bar = dlg.findChild<QScrollBar*>();
        QWidget* body = dlg.findChild<QWidget*>(QString::number(PATH))->parentWidget();
        const int h = s.m_initialRect.height();
        const int client = dlg.height();
        ASSERT_GT(h, 300);
        EXPECT_EQ(bar->maximum(), h - client); // the frame's height, if any, even now
        dlg.resize(dlg.width(), client - 200);
        ASSERT_TRUE(QTest::qWaitFor([&] { return s.m_height == client - 200; }, 5000));
        const int range = h - s.m_height;
        EXPECT_EQ(bar->maximum(), range);
        EXPECT_EQ(bar->pageStep(), range / 10);
        const int top = body->y();
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        EXPECT_EQ(s.m_scrollPos, range / 10 + range / 100);
        EXPECT_EQ(body->y(), top - s.m_scrollPos);
        EXPECT_EQ(bar->value(), s.m_scrollPos);
        bar->triggerAction(QAbstractSlider::SliderPageStepSub);
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        EXPECT_EQ(s.m_scrollPos, 0);
        EXPECT_EQ(body->y(), top);
        // The thumb moves the body only when it is let go.
        bar->setSliderDown(true);
        bar->setSliderPosition(150);
        EXPECT_EQ(body->y(), top);
        bar->setSliderDown(false);
        EXPECT_EQ(s.m_scrollPos, 150);
        EXPECT_EQ(body->y(), top - 150);
        bar->triggerAction(QAbstractSlider::SliderToMinimum);
        EXPECT_EQ(s.m_scrollPos, 150);
        // A new size puts the bar back to 0, and leaves the body where it is.
        dlg.resize(dlg.width(), client - 100);
        ASSERT_TRUE(QTest::qWaitFor([&] { return s.m_height == client - 100; }, 5000));
        EXPECT_EQ(bar->value(), 0);
        EXPECT_EQ(s.m_scrollPos, 150);
        EXPECT_EQ(body->y(), top - 150);
    });
    // Higher than it opened: nothing to scroll.
    CImportDlg high;
    RunModal(high, [&] {
        CDialogScroller& t = *high.Scroller();
        high.resize(high.width(), t.m_initialRect.height() + 50);
        ASSERT_TRUE(QTest::qWaitFor([&] { return t.m_height > t.m_initialRect.height(); }, 5000));
        QScrollBar* bar = high.findChild<QScrollBar*>();
        EXPECT_EQ(bar->maximum(), 0);
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        EXPECT_EQ(t.m_scrollPos, 0);
    });
}

TEST(ExportDlg, EachFormSetsTheOptionsItCanUse) {
    TestApp();
    MessageBoxRecorder boxes;
    CExportDlg dlg;
    const int answer = RunModal(dlg, [&] {
        EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Export Contents Media"));
        EXPECT_TRUE(Enabled(&dlg, DAT));
        Click(&dlg, UNICODE);
        Click(&dlg, DAT);
        EXPECT_EQ(State(&dlg, EXCLUDE) + State(&dlg, UNICODE) + State(&dlg, ALIASES), "000000");
        Click(&dlg, TO_TEXT);
        EXPECT_FALSE(Checked(&dlg, DAT));
        EXPECT_EQ(State(&dlg, EXCLUDE) + State(&dlg, UNICODE) + State(&dlg, ALIASES), "010101");
        Click(&dlg, ALIASES);
        Click(&dlg, M3U);
        EXPECT_FALSE(Checked(&dlg, TO_TEXT));
        EXPECT_EQ(State(&dlg, EXCLUDE) + State(&dlg, UNICODE) + State(&dlg, ALIASES), "100100");
        Click(&dlg, TO_TEXT);
        EXPECT_EQ(State(&dlg, EXCLUDE), "01");
        // Clearing a form by hand changes nothing else.
        Click(&dlg, M3U);
        Click(&dlg, M3U);
        EXPECT_EQ(State(&dlg, EXCLUDE), "10");
        EXPECT_FALSE(Checked(&dlg, TO_TEXT));
        Click(&dlg, IDOK);
        Click(&dlg, TO_TEXT);
        Click(&dlg, IDOK);
        Type(&dlg, PATH, QStringLiteral("/home/u/out*.txt"));
        Click(&dlg, IDOK);
        Click(&dlg, UNICODE);
        Type(&dlg, PATH, QStringLiteral("/home/u/out.txt"));
        Click(&dlg, IDOK);
    });
    EXPECT_EQ(boxes.Texts(),
              (std::vector<CString>{u"Please check a export type.", u"Please enter a file path.",
                                    u"File path contains invalid characters."}));
    ASSERT_EQ(answer, IDOK);
    EXPECT_TRUE(dlg.m_toText && !dlg.m_toM3u && !dlg.m_toDat && dlg.m_unicode);
    EXPECT_FALSE(dlg.m_excludeDiscFiles || dlg.m_writeAliases);
    EXPECT_EQ(dlg.m_path, CString(u"/home/u/out.txt"));
}

TEST(ExportDlg, ATopicExportOffersNoDatAndBrowseSavesByForm) {
    TestApp();
    PickerAnswers pickers;
    pickers.Answer(u"/home/u/new.m3u");
    pickers.Answer(u"<cancel>");
    CExportDlg dlg;
    dlg.m_title = u"Export Topic";
    dlg.m_topicOnly = TRUE;
    dlg.m_startFolder = u"/srv";
    RunModal(dlg, [&] {
        EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Export Topic"));
        EXPECT_FALSE(Enabled(&dlg, DAT));
        Click(&dlg, M3U);
        Click(&dlg, BROWSE);
        EXPECT_EQ(Text(&dlg, PATH), QStringLiteral("/home/u/new.m3u"));
        Click(&dlg, TO_TEXT);
        Click(&dlg, BROWSE);
        EXPECT_EQ(Text(&dlg, PATH), QStringLiteral("/home/u/new.m3u"));
    });
    ASSERT_EQ(pickers.m_files.size(), 2u);
    EXPECT_FALSE(pickers.m_files[0].open);
    EXPECT_EQ(pickers.m_files[0].flags, 0x1802u);
    EXPECT_EQ(pickers.m_files[0].defaultExt, CString(u".m3u"));
    EXPECT_EQ(pickers.m_files[0].filter, CString(u"M3u File (*.m3u)|*.m3u|All Files (*.*)|*.*||"));
    EXPECT_EQ(pickers.m_files[0].initialFolder, CString(u"/srv"));
    EXPECT_EQ(pickers.m_files[1].filter,
              CString(u"Media Record Format text file - (*.txt)|*.txt|All Files (*.*)|*.*||"));
}

TEST(ImportExportCommands, FromTheMenuAndAPlaylistDownloadThatIsCancelled) {
    TestApp();
    TempDir dir;
    TestHttpServer server;
    MessageBoxRecorder boxes;
    COrvexDoc doc;
    doc.m_extensions.LoadExtensions();
    doc.m_dataFolder = dir.Str();
    CMainFrame frame(doc);
    QAction* importCommand = frame.CommandAction(ID_IMPORT);
    QAction* exportCommand = frame.CommandAction(ID_EXPORT);
    ASSERT_TRUE(importCommand->isEnabled() && exportCommand->isEnabled());
    ASSERT_TRUE(frame.CommandAction(ID_FOLDER_LOCATIONS)->isEnabled());

    server.Route("/list.pls", "[playlist]\nFile1=http://s/a.mp3\nTitle1=A\n");
    std::string slow = "[playlist]\n";
    for (int i = 1; slow.size() < 40000; ++i)
        slow += "File" + std::to_string(i) + "=http://s/" + std::to_string(i) + ".mp3\n";
    server.Trickle("/slow.pls", slow, 1000, 50);
    const auto importUrl = [&](const std::string& path, bool cancel) {
        ModalScript script;
        script.Then("CImportDlg", [&](QWidget* dlg) {
            Click(dlg, PLS);
            Type(dlg, PATH, QString::fromStdString(server.Url(path)));
            Click(dlg, IDOK);
            return true;
        });
        if (cancel) {
            script.Then("CTransferProgressDlg", [](QWidget* dlg) {
                if (dlg->findChild<QProgressBar*>()->value() == 0)
                    return false; // the progress shows before the user gives up
                Click(dlg, IDCANCEL);
                return true;
            });
        }
        script.Run([&] { importCommand->trigger(); });
    };
    importUrl("/list.pls", false);
    EXPECT_EQ(boxes.Texts(),
              std::vector<CString>{u"1 Media Items placed under Imported Media Topic."});
    ASSERT_EQ(doc.m_contents.m_topics.GetSize(), 1);
    EXPECT_EQ(doc.m_contents.m_topics[0].m_media.GetSize(), 1);

    // Cancelled part way: no word, and the contents as they were.
    boxes.Clear();
    doc.m_bContentsChanged = FALSE;
    importUrl("/slow.pls", true);
    EXPECT_TRUE(boxes.Texts().empty());
    ASSERT_EQ(doc.m_contents.m_topics.GetSize(), 1);
    EXPECT_EQ(doc.m_contents.m_topics[0].m_media.GetSize(), 1);
    EXPECT_FALSE(doc.m_bContentsChanged);
    EXPECT_LT(TempDir::Read(dir / "results.txt").size(), slow.size());

    // Export from the menu, as the Media Record Format.
    ModalScript exporting;
    exporting.Then("CExportDlg", [&](QWidget* dlg) {
        Click(dlg, TO_TEXT);
        Type(dlg, PATH, QString::fromStdString(dir / "all.txt"));
        Click(dlg, IDOK);
        return true;
    });
    exporting.Run([&] { exportCommand->trigger(); });
    CString saved;
    saved.Format(u"1 Media records saved to %s.", dir.File("all.txt"));
    EXPECT_EQ(boxes.Texts(), std::vector<CString>{saved});
}
