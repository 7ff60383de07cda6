// "Import Contents Media": the source of an import. The four source boxes act
// as one group of exclusive choices, and each click sets, clears, enables and
// disables its neighbours so that the dialog always offers what the chosen
// format can do: a contents file can only overwrite, a playlist can only be
// placed under a topic, a Media Record file leaves both open.
#pragma once
#include "app/DocDialogs.h"
#include "ui/dialogs/OrvexDialog.h"

class CDialogScroller;
class QLineEdit;

class CImportDlg : public COrvexDialog, public CImportFields {
public:
    explicit CImportDlg(QWidget* parent = nullptr);

    CDialogScroller* Scroller() const { return m_scroller; }

protected:
    void OnInitDialog() override;
    void OnOK() override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Controls to fields (save) or fields to controls.
    void UpdateData(bool save);
    void OnDat();
    void OnText();
    void OnPlaylist(QCheckBox* box);
    void OnOverwrite();
    void OnPlace();
    void OnBrowse();
    void SetTopic(const QString& text, bool enabled);

    QLineEdit* m_pathEdit;
    QLineEdit* m_topicEdit;
    QCheckBox* m_datCheck;
    QCheckBox* m_m3uCheck;
    QCheckBox* m_textCheck;
    QCheckBox* m_plsCheck;
    QCheckBox* m_overwriteCheck;
    QCheckBox* m_placeCheck;
    CDialogScroller* m_scroller = nullptr;
    bool m_opened = false;
};
