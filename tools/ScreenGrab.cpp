// Saves what the X display shows as a PNG: screengrab OUT.png [WIDTH]
// Used by the screenshot script; the picture of a playing video is in the
// display's windows, not in any widget's own painting. With WIDTH the image
// is scaled down to that width.
#include <cstdio>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>

int main(int argc, char** argv) {
    if (argc < 2) {
        fprintf(stderr, "usage: screengrab OUT.png [WIDTH]\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication application(argc, argv);
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) {
        fprintf(stderr, "screengrab: no screen\n");
        return 1;
    }
    QImage image = screen->grabWindow(0).toImage();
    if (argc > 2) {
        const int width = atoi(argv[2]);
        if (width > 0 && width < image.width())
            image = image.scaledToWidth(width, Qt::SmoothTransformation);
    }
    if (image.isNull() || !image.save(QString::fromLocal8Bit(argv[1]))) {
        fprintf(stderr, "screengrab: could not save %s\n", argv[1]);
        return 1;
    }
    return 0;
}
