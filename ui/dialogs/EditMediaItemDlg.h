// "Edit MediaItem": the type, name, location and favourite mark of one item.
// OK refuses an empty name, an empty location and the unknown type, then
// says which of the fields changed against m_item.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class QLineEdit;

class CEditMediaItemDlg : public COrvexDialog, public CEditMediaItemFields {
public:
    explicit CEditMediaItemDlg(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void OnOK() override;

private:
    QComboBox* m_typeList;
    QLineEdit* m_nameEdit;
    QLineEdit* m_locationEdit;
    QCheckBox* m_favoriteCheck;
};
