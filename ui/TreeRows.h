// The data a tree row carries: its text, its item data (a topic's position
// among its siblings, else 0), a drive row's root, and the mark of the
// placeholder that gives a closed row its expand button.
#pragma once
#include <QTreeWidgetItem>

#include "app/OrvexDoc.h"
#include "platform/qt/QtGlue.h"
#include "ui/PaneIcons.h"

constexpr int kItemDataRole = Qt::UserRole;
constexpr int kRootRole = Qt::UserRole + 1;
constexpr int kPlaceholderRole = Qt::UserRole + 2;

inline QTreeWidgetItem* NewRow(const QString& text, PaneIconId icon, int itemData) {
    auto* row = new QTreeWidgetItem(QStringList(text));
    row->setIcon(0, PaneIcon(icon));
    row->setData(0, kItemDataRole, itemData);
    return row;
}

inline QTreeWidgetItem* NewPlaceholderRow() {
    QTreeWidgetItem* row = NewRow(QStringLiteral("temp"), ICON_MEDIA_ITEM, 0);
    row->setData(0, kPlaceholderRole, true);
    return row;
}

inline bool IsPlaceholderRow(const QTreeWidgetItem* row) {
    return row && row->data(0, kPlaceholderRole).toBool();
}

inline bool IsFavoritesRow(const QTreeWidgetItem* row) {
    return row && row->text(0) == ToQString(CString(kFavoritesName));
}
