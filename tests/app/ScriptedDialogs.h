// The document's dialogs answered by the test: each kind records the fields
// it was opened with and answers through a function of the test (Cancel when
// there is none).
#pragma once
#include <functional>

#include "app/DocDialogs.h"
#include "platform/base/MessageBox.h"

template <typename Fields>
struct ScriptedDialog {
    std::function<int(Fields&)> answer;
    Fields opened; // as the command filled it
    int count = 0;

    int Run(Fields& fields) {
        ++count;
        opened = fields;
        return answer ? answer(fields) : IDCANCEL;
    }
};

class ScriptedDialogs : public IDocDialogs {
public:
    ScriptedDialog<CEditMediaItemFields> item;
    ScriptedDialog<CNewTopicFields> topic;
    ScriptedDialog<CFoldersFields> folders;
    ScriptedDialog<CImportPlaylistFields> playlist;
    ScriptedDialog<CLavSetupFields> lav;
    ScriptedDialog<CImportFields> import;
    ScriptedDialog<CExportFields> exportTo;
    std::function<TransferOutcome(const CString& url, const CString& target, CString* error)>
        download;

    int DoModal(CEditMediaItemFields& f) override { return item.Run(f); }
    int DoModal(CNewTopicFields& f) override { return topic.Run(f); }
    int DoModal(CFoldersFields& f) override { return folders.Run(f); }
    int DoModal(CImportPlaylistFields& f) override { return playlist.Run(f); }
    int DoModal(CLavSetupFields& f) override { return lav.Run(f); }
    int DoModal(CImportFields& f) override { return import.Run(f); }
    int DoModal(CExportFields& f) override { return exportTo.Run(f); }
    TransferOutcome Download(const CString& url, const CString& target, unsigned,
                             CString* error) override {
        return download ? download(url, target, error) : TRANSFER_FAILED;
    }
};
