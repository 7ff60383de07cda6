#include "ui/dialogs/RadioBrowseUpdateDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "app/OrvexDoc.h"
#include "platform/base/AppContext.h"
#include "platform/base/MessageBox.h"
#include "platform/base/UserMessages.h"
#include "platform/qt/QtGlue.h"

CRadioBrowseUpdateDlg::CRadioBrowseUpdateDlg(QWidget* parent, COrvexDoc* doc, const CString& server)
    : COrvexDialog(parent, QStringLiteral("153")), m_pDoc(doc), m_server(server) {
    setWindowTitle(QStringLiteral("Update Radio Station Database"));
    // No close box: while a job runs only Cancel may be asked for.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);

    auto* intro = new QLabel(QStringLiteral("Updating the Radio Browser Database may take several "
                                            "minutes. You can cancel the opperation at any time "
                                            "with the Cancel Button."),
                             this);
    intro->setWordWrap(true);
    m_update = MakeButton(this, 1056, QStringLiteral("Update Radio Browser"));
    m_status = new QPlainTextEdit(this);
    SetControlId(m_status, 1061);
    m_status->setReadOnly(true);
    m_status->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_status->setMinimumSize(440, 220);
    m_bar = new QProgressBar(this);
    SetControlId(m_bar, 1060);
    m_bar->setTextVisible(false);

    auto* buttons = new QDialogButtonBox(this);
    m_cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    m_close = buttons->addButton(QStringLiteral("Close"), QDialogButtonBox::AcceptRole);
    SetControlId(m_cancel, IDCANCEL);
    SetControlId(m_close, IDOK);
    m_cancel->setAutoDefault(false);
    m_close->setDefault(true);

    connect(m_update, &QPushButton::clicked, this, &CRadioBrowseUpdateDlg::OnUpdateButton);
    connect(m_cancel, &QPushButton::clicked, this, &CRadioBrowseUpdateDlg::OnCancel);
    connect(m_close, &QPushButton::clicked, this, [this] { OnOK(); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_update, 0, Qt::AlignLeft);
    layout->addWidget(m_status, 1);
    layout->addWidget(m_bar);
    layout->addWidget(buttons);
}

void CRadioBrowseUpdateDlg::OnInitDialog() {
    m_text.Format(u"Press the Update button to begin.\r\nUpdates are obtained from:\r\n  %s.",
                  m_server);
    m_bar->setRange(0, 40);
    m_bar->setValue(0);
    m_cancel->setEnabled(false);
    ShowText();
}

void CRadioBrowseUpdateDlg::OnUpdateButton() {
    if (m_pDoc)
        m_pDoc->StartRadioUpdate(GetSafeHwnd());
    m_update->setEnabled(false);
    m_close->setEnabled(false);
    m_cancel->setEnabled(true);
    m_cancel->setFocus();
}

void CRadioBrowseUpdateDlg::OnCancel() {
    AddLine(CString(u"Attempting to cancel update."));
    if (m_pDoc)
        m_pDoc->CancelRadioUpdate();
}

void CRadioBrowseUpdateDlg::reject() {
    if (m_cancel->isEnabled())
        OnCancel();
    else if (m_close->isEnabled())
        COrvexDialog::reject();
}

LRESULT CRadioBrowseUpdateDlg::OnWindowMessage(UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
    case UM_UPDATE_STATUS:
        OnStatusText();
        break;
    case UM_UPDATE_POS:
        // Held at an end, as a progress bar does with a position beyond it.
        m_bar->setValue(std::clamp(static_cast<int>(lParam), m_bar->minimum(), m_bar->maximum()));
        break;
    case UM_UPDATE_RANGE:
        m_bar->setRange(0, static_cast<int>(lParam));
        break;
    case UM_UPDATE_IDLE:
        OnJobIdle();
        break;
    default:
        break;
    }
    return 0;
}

void CRadioBrowseUpdateDlg::OnStatusText() {
    CString text;
    if (AfxGetAppContext().GetUpdateStatus(text) && !text.IsEmpty())
        AddLine(text);
}

void CRadioBrowseUpdateDlg::OnJobIdle() {
    m_update->setEnabled(true);
    m_close->setEnabled(true);
    m_cancel->setEnabled(false);
    m_close->setFocus();
}

void CRadioBrowseUpdateDlg::AddLine(const CString& line) {
    m_text += u"\r\n";
    m_text += line;
    ShowText();
}

void CRadioBrowseUpdateDlg::ShowText() {
    QString shown = ToQString(m_text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    m_status->setPlainText(shown);
    QScrollBar* bar = m_status->verticalScrollBar();
    bar->setValue(bar->maximum());
}
