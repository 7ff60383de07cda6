// The application object: the start directory, the handles of the live
// windows, the status slot shared with worker threads, and start-up.
#pragma once
#include <functional>
#include <memory>
#include <mutex>

#include "platform/base/AppContext.h"
#include "platform/base/CString.h"
#include "platform/base/Window.h"

class COrvexDoc;
class IMainFrame;
class COrvexSplitterView;

constexpr UINT ID_APP_ABOUT = 57664;

class COrvexApp : public IAppContext {
public:
    // Builds the main window for a document; set by the user interface
    // before InitInstance. Without one the program runs with no window.
    using FrameFactory = std::function<std::unique_ptr<IMainFrame>(COrvexDoc&)>;

    COrvexApp();
    ~COrvexApp() override;
    COrvexApp(const COrvexApp&) = delete;
    COrvexApp& operator=(const COrvexApp&) = delete;

    COrvexDoc* m_pDoc = nullptr;
    HWND m_hwndControls = nullptr;
    HWND m_hwndSplitterView = nullptr;
    HWND m_hwndTree = nullptr;
    HWND m_hwndList = nullptr;
    HWND m_hwndVideo = nullptr;
    HWND m_hwndRightPane = nullptr;
    HWND m_hwndDvdNav = nullptr;
    COrvexSplitterView* m_pSplitterView = nullptr;
    UINT m_cfMediaItem = 0;
    CString m_startDirectory;
    std::mutex m_statusLock;
    CString m_statusText;

    void SetFrameFactory(FrameFactory factory) { m_frameFactory = std::move(factory); }
    BOOL InitInstance();
    // Runs the exit sequence: the document's SaveModified.
    BOOL ExitInstance();

    BOOL GetUserDataFolder(CString& out);
    void SetUpdateStatus(const CString& text) override;
    BOOL GetUpdateStatus(CString& out) override;
    CString GetStartDirectory() const override { return m_startDirectory; }
    HWND GetDvdNavWindow() const override { return m_hwndDvdNav; }

    IMainFrame* GetMainWnd() const { return m_pMainWnd.get(); }
    COrvexDoc* GetDocument() const { return m_document.get(); }

    // The text of the About box.
    CString GetAboutText() const;

private:
    FrameFactory m_frameFactory;
    std::unique_ptr<COrvexDoc> m_document;
    std::unique_ptr<IMainFrame> m_pMainWnd;
};

// The one application object of the process, or null before it exists.
COrvexApp* AfxGetOrvexApp();
// The main window, or null when there is none.
IMainFrame* GetMainFrame();
