#include <gtest/gtest.h>

#include <utility>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/ComponentServices.h"
#include "tests/app/DocFixtures.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxRecorder.h"
#include "tests/support/TempDir.h"

namespace {

const char* const kFiles[] = {"OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat",
                              "results.txt"};
const CString kNotAvailable(u"User AppData folder not available. Changes cannot be saved.");

// A contents file with one root topic of this name.
std::string ContentsWithRoot(const char16_t* name) {
    using namespace filebytes;
    return I32(1) + I32(1) + I32(1) + Wide(CString(name)) + I32(0) + I32(4) + I32(0) + I32(0);
}

// The default copy of a data file: a valid contents file, an empty radio
// database (read without a word), and text that names the file for the
// others (which their readers refuse silently).
std::string DefaultBytes(const std::string& file) {
    if (file == "OrvexContents.dat")
        return ContentsWithRoot(u"default");
    if (file == "RadioBrowse.dat")
        return std::string();
    return "default " + file;
}

// A start directory holding the given default files, each with its own name
// as content, and a data home beside it.
struct Install {
    TempDir root;
    std::string start = root / "start";
    std::string dataHome = root / "data";
    std::string userFolder = root / "data/Orvex";

    explicit Install(std::initializer_list<const char*> files = {
                         "OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat", "results.txt"}) {
        std::filesystem::create_directories(start);
        for (const char* f : files)
            TempDir::Write(start + "/" + f, DefaultBytes(f));
    }

    // Runs the document's start-up from the start directory.
    CString Run(MessageBoxRecorder& boxes) {
        ScopedCurrentDir cwd(start);
        ScopedEnv env("XDG_DATA_HOME", dataHome);
        COrvexApp app;
        COrvexDoc doc;
        boxes.Clear();
        EXPECT_TRUE(doc.OnNewDocument());
        EXPECT_EQ(app.m_pDoc, &doc);
        return doc.m_dataFolder;
    }
};

} // namespace

TEST(DataFolder, TheFirstRunCopiesAllFourAndLaterRunsOnlyWhatIsMissing) {
    Install install;
    MessageBoxRecorder boxes;
    EXPECT_EQ(install.Run(boxes), CString(install.userFolder));
    EXPECT_TRUE(boxes.Boxes().empty());
    for (const char* f : kFiles)
        EXPECT_EQ(TempDir::Read(install.userFolder + "/" + f), DefaultBytes(f));

    TempDir::Write(install.userFolder + "/OrvexContents.dat", ContentsWithRoot(u"user's own"));
    TempDir::Write(install.start + "/OrvexContents.dat", ContentsWithRoot(u"newer default"));
    std::filesystem::remove(install.userFolder + "/OrvexUser.dat");
    EXPECT_EQ(install.Run(boxes), CString(install.userFolder));
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(TempDir::Read(install.userFolder + "/OrvexContents.dat"),
              ContentsWithRoot(u"user's own"));
    EXPECT_EQ(TempDir::Read(install.userFolder + "/OrvexUser.dat"), "default OrvexUser.dat");
}

TEST(DataFolder, AFailedCopyFallsBackToTheStartDirectory) {
    Install install({"OrvexContents.dat", "OrvexUser.dat", "RadioBrowse.dat"});
    MessageBoxRecorder boxes;
    EXPECT_EQ(install.Run(boxes), CString(install.start));
    ASSERT_EQ(boxes.Texts().size(), 1u);
    EXPECT_EQ(boxes.Texts()[0], kNotAvailable);
    // What was copied meanwhile stays in the user folder, unused.
    EXPECT_TRUE(std::filesystem::exists(install.userFolder + "/RadioBrowse.dat"));
    EXPECT_EQ(TempDir::Read(install.userFolder + "/RadioBrowse.dat"),
              DefaultBytes("RadioBrowse.dat"));
    EXPECT_FALSE(std::filesystem::exists(install.userFolder + "/results.txt"));
    // And so it goes on every run until all four are there.
    EXPECT_EQ(install.Run(boxes), CString(install.start));
    EXPECT_EQ(boxes.Texts().size(), 1u);
    TempDir::Write(install.start + "/results.txt", "");
    EXPECT_EQ(install.Run(boxes), CString(install.userFolder));
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST(DataFolder, AnUnusableDataHomeIsReportedAndTheStartDirectoryServes) {
    Install install;
    TempDir::Write(install.dataHome, "a file where the data home should be");
    MessageBoxRecorder boxes;
    EXPECT_EQ(install.Run(boxes), CString(install.start));
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, CString(u"Application was not installed properly."));
    EXPECT_EQ(boxes.Boxes()[0].caption, CString(u"Orvex"));
    EXPECT_EQ(boxes.Boxes()[0].type, MB_ICONEXCLAMATION | MB_OK);
}

TEST(DataFolder, WithoutXdgDataHomeTheHomeFolderIsUsed) {
    TempDir home;
    ScopedEnv noXdg("XDG_DATA_HOME", "relative/is/ignored");
    ScopedEnv env("HOME", home.Path().string());
    COrvexApp app;
    CString folder;
    ASSERT_TRUE(app.GetUserDataFolder(folder));
    EXPECT_EQ(folder, CString(home / ".local/share/Orvex"));
    EXPECT_TRUE(std::filesystem::is_directory(home / ".local/share/Orvex"));
}

TEST(OrvexApp, InitInstanceLoadsThenShowsTheFrameAndExitStopsPlaybackFirst) {
    Install install;
    ScopedCurrentDir cwd(install.start);
    ScopedEnv env("XDG_DATA_HOME", install.dataHome);
    std::vector<std::string> log;
    COrvexApp app;
    app.SetFrameFactory([&](COrvexDoc&) { return std::make_unique<FakeFrame>(log); });
    MessageBoxRecorder boxes;
    ASSERT_TRUE(app.InitInstance());
    EXPECT_EQ(log, std::vector<std::string>{"show"});
    ASSERT_NE(app.GetDocument(), nullptr);
    EXPECT_EQ(app.m_pDoc, app.GetDocument());
    EXPECT_EQ(app.GetDocument()->m_dataFolder, CString(install.userFolder));
    EXPECT_GE(app.m_cfMediaItem, 0xC000u);
    EXPECT_NE(GetMainFrame(), nullptr);
    EXPECT_TRUE(app.ExitInstance());
    EXPECT_EQ(log, (std::vector<std::string>{"show", "stop"}));
    EXPECT_TRUE(boxes.Boxes().empty()); // nothing changed: no prompt
}

TEST(OrvexApp, ComponentServiceFailureEndsStartUpWithItsMessage) {
    COrvexApp app;
    // Fails once, so that later start-ups in this process get through.
    RegisterComponentService([failed = false]() mutable { return std::exchange(failed, true); });
    MessageBoxRecorder boxes;
    EXPECT_FALSE(app.InitInstance());
    ASSERT_EQ(boxes.Texts().size(), 1u);
    EXPECT_EQ(boxes.Texts()[0], CString(u"ERROR COrvexApp::InitInstance Couldn't initialize COM"));
    EXPECT_EQ(app.GetDocument(), nullptr);
}

TEST(OrvexApp, AboutTextListsTheVersionAndTheCreditsLineByLine) {
    COrvexApp app;
    CString before = app.GetAboutText();
    EXPECT_EQ(before.Left(17), CString(u"Orvex version:  \r"));
    COrvexDoc doc;
    app.m_pDoc = &doc;
    CString text = app.GetAboutText();
    EXPECT_EQ(text.Left(24), CString(u"Orvex version:  0.9.0.0\r"));
    EXPECT_NE(text.Find(CString(u"\r\n\r\nOpen source software used by this program:\r\n\r\n"
                                u"   LAV Filters:\r\n       https://")),
              -1);
    EXPECT_NE(text.Find(CString(u"\r\n   Radio-Browser:\r\n       https://")), -1);
    EXPECT_NE(text.Right(2), CString(u"\r\n")); // ends after the last address
    int lines = 1;
    for (int i = 0; i < text.GetLength(); ++i)
        lines += text[i] == u'\n';
    EXPECT_EQ(lines, 5 + 2 * 6);
}

TEST(OrvexDoc, StartUpTakesTheWorkingDirectoryAndLoadsItsTables) {
    Install install;
    TempDir::Write(install.start + "/TopicAlias.txt", "TV,TV Shows\n");
    ScopedCurrentDir cwd(install.start);
    ScopedEnv env("XDG_DATA_HOME", install.dataHome);
    COrvexApp app;
    // The working directory, never the folder of the program.
    EXPECT_EQ(app.m_startDirectory, CString(install.start));
    EXPECT_EQ(AfxGetOrvexApp(), &app);
    COrvexDoc doc;
    ASSERT_TRUE(doc.OnNewDocument());
    ASSERT_EQ(doc.m_aliases.GetSize(), 1);
    EXPECT_EQ(doc.m_aliases.GetTopic(CString(u"TV")), CString(u"TV Shows"));
    EXPECT_EQ(doc.m_extensions.GetSize(), 33);
    EXPECT_EQ(AfxGetAppContext().GetStartDirectory(), CString(install.start));
}
