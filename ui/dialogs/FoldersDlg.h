// "Set Folder Paths": the folders where browsing for video files and for
// contents files starts. The edits are read-only: the Browse buttons and their
// folder pickers are the only way in, and OK checks nothing.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class QLineEdit;

class CFoldersDlg : public COrvexDialog, public CFoldersFields {
public:
    explicit CFoldersDlg(QWidget* parent = nullptr);

protected:
    void OnInitDialog() override;

private:
    void Browse(const char16_t* prompt, CString& field);
    void FillControls();

    QLineEdit* m_videoEdit;
    QLineEdit* m_contentsEdit;
    QLineEdit* m_recordingsEdit;
};
