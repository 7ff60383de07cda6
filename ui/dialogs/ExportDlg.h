// "Export Contents Media": the target of an export and its options. The three
// form boxes act as one group; choosing one sets, clears, enables and
// disables the option boxes that the form can use.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class QLineEdit;

class CExportDlg : public COrvexDialog, public CExportFields {
public:
    explicit CExportDlg(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void OnOK() override;

private:
    void UpdateData(bool save);
    // Only a form box that is now set has an effect.
    void OnForm(QCheckBox* box);
    void OnBrowse();
    static void SetOption(QCheckBox* box, bool checked, bool enabled);

    QLineEdit* m_pathEdit;
    QCheckBox* m_excludeCheck;
    QCheckBox* m_textCheck;
    QCheckBox* m_datCheck;
    QCheckBox* m_unicodeCheck;
    QCheckBox* m_aliasesCheck;
    QCheckBox* m_m3uCheck;
};
