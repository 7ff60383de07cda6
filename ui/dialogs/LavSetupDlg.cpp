#include "ui/dialogs/LavSetupDlg.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

CLavSetupDlg::CLavSetupDlg(QWidget* parent) : COrvexDialog(parent, QStringLiteral("144")) {
    setWindowTitle(QStringLiteral("LAV Filters Setup"));
    m_wma2Check = MakeCheck(this, 1040, QStringLiteral("Enable WMA2 Codec"));
    m_wmaProCheck = MakeCheck(this, 1041, QStringLiteral("Enable WMA PRO  Codec"));
    m_wmaAllCheck = MakeCheck(this, 1042, QStringLiteral("Enable WMA ALL Codec"));
    m_stereoCheck = MakeCheck(this, 1043, QStringLiteral("Enable Stereo Speakers"));
    QPushButton* defaults = MakeButton(this, 1044, QStringLiteral("Use Default LAV Settings"));
    auto* layout = new QVBoxLayout(this);
    for (QCheckBox* box : {m_wma2Check, m_wmaProCheck, m_wmaAllCheck, m_stereoCheck}) {
        layout->addWidget(box);
        connect(box, &QCheckBox::clicked, this, [this] { m_bChanged = TRUE; });
    }
    connect(defaults, &QPushButton::clicked, this, &CLavSetupDlg::UseDefaults);
    layout->addWidget(defaults);
    layout->addWidget(MakeOkCancel());
}

void CLavSetupDlg::UpdateData(bool save) {
    ExchangeChecks({{m_wma2Check, &m_bWma2},
                    {m_wmaProCheck, &m_bWmaPro},
                    {m_wmaAllCheck, &m_bWmaAll},
                    {m_stereoCheck, &m_bStereoSpeakers}},
                   save);
}

void CLavSetupDlg::OnInitDialog() {
    UpdateData(false);
}

void CLavSetupDlg::UseDefaults() {
    // The decoder's own defaults: every switch off, unlike a fresh document.
    m_bWma2 = m_bWmaPro = m_bWmaAll = m_bStereoSpeakers = FALSE;
    UpdateData(false);
    m_bChanged = TRUE;
}

void CLavSetupDlg::OnOK() {
    UpdateData(true);
    EndOK();
}
