// The splitter in its plain form: its input pin takes the byte stream of
// another filter's output pin (the CD source's, for one), and as it accepts
// that connection it finds the streams inside and offers each as an output
// pin, just as the source form does when it opens a file.
#pragma once
#include <condition_variable>

#include "modules/lav/LavSplitterStreams.h"

class CLavSplitter : public CLavSplitterStreams {
public:
    CLavSplitter();
    ~CLavSplitter() override;

    bool AcceptsMajor(CGstPin* pin, REFGUID major) override;
    HRESULT OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps* caps) override;
    std::vector<GstCaps*> OfferedCaps(CGstPin* pin) override;

    // From the bin, on the thread that posts it: whether the error belongs
    // to the search for streams, which then fails, rather than to the graph.
    bool ClaimError();
    bool SearchFailed();

protected:
    void OnAllStreamsFound() override;

private:
    enum class Search { Idle, Running, Found, Failed };
    // Waits for the search to end; the outcome as a result code.
    HRESULT AwaitStreams();
    void DropDemuxer(GstPad* upstream);

    CGstPin* m_input;
    GstElement* m_demuxer = nullptr; // owned by the bin
    bool m_searched = false;
    std::mutex m_searchLock;
    std::condition_variable m_searchDone;
    Search m_search = Search::Idle; // under m_searchLock
};

IUnknown* NewLavSplitter();
