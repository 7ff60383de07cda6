// "New Topic" / "Edit Topic": a topic's name, typed or picked from the
// predefined names of the alias table, and its media type. A new sub-topic
// keeps its parent's type: the type list is then disabled.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class CNewTopicDlg : public COrvexDialog, public CNewTopicFields {
public:
    explicit CNewTopicDlg(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void OnOK() override;

private:
    QComboBox* m_nameList;
    QComboBox* m_typeList;
};
