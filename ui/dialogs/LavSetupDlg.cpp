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

void CLavSetupDlg::OnInitDialog() {
    m_wma2Check->setChecked(m_bWma2 != FALSE);
    m_wmaProCheck->setChecked(m_bWmaPro != FALSE);
    m_wmaAllCheck->setChecked(m_bWmaAll != FALSE);
    m_stereoCheck->setChecked(m_bStereoSpeakers != FALSE);
}

void CLavSetupDlg::UseDefaults() {
    // The decoder's own defaults: every switch off, unlike a fresh document.
    m_bWma2 = m_bWmaPro = m_bWmaAll = m_bStereoSpeakers = FALSE;
    OnInitDialog();
    m_bChanged = TRUE;
}

void CLavSetupDlg::OnOK() {
    m_bWma2 = m_wma2Check->isChecked();
    m_bWmaPro = m_wmaProCheck->isChecked();
    m_bWmaAll = m_wmaAllCheck->isChecked();
    m_bStereoSpeakers = m_stereoCheck->isChecked();
    EndOK();
}
