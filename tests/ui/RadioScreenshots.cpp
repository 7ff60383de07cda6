// Takes the pictures of the radio dialogs for the documentation: the search
// dialog with results, and the update dialog while an update comes down from
// a local server. Run by scripts/screenshot-radio.sh on a virtual X display; the
// pictures are grabbed from the display itself.
//
//   radio_screenshots OUTPUT_FOLDER
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "bench/StationDirectoryWriter.h"
#include "platform/qt/QtGlue.h"
#include "tests/support/StartDirectory.h"
#include "tests/support/TempDir.h"
#include "tests/support/TestHttpServer.h"
#include "ui/Commands.h"
#include "ui/FileChooser.h"
#include "ui/FontChooser.h"
#include "ui/MainFrame.h"
#include "ui/dialogs/RadioBrowseUpdateDlg.h"

namespace {

namespace fs = std::filesystem;

// Runs `step` on the open modal dialog named `name` every few milliseconds
// until it says it is done.
void WhenOpen(const QString& name, std::function<bool(QWidget*)> step) {
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, name, step] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal->objectName() == name && modal->isVisible() && step(modal))
            timer->deleteLater();
    });
    timer->start(20);
}

template <typename Control>
Control* Child(QWidget* dialog, int id) {
    return dialog->findChild<Control*>(QString::number(id));
}

bool Grab(QWidget* window, const fs::path& file) {
    QApplication::processEvents();
    const QRect frame = window->frameGeometry();
    const QPixmap shot =
        window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
    const bool saved = shot.save(QString::fromStdString(file.string()));
    fprintf(stderr, "%s %s (%dx%d)\n", saved ? "wrote" : "could not write", file.c_str(),
            shot.width(), shot.height());
    return saved;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: radio_screenshots OUTPUT_FOLDER\n");
        return 2;
    }
    const fs::path output = fs::absolute(argv[1]);
    const std::string source = ORVEX_SCREENSHOT_SOURCE_DIR;

    // A start directory of its own, as the tests make one, and a fresh data folder.
    TempDir root;
    const fs::path start = root.Path() / "start";
    setenv("ORVEX_SOURCE_DIR", source.c_str(), 0);
    setenv("ORVEX_STAGE_DIR", ORVEX_SCREENSHOT_STAGE_DIR, 0);
    MakeStartDirectory(start, true);
    fs::current_path(start);
    setenv("XDG_DATA_HOME", (root.Path() / "data").c_str(), 1);

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvex"));
    InstallQtPlatformGlue();
    InstallFontChooser();
    InstallFileChooser();
    COrvexApp app;
    app.SetFrameFactory([](COrvexDoc& doc) { return std::make_unique<CMainFrame>(doc); });
    if (!app.InitInstance())
        return 1;
    COrvexDoc& doc = *app.GetDocument();
    auto* frame = static_cast<CMainFrame*>(app.GetMainWnd());
    frame->move(0, 0);

    // Real stations, with their lists.
    CRadioBrowseDb& db = doc.m_radioDb;
    CString error;
    if (!db.ParseStationFile(CString(source + "/fixtures/radio-stations-sample-500.xml"), &error))
        return 1;
    db.BuildCountryCodesArray();
    db.SetCountryCodesUsed();
    db.BuildTagArray(5);
    db.BuildStateArray();
    db.BuildLanguageCodesArray();
    db.ResolveLanguageCodes();
    db.SetLanguageCodesUsed();

    bool ok = true;
    WhenOpen(QStringLiteral("152"), [&](QWidget* dlg) {
        dlg->move(40, 40);
        auto* country = Child<QComboBox>(dlg, 1059);
        const int mexico = country->findText(QStringLiteral("Mexico"));
        country->setCurrentIndex(mexico);
        emit country->activated(mexico);
        Child<QPushButton>(dlg, 1066)->click();
        QHeaderView* header = Child<QTableView>(dlg, 1077)->horizontalHeader();
        emit header->sectionClicked(0);
        Child<QTableView>(dlg, 1077)->selectRow(2);
        QTest::qWait(300);
        ok = Grab(dlg, output / "screenshot-radio-search.png") && ok;
        Child<QPushButton>(dlg, 2)->click();
        return true;
    });
    frame->CommandAction(ID_RADIO_SEARCH)->trigger();

    // An update on its way down, slowly enough to be seen.
    TestHttpServer server;
    server.Trickle("/xml/stations?limit=1000000", StationDirectoryWriter().Document(21000),
                   64 * 1024, 25);
    doc.m_serverUrl = CString(server.Url(""));
    WhenOpen(QStringLiteral("153"), [&, pressed = false, grabbed = false](QWidget* dlg) mutable {
        auto* update = static_cast<CRadioBrowseUpdateDlg*>(dlg);
        if (!pressed) {
            dlg->move(40, 40);
            Child<QPushButton>(dlg, 1056)->click();
            pressed = true;
            return false;
        }
        auto* bar = Child<QProgressBar>(dlg, 1060);
        if (!grabbed && Child<QPushButton>(dlg, 2)->isEnabled() && bar->value() >= 9 &&
            update->m_text.Find(CString(u"Downloading")) >= 0) {
            ok = Grab(dlg, output / "screenshot-radio-update.png") && ok;
            grabbed = true;
            Child<QPushButton>(dlg, 2)->click();
            return false;
        }
        if (Child<QPushButton>(dlg, 1)->isEnabled() &&
            update->m_text.Find(CString(u"failed.")) >= 0) {
            Child<QPushButton>(dlg, 1)->click();
            return true;
        }
        return false;
    });
    frame->CommandAction(ID_RADIO_UPDATE)->trigger();
    return ok ? 0 : 1;
}
