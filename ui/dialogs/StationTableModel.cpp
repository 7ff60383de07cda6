#include "ui/dialogs/StationTableModel.h"

#include <algorithm>

#include "platform/qt/QtGlue.h"
#include "radio/StationText.h"

CStationTableModel::CStationTableModel(const CStationAr& stations, QObject* parent)
    : QAbstractTableModel(parent), m_stations(stations) {}

void CStationTableModel::Fill(const std::vector<int>& positions, int count) {
    beginResetModel();
    const size_t rows = std::min(positions.size(), static_cast<size_t>(std::max(count, 0)));
    m_rows.assign(positions.begin(), positions.begin() + static_cast<long>(rows));
    endResetModel();
}

void CStationTableModel::DeleteAllRows() {
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

const CStation& CStationTableModel::StationAt(int row) const {
    return m_stations[m_rows.at(static_cast<size_t>(row))];
}

int CStationTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CStationTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : COLUMNS;
}

QVariant CStationTableModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= rowCount())
        return QVariant();
    const int position = m_rows[static_cast<size_t>(index.row())];
    // A table that changed under the rows shows them empty rather than
    // reading past its end.
    if (position < 0 || position >= m_stations.GetSize())
        return QVariant();
    const CStation& station = m_stations[position];
    switch (index.column()) {
    case NAME:
        return ToQString(StationText(station.m_name));
    case VOTES:
        return QString::number(station.m_votes);
    case CLICKS:
        return QString::number(station.m_clicks);
    case URL:
        return ToQString(StationText(station.m_url));
    default:
        return QVariant();
    }
}

QVariant CStationTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return QVariant();
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return QVariant();
    static const char* const kTitles[COLUMNS] = {"Name", "Votes", "Clicks", "URL"};
    return section >= 0 && section < COLUMNS ? QString::fromLatin1(kTitles[section]) : QVariant();
}
