// orvexctl radio-update: the whole update of the radio database over the
// network, through the document as the program runs it, with the status
// texts on the console.
#include <cstdio>

#include "app/MainFrameLink.h"
#include "app/OrvexApp.h"
#include "app/OrvexDoc.h"
#include "tools/CtlCommand.h"
#include "tools/commands/RadioConsole.h"

namespace {

// Stands for the main window: hands the job's end to the document.
class CConsoleFrame : public IMainFrame, public CMessageTarget {
public:
    explicit CConsoleFrame(COrvexDoc& doc) : m_doc(doc) {}
    void ShowFrame() override {}
    void StopPlaybackForExit() override {}
    HWND GetFrameHwnd() const override { return GetSafeHwnd(); }
    LRESULT OnWindowMessage(UINT message, WPARAM, LPARAM) override {
        if (message == UM_UPDATE_DONE)
            m_succeeded = true;
        m_doc.OnRadioJobMessage(message);
        return 0;
    }
    bool Succeeded() const { return m_succeeded; }

private:
    COrvexDoc& m_doc;
    bool m_succeeded = false;
};

int RunRadioUpdate(const CtlArgs& args) {
    CString listUrl;
    CString server;
    for (size_t i = 0; i < args.size(); ++i) {
        if (i + 1 < args.size() && args[i] == "--server-list-url")
            listUrl = CString(args[++i]);
        else if (i + 1 < args.size() && args[i] == "--server")
            server = CString(args[++i]);
        else
            return CtlUsageError("radio-update");
    }
    COrvexApp app;
    CConsoleFrame* frame = nullptr;
    app.SetFrameFactory([&frame](COrvexDoc& doc) -> std::unique_ptr<IMainFrame> {
        auto made = std::make_unique<CConsoleFrame>(doc);
        frame = made.get();
        return made;
    });
    if (!app.InitInstance())
        return 1;
    COrvexDoc& doc = *app.GetDocument();
    if (!server.IsEmpty()) {
        while (server.Right(1) == u"/")
            server.Truncate(server.GetLength() - 1);
        doc.m_serverUrl = server;
    } else {
        doc.m_serverListUrl = listUrl;
        if (!doc.ChooseRadioServer())
            return 1;
    }
    printf("Updates are obtained from:\n  %s.\n", doc.m_serverUrl.ToUtf8().c_str());
    CConsoleProgress progress;
    doc.StartRadioUpdate(progress.GetSafeHwnd());
    while (!progress.Idle())
        PumpMessages(100);
    if (!frame->Succeeded())
        return 1;
    printf("%d stations in %s/RadioBrowse.dat\n", doc.m_radioDb.m_stations.GetSize(),
           doc.m_dataFolder.ToUtf8().c_str());
    return 0;
}

const CtlCommandRegistrar kRegistrar(
    "radio-update", "[--server-list-url URL] [--server URL]",
    "update the radio database in the data folder from a Radio Browser server (a random one "
    "of the server list, or the one given)",
    RunRadioUpdate);

} // namespace
