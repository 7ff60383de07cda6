#include "ui/AppIcon.h"

QIcon OrvexIcon() {
    // Rendered from the one drawing at build time; the same files go into the
    // desktop's icon theme.
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/%1x%1/apps/io.sourceforge.orvex.png").arg(size));
    return icon;
}
