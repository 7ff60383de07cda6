#include <QApplication>

#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "platform/qt/QtGlue.h"
#include "ui/FileChooser.h"
#include "ui/FontChooser.h"
#include "ui/MainFrame.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvex"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvex"));
    QApplication::setDesktopFileName(QStringLiteral("orvex"));
    InstallQtPlatformGlue();
    InstallFontChooser();
    InstallFileChooser();

    COrvexApp app;
    app.SetFrameFactory([](COrvexDoc& document) { return std::make_unique<CMainFrame>(document); });
    if (!app.InitInstance())
        return 1;
    return QApplication::exec();
}
