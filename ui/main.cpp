#include <cstdio>
#include <cstring>

#include <QApplication>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/Version.h"
#include "platform/qt/QtGlue.h"
#include "ui/FileChooser.h"
#include "ui/FontChooser.h"
#include "ui/MainFrame.h"

int main(int argc, char** argv) {
    // Answered before anything needs a display, so that scripts and package
    // checks can ask on any machine.
    if (argc > 1 && strcmp(argv[1], "--version") == 0) {
        printf("Orvex %s\n", GetProgramVersionText().ToUtf8().c_str());
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvex"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvex"));
    QApplication::setDesktopFileName(QStringLiteral("io.sourceforge.orvex"));
    InstallQtPlatformGlue();
    InstallFontChooser();
    InstallFileChooser();

    COrvexApp app;
    app.SetFrameFactory([](COrvexDoc& document) { return std::make_unique<CMainFrame>(document); });
    if (!app.InitInstance())
        return 1;
    return QApplication::exec();
}
