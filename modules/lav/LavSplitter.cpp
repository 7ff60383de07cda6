#include "modules/lav/LavSplitter.h"

#include <chrono>

namespace {

// How long the upstream filter may take to deliver enough of its stream to
// tell what it holds. A disc may have to spin up first.
constexpr std::chrono::seconds kSearchTimeout{20};

// The filter's bin: errors raised while the streams are still being looked
// for are the connection's failure, and must not reach the graph as an
// aborted playback.
struct OrvexSplitterBin {
    GstBin parent;
    CLavSplitter* owner;
};
struct OrvexSplitterBinClass {
    GstBinClass parent_class;
};

G_DEFINE_TYPE(OrvexSplitterBin, orvex_splitter_bin, GST_TYPE_BIN)

void HandleMessage(GstBin* bin, GstMessage* message) {
    CLavSplitter* owner = reinterpret_cast<OrvexSplitterBin*>(bin)->owner;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR && owner && owner->ClaimError()) {
        gst_message_unref(message);
        return;
    }
    GST_BIN_CLASS(orvex_splitter_bin_parent_class)->handle_message(bin, message);
}

void orvex_splitter_bin_class_init(OrvexSplitterBinClass* klass) {
    GST_BIN_CLASS(klass)->handle_message = HandleMessage;
}

void orvex_splitter_bin_init(OrvexSplitterBin* bin) {
    bin->owner = nullptr;
}

// The input answers for its upstream that the bytes come pushed, never
// pulled: the upstream filters push from the moment their pin is linked, and
// a demuxer that chose to pull would take the stream over from under that
// running push.
GstPadProbeReturn OfferPushOnly(GstPad*, GstPadProbeInfo* info, gpointer) {
    GstQuery* query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_SCHEDULING)
        return GST_PAD_PROBE_OK;
    gst_query_set_scheduling(query, GST_SCHEDULING_FLAG_SEQUENTIAL, 1, -1, 0);
    gst_query_add_scheduling_mode(query, GST_PAD_MODE_PUSH);
    return GST_PAD_PROBE_HANDLED;
}

// A failed search for streams is this filter's failure: the upstream
// filter's source just stops, quietly, instead of raising a data flow error
// of its own.
GstFlowReturn ShieldUpstream(GstObject* parent, GstFlowReturn flow) {
    CLavSplitter* owner = reinterpret_cast<OrvexSplitterBin*>(parent)->owner;
    if (flow == GST_FLOW_ERROR && owner && owner->SearchFailed())
        return GST_FLOW_FLUSHING;
    return flow;
}

GstFlowReturn ChainInput(GstPad* pad, GstObject* parent, GstBuffer* buffer) {
    return ShieldUpstream(parent, gst_proxy_pad_chain_default(pad, parent, buffer));
}

GstFlowReturn ChainInputList(GstPad* pad, GstObject* parent, GstBufferList* list) {
    return ShieldUpstream(parent, gst_proxy_pad_chain_list_default(pad, parent, list));
}

GstElement* NewSplitterBin() {
    return GST_ELEMENT(g_object_new(orvex_splitter_bin_get_type(), "name", "lavsplitter", nullptr));
}

} // namespace

IUnknown* NewLavSplitter() {
    return static_cast<IBaseFilter*>(new CLavSplitter);
}

CLavSplitter::CLavSplitter() : CLavSplitterStreams(NewSplitterBin()) {
    reinterpret_cast<OrvexSplitterBin*>(m_bin)->owner = this;
    GstPad* input = gst_ghost_pad_new_no_target("Input", GST_PAD_SINK);
    gst_pad_add_probe(input, GST_PAD_PROBE_TYPE_QUERY_UPSTREAM, OfferPushOnly, nullptr, nullptr);
    gst_pad_set_chain_function(input, ChainInput);
    gst_pad_set_chain_list_function(input, ChainInputList);
    m_input = AddPin(u"Input", PINDIR_INPUT, input, MEDIATYPE_Stream);
}

CLavSplitter::~CLavSplitter() {
    // No streaming thread may reach this object once it is going.
    gst_element_set_state(m_bin, GST_STATE_NULL);
    reinterpret_cast<OrvexSplitterBin*>(m_bin)->owner = nullptr;
}

bool CLavSplitter::AcceptsMajor(CGstPin* pin, REFGUID) {
    // A byte stream is described by its container (audio/x-wav for one), so
    // the input takes whatever major type the upstream pin states.
    return pin == m_input;
}

std::vector<GstCaps*> CLavSplitter::OfferedCaps(CGstPin* pin) {
    // Whatever container comes in, the input stays a byte stream.
    if (pin == m_input)
        return {nullptr};
    return CLavSplitterStreams::OfferedCaps(pin);
}

bool CLavSplitter::ClaimError() {
    std::lock_guard<std::mutex> lock(m_searchLock);
    if (m_search != Search::Running && m_search != Search::Failed)
        return false;
    m_search = Search::Failed;
    m_searchDone.notify_all();
    return true;
}

bool CLavSplitter::SearchFailed() {
    std::lock_guard<std::mutex> lock(m_searchLock);
    return m_search == Search::Failed;
}

void CLavSplitter::OnAllStreamsFound() {
    std::lock_guard<std::mutex> lock(m_searchLock);
    if (m_search == Search::Running)
        m_search = Search::Found;
    m_searchDone.notify_all();
}

HRESULT CLavSplitter::AwaitStreams() {
    std::unique_lock<std::mutex> lock(m_searchLock);
    bool ended =
        m_searchDone.wait_for(lock, kSearchTimeout, [this] { return m_search != Search::Running; });
    if (!ended) {
        m_search = Search::Failed;
        return VFW_E_TIMEOUT;
    }
    return m_search == Search::Found ? S_OK : VFW_E_UNKNOWN_FILE_TYPE;
}

HRESULT CLavSplitter::OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps*) {
    if (pin != m_input)
        return VFW_E_TYPE_NOT_ACCEPTED;
    // The streams are looked for once; a filter that has searched is done.
    if (m_searched)
        return VFW_E_WRONG_STATE;
    IGstPin* other = nullptr;
    if (FAILED(connector->QueryInterface(IID_IGstPin, reinterpret_cast<void**>(&other))))
        return VFW_E_TYPE_NOT_ACCEPTED;
    GstPad* upstream = other->GetPad();
    other->Release();
    if (!upstream || gst_pad_is_linked(upstream))
        return VFW_E_ALREADY_CONNECTED;
    // Data can only flow once the bin stands in the graph's paused pipeline.
    if (!GST_OBJECT_PARENT(m_bin))
        return VFW_E_NOT_IN_GRAPH;

    m_demuxer = MakeDemuxer("decodebin");
    if (!m_demuxer)
        return E_FAIL;
    m_searched = true;
    gst_bin_add(GST_BIN(m_bin), m_demuxer);
    GstPad* sink = gst_element_get_static_pad(m_demuxer, "sink");
    gst_ghost_pad_set_target(GST_GHOST_PAD(m_input->GetPad()), sink);
    gst_object_unref(sink);
    {
        std::lock_guard<std::mutex> lock(m_searchLock);
        m_search = Search::Running;
    }
    // The upstream filters of this graph push their bytes as soon as their
    // pin is linked, so the demuxer is ready for them before the link.
    HRESULT hr = E_FAIL;
    if (gst_element_sync_state_with_parent(m_demuxer) &&
        GST_PAD_LINK_SUCCESSFUL(gst_pad_link(upstream, m_input->GetPad())))
        hr = AwaitStreams();
    if (SUCCEEDED(hr) && Pins().size() < 2)
        hr = VFW_E_UNKNOWN_FILE_TYPE;
    if (FAILED(hr))
        DropDemuxer(upstream);
    return hr;
}

void CLavSplitter::DropDemuxer(GstPad* upstream) {
    {
        // The search stays failed, so that a late error is still its own.
        std::lock_guard<std::mutex> lock(m_searchLock);
        m_search = Search::Failed;
    }
    // Stopped before it is unlinked, the upstream meets a flushing pad and
    // pauses quietly, where an unlinked one would raise an error.
    gst_element_set_state(m_demuxer, GST_STATE_NULL);
    if (GST_PAD_PEER(m_input->GetPad()) == upstream)
        gst_pad_unlink(upstream, m_input->GetPad());
    gst_ghost_pad_set_target(GST_GHOST_PAD(m_input->GetPad()), nullptr);
    ReleaseStreams();
    gst_bin_remove(GST_BIN(m_bin), m_demuxer);
    m_demuxer = nullptr;
}
