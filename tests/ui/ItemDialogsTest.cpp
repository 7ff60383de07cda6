// The item dialogs and LAV Setup on real widgets: what they open with, each
// refusal of OK with its exact text, and the fields after OK or Cancel.
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <cstring>

#include "app/OrvexDoc.h"
#include "platform/base/FontDialog.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"
#include "tests/ui/DialogTestSupport.h"
#include "ui/Commands.h"
#include "ui/MainFrame.h"
#include "ui/dialogs/EditMediaItemDlg.h"
#include "ui/dialogs/FoldersDlg.h"
#include "ui/dialogs/ImportPlaylistDlg.h"
#include "ui/dialogs/LavSetupDlg.h"
#include "ui/dialogs/NewTopicDlg.h"

namespace {

void Choose(QWidget* dialog, int id, const QString& text) {
    auto* box = Find<QComboBox>(dialog, id);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Home);
    while (box->currentText() != text && box->currentIndex() + 1 < box->count())
        QTest::keyClick(box, Qt::Key_Down);
}

const QStringList kTypeNames{"Unknown Stream", "Audio Stream", "Video Stream", "Video File",
                             "Audio File"};

} // namespace

TEST(EditMediaItemDlg, ANewItemIsCheckedFieldByFieldThenTaken) {
    TestApp();
    COrvexDoc doc;
    MessageBoxRecorder boxes;
    CEditMediaItemDlg dlg;
    EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Edit MediaItem"));
    dlg.m_pDoc = &doc;
    dlg.m_title = u"New Media Item";
    dlg.m_item.m_type = MEDIA_AUDIO_FILE;
    dlg.m_item.m_topics.Add(u"Music");
    const int answer = RunModal(dlg, [&] {
        EXPECT_EQ(dlg.windowTitle(), QStringLiteral("New Media Item"));
        auto* types = Find<QComboBox>(&dlg, 1028);
        EXPECT_EQ(Entries(types), kTypeNames);
        EXPECT_EQ(types->currentText(), QStringLiteral("Audio File"));
        EXPECT_TRUE(Text(&dlg, 1029).isEmpty());
        EXPECT_TRUE(Text(&dlg, 1030).isEmpty());
        Click(&dlg, IDOK);
        Type(&dlg, 1029, QStringLiteral("Blue"));
        Click(&dlg, IDOK);
        Type(&dlg, 1030, QStringLiteral("http://radio/blue"));
        Choose(&dlg, 1028, QStringLiteral("Unknown Stream"));
        Click(&dlg, IDOK);
        EXPECT_TRUE(dlg.isVisible());
        Choose(&dlg, 1028, QStringLiteral("Audio Stream"));
        Click(&dlg, 1027);
        Click(&dlg, IDOK);
    });
    EXPECT_EQ(boxes.Texts(), (std::vector<CString>{u"Please enter valid Media Name.",
                                                   u"Please enter valid Media URL/File Path.",
                                                   u"Please enter valid Media Type."}));
    EXPECT_EQ(boxes.Boxes()[0].type, MB_OK);
    ASSERT_EQ(answer, IDOK);
    EXPECT_EQ(dlg.m_item.m_type, MEDIA_AUDIO_URL);
    EXPECT_EQ(dlg.m_item.m_name, CString(u"Blue"));
    EXPECT_EQ(dlg.m_item.m_location, CString(u"http://radio/blue"));
    EXPECT_EQ(dlg.m_item.m_topics.GetSize(), 1);
    EXPECT_TRUE(dlg.m_item.m_favorite);
    EXPECT_TRUE(dlg.m_fieldsChanged);
    EXPECT_TRUE(dlg.m_favoriteChanged);
}

TEST(EditMediaItemDlg, AnEditSaysWhatChangedAndCancelKeepsTheItem) {
    TestApp();
    COrvexDoc doc;
    CMediaItem item;
    item.m_type = MEDIA_VIDEO_FILE;
    item.m_name = u"Film";
    item.m_location = u"/v/film.mkv";
    item.m_favorite = TRUE;
    {
        CEditMediaItemDlg dlg;
        dlg.m_pDoc = &doc;
        dlg.m_title = u"Edit Media Item";
        dlg.m_item = item;
        EXPECT_EQ(RunModal(dlg,
                           [&] {
                               EXPECT_TRUE(Checked(&dlg, 1027));
                               EXPECT_EQ(Text(&dlg, 1029), QStringLiteral("Film"));
                               Click(&dlg, 1027);
                               Click(&dlg, IDOK);
                           }),
                  IDOK);
        EXPECT_TRUE(dlg.m_favoriteChanged);
        EXPECT_FALSE(dlg.m_fieldsChanged);
        EXPECT_FALSE(dlg.m_item.m_favorite);
    }
    {
        CEditMediaItemDlg dlg;
        dlg.m_pDoc = &doc;
        dlg.m_item = item;
        EXPECT_EQ(RunModal(dlg,
                           [&] {
                               Type(&dlg, 1029, QStringLiteral("Other"));
                               Click(&dlg, IDCANCEL);
                           }),
                  IDCANCEL);
        EXPECT_EQ(dlg.m_item, item);
    }
    // Without a document, or with an invalid item to edit, the controls stay empty.
    CEditMediaItemDlg bare;
    bare.m_item = item;
    RunModal(bare, [&] {
        EXPECT_EQ(Find<QComboBox>(&bare, 1028)->count(), 0);
        EXPECT_TRUE(Text(&bare, 1029).isEmpty());
    });
    CEditMediaItemDlg invalid;
    invalid.m_pDoc = &doc;
    invalid.m_title = u"Edit Media Item";
    RunModal(invalid, [&] { EXPECT_EQ(Find<QComboBox>(&invalid, 1028)->count(), 0); });
}

TEST(NewTopicDlg, NamesFromTheAliasesTypeFixedForASubTopic) {
    TestApp();
    COrvexDoc doc;
    doc.m_aliases.AddAlias(u"Jz", u"Jazz");
    doc.m_aliases.AddAlias(u"Bl", u"Blues");
    MessageBoxRecorder boxes;
    CNewTopicDlg child;
    EXPECT_EQ(child.windowTitle(), QStringLiteral("New Topic"));
    child.m_pDoc = &doc;
    child.m_mediaType = MEDIA_AUDIO_FILE;
    EXPECT_EQ(RunModal(child,
                       [&] {
                           auto* names = Find<QComboBox>(&child, 1025);
                           EXPECT_EQ(Entries(names), (QStringList{"Jazz", "Blues"}));
                           EXPECT_TRUE(names->currentText().isEmpty());
                           EXPECT_FALSE(Enabled(&child, 1028));
                           EXPECT_EQ(Find<QComboBox>(&child, 1028)->currentText(),
                                     QStringLiteral("Audio File"));
                           Click(&child, IDOK);
                           QTest::keyClicks(names->lineEdit(), QStringLiteral("Live"));
                           Click(&child, IDOK);
                       }),
              IDOK);
    EXPECT_EQ(child.m_name, CString(u"Live"));
    EXPECT_EQ(child.m_mediaType, MEDIA_AUDIO_FILE);

    // A new root starts on "Unknown Stream", which can be chosen but never confirmed.
    CNewTopicDlg root;
    root.m_pDoc = &doc;
    RunModal(root, [&] {
        EXPECT_TRUE(Enabled(&root, 1028));
        EXPECT_EQ(Find<QComboBox>(&root, 1028)->currentText(), QStringLiteral("Unknown Stream"));
        Choose(&root, 1025, QStringLiteral("Blues"));
        Click(&root, IDOK);
        Choose(&root, 1028, QStringLiteral("Video Stream"));
        Choose(&root, 1025, QStringLiteral("Blues"));
        Find<QComboBox>(&root, 1025)->lineEdit()->clear();
        Click(&root, IDOK);
        EXPECT_TRUE(root.isVisible());
    });
    EXPECT_EQ(boxes.Texts(), (std::vector<CString>{u"Please enter a Topic Name.",
                                                   u"Please enter a valid Media Type.",
                                                   u"Please enter a Topic Name."}));

    // Editing offers the type even when it has one.
    CNewTopicDlg edit;
    edit.m_pDoc = &doc;
    edit.m_title = u"Edit Topic";
    edit.m_name = u"Jazz";
    edit.m_mediaType = MEDIA_VIDEO_URL;
    EXPECT_EQ(RunModal(edit,
                       [&] {
                           EXPECT_EQ(edit.windowTitle(), QStringLiteral("Edit Topic"));
                           EXPECT_TRUE(Enabled(&edit, 1028));
                           EXPECT_EQ(Find<QComboBox>(&edit, 1025)->currentText(),
                                     QStringLiteral("Jazz"));
                           Choose(&edit, 1028, QStringLiteral("Video File"));
                           Click(&edit, IDOK);
                       }),
              IDOK);
    EXPECT_EQ(edit.m_mediaType, MEDIA_VIDEO_FILE);
    EXPECT_EQ(edit.m_name, CString(u"Jazz"));
}

TEST(FoldersDlg, OnlyTheFolderPickersFillTheFields) {
    TestApp();
    PickerAnswers pickers;
    pickers.Answer(u"/home/u/Library");
    pickers.Answer(u"<cancel>");
    pickers.Answer(u"");
    pickers.Answer(u"/home/u/Recordings");
    CFoldersDlg dlg;
    dlg.m_videoFolder = u"/v";
    EXPECT_EQ(RunModal(dlg,
                       [&] {
                           EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Set Folder Paths"));
                           EXPECT_EQ(Text(&dlg, 1086), QStringLiteral("/v"));
                           EXPECT_TRUE(Find<QLineEdit>(&dlg, 1086)->isReadOnly());
                           EXPECT_TRUE(Find<QLineEdit>(&dlg, 1087)->isReadOnly());
                           Click(&dlg, 1089);
                           EXPECT_EQ(Text(&dlg, 1087), QStringLiteral("/home/u/Library"));
                           Click(&dlg, 1088); // cancelled
                           Click(&dlg, 1088); // an empty answer
                           EXPECT_EQ(Text(&dlg, 1086), QStringLiteral("/v"));
                           EXPECT_TRUE(Text(&dlg, 1090).isEmpty());
                           Click(&dlg, 1091);
                           EXPECT_EQ(Text(&dlg, 1090), QStringLiteral("/home/u/Recordings"));
                           Click(&dlg, IDOK);
                       }),
              IDOK);
    EXPECT_EQ(dlg.m_contentsFolder, CString(u"/home/u/Library"));
    EXPECT_EQ(dlg.m_videoFolder, CString(u"/v"));
    EXPECT_EQ(dlg.m_recordingsFolder, CString(u"/home/u/Recordings"));
    ASSERT_EQ(pickers.m_folders.size(), 4u);
    EXPECT_EQ(pickers.m_folders[0].prompt,
              CString(u"Pick a folder used for Contents file storage:"));
    EXPECT_EQ(pickers.m_folders[1].prompt, CString(u"Pick a folder used for Video file storage:"));
    EXPECT_EQ(pickers.m_folders[1].initialFolder, CString(u"/v"));
    EXPECT_EQ(pickers.m_folders[0].flags, 0x51u);
}

TEST(ImportPlaylistDlg, StartsAsTheCallerSetsAndGivesBackBothFields) {
    TestApp();
    CImportPlaylistDlg dlg;
    EXPECT_TRUE(dlg.m_deleteItem);
    dlg.m_deleteItem = FALSE;
    EXPECT_EQ(RunModal(dlg,
                       [&] {
                           EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Import Playlist"));
                           EXPECT_EQ(Find<QPushButton>(&dlg, IDOK)->text(),
                                     QStringLiteral("Import"));
                           EXPECT_FALSE(Checked(&dlg, 1085));
                           EXPECT_EQ(Text(&dlg, 1084), QStringLiteral("Imported Media"));
                           Click(&dlg, 1085);
                           Type(&dlg, 1084, QString());
                           Click(&dlg, IDOK); // an empty topic isn't refused here
                       }),
              IDOK);
    EXPECT_TRUE(dlg.m_deleteItem);
    EXPECT_TRUE(dlg.m_topic.IsEmpty());
}

TEST(LavSetupDlg, DefaultsAreAllOffAndOnlyOkStoresThem) {
    TestApp();
    TempDir dir;
    COrvexDoc doc;
    CMainFrame frame(doc);
    QAction* command = frame.CommandAction(ID_LAV_SETUP);
    ASSERT_TRUE(command->isEnabled());
    // Opens the dialog from the menu and clicks the controls given, in order;
    // "Set Defaults" first checks that all four boxes were on.
    const auto run = [&](std::initializer_list<int> clicks) {
        ModalScript script;
        script.Then("144", [&](QWidget* dlg) {
            EXPECT_EQ(dlg->windowTitle(), QStringLiteral("LAV Filters Setup"));
            EXPECT_EQ(Find<QCheckBox>(dlg, 1041)->text(), QStringLiteral("Enable WMA PRO  Codec"));
            for (int id : clicks) {
                for (int box : {1040, 1041, 1042, 1043})
                    EXPECT_TRUE(id != 1044 || Checked(dlg, box));
                Click(dlg, id);
                for (int box : {1040, 1041, 1042, 1043})
                    EXPECT_TRUE(id != 1044 || !Checked(dlg, box));
            }
            return true;
        });
        script.Run([&] { command->trigger(); });
    };
    // Defaults, then Cancel: nothing changes.
    run({1044, IDCANCEL});
    EXPECT_TRUE(doc.m_lavSetup.m_bWma2);
    EXPECT_FALSE(doc.m_bContentsChanged);
    // OK without a click copies the same values and leaves the flag alone.
    run({IDOK});
    EXPECT_FALSE(doc.m_bContentsChanged);
    // Any click counts as a change, even one taken back.
    run({1040, 1040, IDOK});
    EXPECT_TRUE(doc.m_lavSetup.m_bWma2);
    EXPECT_TRUE(doc.m_bContentsChanged);
    doc.m_bContentsChanged = FALSE;

    // Defaults, one box on again, OK: stored, and the change survives the user file.
    run({1044, 1043, IDOK});
    EXPECT_TRUE(doc.m_bContentsChanged);
    ASSERT_TRUE(doc.SaveUserData(dir.File("u.dat")));
    COrvexDoc back;
    ASSERT_TRUE(back.LoadUserData(dir.File("u.dat")));
    EXPECT_FALSE(back.m_lavSetup.m_bWma2 || back.m_lavSetup.m_bWmaPro || back.m_lavSetup.m_bWmaAll);
    EXPECT_TRUE(back.m_lavSetup.m_bStereoSpeakers);
}

TEST(FontCommands, PaneFontsSurviveTheUserFile) {
    TestApp();
    TempDir dir;
    COrvexDoc doc;
    CMainFrame frame(doc);
    QFont chosen(QStringLiteral("DejaVu Serif"));
    chosen.setPixelSize(17);
    chosen.setItalic(true);
    FontDialogHook previous = SetFontDialogHook([&](LOGFONTW& font, DWORD) {
        font = LogFontFromFont(chosen);
        return TRUE;
    });
    frame.CommandAction(ID_FONT_LEFT)->trigger();
    chosen.setPixelSize(21);
    frame.CommandAction(ID_FONT_RIGHT)->trigger();
    SetFontDialogHook(previous);
    ASSERT_TRUE(doc.SaveUserData(dir.File("u.dat")));
    COrvexDoc back;
    ASSERT_TRUE(back.LoadUserData(dir.File("u.dat")));
    const QFont right = FontFromLogFont(back.m_rightFont);
    const QFont left = FontFromLogFont(back.m_leftFont);
    EXPECT_EQ(right.pixelSize(), 21);
    EXPECT_EQ(left.pixelSize(), 17);
    EXPECT_TRUE(right.italic());
    EXPECT_EQ(left.family(), QStringLiteral("DejaVu Serif"));
}
