// The one top-level window: the menu, the status bar and the right and left
// panes under them.
#pragma once
#include <QMainWindow>
#include <map>

#include "app/MainFrameLink.h"

class COrvexDoc;
class QAction;

class CMainFrame : public QMainWindow, public IMainFrame, public CMessageTarget {
public:
    explicit CMainFrame(COrvexDoc& document);
    ~CMainFrame() override;

    // IMainFrame
    void ShowFrame() override;
    void StopPlaybackForExit() override;
    HWND GetFrameHwnd() const override { return GetSafeHwnd(); }

    LRESULT OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // The menu entry of a command id, for the handlers that enable them.
    QAction* CommandAction(int id) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateMenus();
    QAction* AddCommand(class QMenu* menu, int id, const QString& text);
    void OnAbout();

    COrvexDoc& m_document;
    std::map<int, QAction*> m_commands;
};
