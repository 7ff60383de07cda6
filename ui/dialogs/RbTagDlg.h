// One station tag to edit or add, for the radio search's tag list.
#pragma once
#include "platform/base/CString.h"
#include "ui/dialogs/OrvexDialog.h"

class QLineEdit;

class CRbTagDlg : public COrvexDialog {
public:
    explicit CRbTagDlg(QWidget* parent = nullptr);

    CString m_text;
    CString m_title;

protected:
    void OnInitDialog() override;
    void OnOK() override;

private:
    QLineEdit* m_edit;
};
