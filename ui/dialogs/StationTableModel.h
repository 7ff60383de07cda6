// The rows of the radio search's result list: the stations it was last
// filled with, by their places in the station table, shown as people read
// them. The rows are its own, as a list control's are: they stay as they
// were filled while the search's results change, until the list is filled
// or emptied again. Only the rows on screen are ever turned into text, so
// tens of thousands of rows fill and sort at once.
#pragma once
#include <QAbstractTableModel>
#include <vector>

#include "radio/RadioRecords.h"

class CStationTableModel : public QAbstractTableModel {
public:
    enum Column { NAME = 0, VOTES = 1, CLICKS = 2, URL = 3, COLUMNS = 4 };

    explicit CStationTableModel(const CStationAr& stations, QObject* parent = nullptr);

    // The first `count` of `positions` become the rows; the rest are dropped.
    void Fill(const std::vector<int>& positions, int count);
    void DeleteAllRows();
    // The station of a row.
    const CStation& StationAt(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const CStationAr& m_stations;
    std::vector<int> m_rows;
};
