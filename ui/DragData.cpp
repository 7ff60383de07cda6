#include "ui/DragData.h"

#include <QStringList>

QMimeData* MakeMediaRowsMime(const CMediaRowsDrag& drag) {
    QStringList rows;
    rows.reserve(static_cast<qsizetype>(drag.m_rows.size()));
    for (int row : drag.m_rows)
        rows.append(QString::number(row));
    const QString text = QStringLiteral("%1;%2;%3")
                             .arg(drag.m_dropAllowed ? 1 : 0)
                             .arg(drag.m_dragIndex)
                             .arg(rows.join(QLatin1Char(',')));
    auto* data = new QMimeData;
    data->setData(kMediaRowsMime, text.toLatin1());
    return data;
}

bool ReadMediaRowsMime(const QMimeData* data, CMediaRowsDrag& drag) {
    if (!data || !data->hasFormat(kMediaRowsMime))
        return false;
    const QStringList parts =
        QString::fromLatin1(data->data(kMediaRowsMime)).split(QLatin1Char(';'));
    if (parts.size() != 3)
        return false;
    bool ok = false;
    drag = CMediaRowsDrag();
    drag.m_dropAllowed = parts[0] == QStringLiteral("1");
    drag.m_dragIndex = parts[1].toInt(&ok);
    if (!ok)
        return false;
    for (const QString& row : parts[2].split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        drag.m_rows.push_back(row.toInt(&ok));
        if (!ok)
            return false;
    }
    return true;
}
