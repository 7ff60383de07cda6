// The document's dialogs on Qt: each request of the document runs the real
// dialog, modal over the main window, on a copy of the fields that goes back
// only after OK. Made by the main window, which it belongs to; while it lives
// the document asks through it.
#pragma once
#include <QObject>

#include "app/DocDialogs.h"

class COrvexDoc;
class QWidget;

class CDocDialogs : public QObject, public IDocDialogs {
public:
    CDocDialogs(QWidget* parent, COrvexDoc& doc);
    ~CDocDialogs() override;

    int DoModal(CEditMediaItemFields& fields) override;
    int DoModal(CNewTopicFields& fields) override;
    int DoModal(CFoldersFields& fields) override;
    int DoModal(CImportPlaylistFields& fields) override;
    int DoModal(CLavSetupFields& fields) override;
    int DoModal(CImportFields& fields) override;
    int DoModal(CExportFields& fields) override;
    TransferOutcome Download(const CString& url, const CString& target, unsigned maxBytes,
                             CString* error) override;
    void RunRadioUpdateDialog(const CString& server) override;
    void RunRadioSearchDialog() override;

private:
    QWidget* m_parent;
    COrvexDoc& m_doc;
};
