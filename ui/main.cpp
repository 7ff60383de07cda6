#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

#include <QApplication>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/base/Version.h"
#include "platform/disc/AudioCdFolders.h"
#include "platform/qt/QtGlue.h"
#include "ui/CommandLine.h"
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
    // Without a display Qt would abort; say why and leave instead.
    auto display = std::make_unique<CDisplayCheck>();
    if (!display->MissingReason().empty()) {
        fprintf(stderr, "%s\n", display->MissingReason().c_str());
        return 1;
    }
    display->PreferX11UnderWayland();

    QApplication application(argc, argv);
    display.reset();
    CDisplayCheck::KeepPictureOnX11(QGuiApplication::platformName());
    QApplication::setApplicationName(QStringLiteral("Orvex"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvex"));
    QApplication::setDesktopFileName(QStringLiteral("io.sourceforge.orvex"));
    InstallQtPlatformGlue();
    InstallFontChooser();
    InstallFileChooser();
    InstallAudioCdFolders();

    COrvexApp app;
    app.SetFrameFactory([](COrvexDoc& document) { return std::make_unique<CMainFrame>(document); });
    if (!app.InitInstance())
        return 1;
    if (argc > 1) {
        if (CMainFrame* frame = GetOrvexFrame())
            frame->PlayAtStart(
                MediumFromArgument(argv[1], std::filesystem::current_path().string()));
    }
    return QApplication::exec();
}
