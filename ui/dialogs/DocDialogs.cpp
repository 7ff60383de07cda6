#include "ui/dialogs/DocDialogs.h"

#include <QWidget>

#include "app/OrvexDoc.h"
#include "platform/base/MessageBox.h"
#include "ui/dialogs/EditMediaItemDlg.h"
#include "ui/dialogs/ExportDlg.h"
#include "ui/dialogs/FoldersDlg.h"
#include "ui/dialogs/ImportDlg.h"
#include "ui/dialogs/ImportPlaylistDlg.h"
#include "ui/dialogs/LavSetupDlg.h"
#include "ui/dialogs/NewTopicDlg.h"
#include "ui/dialogs/RadioBrowseUpdateDlg.h"
#include "ui/dialogs/RbSearchDlg.h"
#include "ui/dialogs/TransferProgressDlg.h"

namespace {

template <typename Dialog, typename Fields>
int RunOn(QWidget* parent, Fields& fields) {
    Dialog dialog(parent);
    static_cast<Fields&>(dialog) = fields;
    const int answer = dialog.DoModal();
    if (answer == IDOK)
        fields = static_cast<const Fields&>(dialog);
    return answer;
}

} // namespace

CDocDialogs::CDocDialogs(QWidget* parent, COrvexDoc& doc)
    : QObject(parent), m_parent(parent), m_doc(doc) {
    m_doc.SetDialogs(this);
}

CDocDialogs::~CDocDialogs() {
    if (m_doc.GetDialogs() == this)
        m_doc.SetDialogs(nullptr);
}

int CDocDialogs::DoModal(CEditMediaItemFields& fields) {
    return RunOn<CEditMediaItemDlg>(m_parent, fields);
}

int CDocDialogs::DoModal(CNewTopicFields& fields) {
    return RunOn<CNewTopicDlg>(m_parent, fields);
}

int CDocDialogs::DoModal(CFoldersFields& fields) {
    return RunOn<CFoldersDlg>(m_parent, fields);
}

int CDocDialogs::DoModal(CImportPlaylistFields& fields) {
    return RunOn<CImportPlaylistDlg>(m_parent, fields);
}

int CDocDialogs::DoModal(CLavSetupFields& fields) {
    return RunOn<CLavSetupDlg>(m_parent, fields);
}

int CDocDialogs::DoModal(CImportFields& fields) {
    return RunOn<CImportDlg>(m_parent, fields);
}

int CDocDialogs::DoModal(CExportFields& fields) {
    return RunOn<CExportDlg>(m_parent, fields);
}

TransferOutcome CDocDialogs::Download(const CString& url, const CString& target, unsigned maxBytes,
                                      CString* error) {
    CTransferProgressDlg dialog(m_parent);
    return dialog.Run(url, target, maxBytes, error);
}

void CDocDialogs::RunRadioUpdateDialog(const CString& server) {
    CRadioBrowseUpdateDlg dialog(m_parent, &m_doc, server);
    dialog.DoModal();
}

void CDocDialogs::RunRadioSearchDialog() {
    CRbSearchDlg dialog(m_parent, &m_doc);
    dialog.DoModal();
}
