#include "ui/dialogs/TransferProgressDlg.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimerEvent>
#include <QVBoxLayout>

#include "platform/base/MessageBox.h"
#include "platform/qt/QtGlue.h"
#include "ui/dialogs/OrvexDialog.h"

namespace {

// How often the dialog looks at the transfer.
constexpr int kPollMilliseconds = 50;

QString Kilobytes(uint64_t bytes) {
    return QString::number((bytes + 1023) / 1024);
}

} // namespace

CTransferProgressDlg::CTransferProgressDlg(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("CTransferProgressDlg"));
    setWindowTitle(QStringLiteral("Downloading Playlist"));
    m_status = new QLabel(this);
    m_status->setMinimumWidth(380);
    m_status->setWordWrap(true);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("progress"));
    m_bar->setTextVisible(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_cancel = buttons->button(QDialogButtonBox::Cancel);
    SetControlId(m_cancel, IDCANCEL);
    connect(m_cancel, &QPushButton::clicked, this, &CTransferProgressDlg::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_status);
    layout->addWidget(m_bar);
    layout->addWidget(buttons);
}

TransferOutcome CTransferProgressDlg::Run(const CString& url, const CString& target,
                                          unsigned maxBytes, CString* error) {
    m_maxBytes = maxBytes;
    m_status->setText(QStringLiteral("Downloading %1").arg(ToQString(url)));
    m_bar->setRange(0, static_cast<int>(maxBytes));
    m_bar->setValue(0);
    m_bar->setFormat(QStringLiteral("0 KB"));
    m_worker.Start(url, target, maxBytes);
    m_pollTimer = startTimer(kPollMilliseconds);
    exec();
    killTimer(m_pollTimer);
    const BOOL ok = m_worker.Wait();
    // A Cancel that came as the last bytes did still means: import nothing.
    if (m_cancelRequested || m_worker.WasCancelled())
        return TRANSFER_CANCELLED;
    if (ok)
        return TRANSFER_DONE;
    if (error)
        *error = m_worker.Error();
    return TRANSFER_FAILED;
}

void CTransferProgressDlg::ShowProgress() {
    const uint64_t received = m_worker.Received();
    const uint64_t total = m_worker.Total();
    // A size the server announces within the limit is the better measure.
    const uint64_t whole = total > 0 && total <= m_maxBytes ? total : m_maxBytes;
    m_bar->setMaximum(static_cast<int>(whole));
    m_bar->setValue(static_cast<int>(std::min(received, whole)));
    m_bar->setFormat(
        total > 0 ? QStringLiteral("%1 KB of %2 KB").arg(Kilobytes(received), Kilobytes(total))
                  : QStringLiteral("%1 KB").arg(Kilobytes(received)));
}

void CTransferProgressDlg::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_pollTimer)
        return QDialog::timerEvent(event);
    ShowProgress();
    if (m_worker.IsDone())
        done(QDialog::Accepted);
}

void CTransferProgressDlg::reject() {
    // Cancel, Escape or the window's close: the transfer stops at its next
    // progress call, and the dialog stays until it has.
    m_cancelRequested = true;
    m_worker.Cancel();
    m_cancel->setEnabled(false);
    m_status->setText(QStringLiteral("Canceling download."));
}
