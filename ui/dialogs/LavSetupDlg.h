// "LAV Filters Setup": the four choices of the audio decoder. Any click on a
// box, and "Use Default LAV Settings" (all four off), marks the choices as
// changed; the document reads them back after OK.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class CLavSetupDlg : public COrvexDialog, public CLavSetupFields {
public:
    explicit CLavSetupDlg(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void OnOK() override;

private:
    void UpdateData(bool save);
    void UseDefaults();

    QCheckBox* m_wma2Check;
    QCheckBox* m_wmaProCheck;
    QCheckBox* m_wmaAllCheck;
    QCheckBox* m_stereoCheck;
};
