#include "ui/PaneIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <map>

namespace {

void DrawMediaItem(QPainter& p) {
    // A note.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x2d, 0x6c, 0xb5));
    p.drawEllipse(QRectF(2.5, 10, 5, 4));
    p.drawEllipse(QRectF(9.5, 8.5, 5, 4));
    p.setPen(QPen(QColor(0x2d, 0x6c, 0xb5), 1.4));
    p.drawLine(QPointF(7, 12), QPointF(7, 3));
    p.drawLine(QPointF(14, 10.5), QPointF(14, 1.5));
    p.drawLine(QPointF(7, 3), QPointF(14, 1.5));
}

void DrawFolder(QPainter& p, const QColor& color) {
    p.setPen(QPen(color.darker(150), 1));
    p.setBrush(color);
    QPainterPath folder;
    folder.moveTo(1.5, 4.5);
    folder.lineTo(6, 4.5);
    folder.lineTo(7.5, 6);
    folder.lineTo(14.5, 6);
    folder.lineTo(14.5, 13.5);
    folder.lineTo(1.5, 13.5);
    folder.closeSubpath();
    p.drawPath(folder);
}

void DrawStreamTopic(QPainter& p) {
    DrawFolder(p, QColor(0x9c, 0xc8, 0x7a));
    // Waves of a broadcast.
    p.setPen(QPen(QColor(0x2f, 0x5d, 0x1c), 1.2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(8, 10), 0.8, 0.8);
    p.drawArc(QRectF(5, 7, 6, 6), 30 * 16, 120 * 16);
}

void DrawOptical(QPainter& p) {
    p.setPen(QPen(QColor(0x60, 0x60, 0x70), 1));
    p.setBrush(QColor(0xd8, 0xdc, 0xe6));
    p.drawEllipse(QRectF(1.5, 1.5, 13, 13));
    p.setBrush(QColor(0xa8, 0xc4, 0xe8));
    p.drawEllipse(QRectF(4.5, 4.5, 7, 7));
    p.setBrush(Qt::white);
    p.drawEllipse(QRectF(6.5, 6.5, 3, 3));
}

void DrawRemovable(QPainter& p) {
    p.setPen(QPen(QColor(0x40, 0x40, 0x48), 1));
    p.setBrush(QColor(0x8a, 0x8f, 0x9c));
    p.drawRoundedRect(QRectF(2.5, 5.5, 9, 6), 1, 1);
    p.setBrush(QColor(0xd0, 0xd0, 0xd0));
    p.drawRect(QRectF(11.5, 6.5, 3, 4));
    p.setBrush(QColor(0x3c, 0xb0, 0x4c));
    p.setPen(Qt::NoPen);
    p.drawRect(QRectF(4, 7.5, 2, 2));
}

QPixmap Draw(PaneIconId id, int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 16.0, size / 16.0);
    switch (id) {
    case ICON_MEDIA_ITEM:
        DrawMediaItem(p);
        break;
    case ICON_STREAM_TOPIC:
        DrawStreamTopic(p);
        break;
    case ICON_FILE_TOPIC:
        DrawFolder(p, QColor(0xf0, 0xc8, 0x5a));
        break;
    case ICON_OPTICAL:
        DrawOptical(p);
        break;
    case ICON_REMOVABLE:
        DrawRemovable(p);
        break;
    }
    return pixmap;
}

} // namespace

const QIcon& PaneIcon(PaneIconId id) {
    static std::map<PaneIconId, QIcon> icons;
    auto it = icons.find(id);
    if (it == icons.end()) {
        QIcon icon;
        for (int size : {16, 32})
            icon.addPixmap(Draw(id, size));
        it = icons.emplace(id, icon).first;
    }
    return it->second;
}
