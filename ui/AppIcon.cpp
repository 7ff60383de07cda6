#include "ui/AppIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

QPixmap DrawIcon(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x1f, 0x5f, 0xa8));
    p.drawEllipse(QRectF(s * 0.04, s * 0.04, s * 0.92, s * 0.92));
    QPainterPath play;
    play.moveTo(s * 0.40, s * 0.28);
    play.lineTo(s * 0.74, s * 0.50);
    play.lineTo(s * 0.40, s * 0.72);
    play.closeSubpath();
    p.setBrush(Qt::white);
    p.drawPath(play);
    return pixmap;
}

} // namespace

QIcon OrvexIcon() {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128})
        icon.addPixmap(DrawIcon(size));
    return icon;
}
