// "Import Playlist": the topic that a playlist item's entries go under, and
// whether the item itself goes afterwards. An empty topic isn't refused here:
// the reader then fails.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class QLineEdit;

class CImportPlaylistDlg : public COrvexDialog, public CImportPlaylistFields {
public:
    explicit CImportPlaylistDlg(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;
    void OnOK() override;

private:
    QCheckBox* m_deleteCheck;
    QLineEdit* m_topicEdit;
};
