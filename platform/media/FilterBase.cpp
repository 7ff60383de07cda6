#include <algorithm>
#include <cstring>
#include <functional>

#include "platform/media/GstFilter.h"

// clang-format off
const IID IID_IGstFilter = {0x4F52560B, 0x4746, 0x494C, {0x8C, 0x61, 0x66, 0x69, 0x6C, 0x74, 0x65, 0x72}};
const IID IID_IGstPin = {0x4F52560C, 0x4750, 0x494E, {0x8C, 0x61, 0x70, 0x61, 0x64, 0x70, 0x69, 0x6E}};
// clang-format on

const char* const kGraphEventMessage = "orvex-graph-event";

namespace {

// The one enumerator of this library: hands out the items it was given,
// each made into what the interface gives by produce; dispose lets go of the
// items it holds.
template <typename Interface, typename Item, typename Out>
class CEnumerator final : public Interface {
public:
    using Producer = std::function<Out(Item)>;
    using Disposer = void (*)(Item);

    CEnumerator(REFIID iid, std::vector<Item> items, Producer produce, Disposer dispose)
        : m_iid(iid), m_items(std::move(items)), m_produce(std::move(produce)), m_dispose(dispose) {
    }
    ~CEnumerator() {
        for (Item item : m_items)
            m_dispose(item);
    }
    HRESULT QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv)
            return E_POINTER;
        if (riid == IID_IUnknown || riid == m_iid) {
            *ppv = static_cast<Interface*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return ++m_refs; }
    ULONG Release() override {
        ULONG left = --m_refs;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT Next(ULONG count, Out* out, ULONG* fetched) override {
        if (!out)
            return E_POINTER;
        ULONG n = 0;
        while (n < count && m_next < m_items.size())
            out[n++] = m_produce(m_items[m_next++]);
        if (fetched)
            *fetched = n;
        return n == count ? S_OK : S_FALSE;
    }
    HRESULT Skip(ULONG count) override {
        m_next = std::min(m_items.size(), m_next + count);
        return m_next < m_items.size() ? S_OK : S_FALSE;
    }
    HRESULT Reset() override {
        m_next = 0;
        return S_OK;
    }

private:
    std::atomic<ULONG> m_refs{1};
    GUID m_iid;
    std::vector<Item> m_items;
    Producer m_produce;
    Disposer m_dispose;
    size_t m_next = 0;
};

// A media type a pin offers: its caps, if known, and the major type stated.
struct OfferedType {
    GstCaps* caps;
    GUID major;
};

using CEnumMediaTypes = CEnumerator<IEnumMediaTypes, OfferedType, AM_MEDIA_TYPE*>;
using CEnumPins = CEnumerator<IEnumPins, CGstPin*, IPin*>;

void UnrefOffered(OfferedType type) {
    if (type.caps)
        gst_caps_unref(type.caps);
}

void ReleasePin(CGstPin* pin) {
    pin->Release();
}

bool StartLibrary() {
    return gst_init_check(nullptr, nullptr, nullptr);
}

bool (*g_startLibrary)() = StartLibrary;

} // namespace

void SetPipelineLibraryStart(bool (*start)()) {
    g_startLibrary = start ? start : StartLibrary;
}

bool EnsureGstInit() {
    static bool ok = [] {
        if (!gst_is_initialized() && !g_startLibrary())
            return false;
        // Without a display this sink takes the whole process down when
        // probed; it is never a choice here.
        if (GstPluginFeature* dfb =
                gst_registry_lookup_feature(gst_registry_get(), "dfbvideosink")) {
            gst_plugin_feature_set_rank(dfb, GST_RANK_NONE);
            gst_object_unref(dfb);
        }
        return true;
    }();
    return ok;
}

// ---- CGstPin ----

CGstPin::CGstPin(CGstFilter* filter, const std::u16string& name, PIN_DIRECTION direction,
                 GstPad* pad, REFGUID major, bool majorFixed)
    : m_filter(filter), m_name(name), m_direction(direction), m_pad(pad), m_major(major),
      m_majorFixed(majorFixed) {}

GUID CGstPin::StatedMajor(const GstCaps* caps) const {
    if (m_majorFixed)
        return m_major;
    const GUID& stated = MajorTypeOfCaps(caps);
    return stated == GUID_NULL ? m_major : stated;
}

CGstPin::~CGstPin() = default;

HRESULT CGstPin::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv)
        return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IPin)
        *ppv = static_cast<IPin*>(this);
    else if (riid == IID_IGstPin)
        *ppv = static_cast<IGstPin*>(this);
    else {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG CGstPin::AddRef() {
    return m_filter->AddRef();
}

ULONG CGstPin::Release() {
    return m_filter->Release();
}

HRESULT CGstPin::Connect(IPin* receiver, const AM_MEDIA_TYPE* mt) {
    if (!receiver)
        return E_POINTER;
    if (m_direction != PINDIR_OUTPUT)
        return VFW_E_INVALID_DIRECTION;
    if (m_connected || gst_pad_is_linked(m_pad))
        return VFW_E_ALREADY_CONNECTED;
    IGstPin* other = nullptr;
    if (FAILED(receiver->QueryInterface(IID_IGstPin, reinterpret_cast<void**>(&other))))
        return VFW_E_NO_ACCEPTABLE_TYPES;
    GstPad* otherPad = other->GetPad();
    other->Release();

    // Both filters must stand in the same graph.
    GstObject* mine = gst_object_get_parent(GST_OBJECT(m_filter->GetElement()));
    GstObject* theirs = otherPad ? gst_object_get_parent(GST_OBJECT(otherPad)) : nullptr;
    GstObject* theirGraph = theirs ? gst_object_get_parent(theirs) : nullptr;
    bool sameGraph = mine && mine == theirGraph;
    for (GstObject* o : {mine, theirs, theirGraph}) {
        if (o)
            gst_object_unref(o);
    }
    if (!sameGraph)
        return VFW_E_NOT_IN_GRAPH;

    AM_MEDIA_TYPE* offered = nullptr;
    if (!mt) {
        // The first media type the pin offers.
        std::vector<GstCaps*> all = m_filter->OfferedCaps(this);
        GstCaps* caps = all.empty() ? nullptr : all.front();
        offered = NewMediaType(caps, StatedMajor(caps));
        for (GstCaps* c : all)
            UnrefOffered({c, GUID_NULL});
        mt = offered;
    }
    HRESULT hr = receiver->ReceiveConnection(this, mt);
    DeleteMediaType(offered);
    if (FAILED(hr))
        return hr;
    GstPad* peer = gst_pad_get_peer(m_pad);
    bool linked = peer ? peer == otherPad : GST_PAD_LINK_SUCCESSFUL(gst_pad_link(m_pad, otherPad));
    if (peer)
        gst_object_unref(peer);
    if (!linked) {
        receiver->Disconnect();
        return VFW_E_NO_ACCEPTABLE_TYPES;
    }
    m_connected = true;
    return S_OK;
}

HRESULT CGstPin::ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* mt) {
    if (!connector || !mt)
        return E_POINTER;
    if (m_direction != PINDIR_INPUT)
        return VFW_E_INVALID_DIRECTION;
    if (m_connected)
        return VFW_E_ALREADY_CONNECTED;
    if (!m_filter->AcceptsMajor(this, mt->majortype))
        return VFW_E_TYPE_NOT_ACCEPTED;
    GstCaps* caps = CapsOfMediaType(mt);
    m_connectedMajor = mt->majortype;
    HRESULT hr = m_filter->OnReceiveConnection(this, connector, caps);
    if (caps)
        gst_caps_unref(caps);
    if (SUCCEEDED(hr))
        m_connected = true;
    return hr;
}

HRESULT CGstPin::Disconnect() {
    if (!m_connected)
        return S_FALSE;
    if (GstPad* peer = gst_pad_get_peer(m_pad)) {
        if (m_direction == PINDIR_OUTPUT)
            gst_pad_unlink(m_pad, peer);
        else
            gst_pad_unlink(peer, m_pad);
        gst_object_unref(peer);
    }
    m_connected = false;
    m_filter->OnDisconnect(this);
    return S_OK;
}

HRESULT CGstPin::QueryDirection(PIN_DIRECTION* direction) {
    if (!direction)
        return E_POINTER;
    *direction = m_direction;
    return S_OK;
}

HRESULT CGstPin::QueryId(char16_t* id, ULONG size) {
    if (!id || size == 0)
        return E_POINTER;
    size_t n = std::min<size_t>(m_name.size(), size - 1);
    std::copy(m_name.begin(), m_name.begin() + static_cast<ptrdiff_t>(n), id);
    id[n] = 0;
    return S_OK;
}

HRESULT CGstPin::EnumMediaTypes(IEnumMediaTypes** types) {
    if (!types)
        return E_POINTER;
    std::vector<OfferedType> offered;
    for (GstCaps* caps : m_filter->OfferedCaps(this))
        offered.push_back({caps, StatedMajor(caps)});
    for (const GUID& major : m_filter->FurtherMajors(this))
        offered.push_back({nullptr, major});
    *types = new CEnumMediaTypes(
        IID_IEnumMediaTypes, std::move(offered),
        [](OfferedType type) { return NewMediaType(type.caps, type.major); }, UnrefOffered);
    return S_OK;
}

// ---- CGstFilter ----

CGstFilter::CGstFilter(const char* binName) : CGstFilter((EnsureGstInit(), gst_bin_new(binName))) {}

CGstFilter::CGstFilter(GstElement* bin) : m_bin(bin) {
    gst_object_ref_sink(m_bin);
}

CGstFilter::~CGstFilter() {
    gst_element_set_state(m_bin, GST_STATE_NULL);
    m_pins.clear();
    gst_object_unref(m_bin);
}

HRESULT CGstFilter::QueryInterface(REFIID riid, void** ppv) {
    if (!ppv)
        return E_POINTER;
    if (riid == IID_IUnknown || riid == IID_IBaseFilter)
        *ppv = static_cast<IBaseFilter*>(this);
    else if (riid == IID_IGstFilter)
        *ppv = static_cast<IGstFilter*>(this);
    else
        return QueryOther(riid, ppv);
    AddRef();
    return S_OK;
}

HRESULT CGstFilter::QueryOther(REFIID, void** ppv) {
    *ppv = nullptr;
    return E_NOINTERFACE;
}

ULONG CGstFilter::AddRef() {
    return ++m_refs;
}

ULONG CGstFilter::Release() {
    ULONG left = --m_refs;
    if (left == 0)
        delete this;
    return left;
}

HRESULT CGstFilter::EnumPins(IEnumPins** pins) {
    if (!pins)
        return E_POINTER;
    std::vector<CGstPin*> all = Pins();
    for (CGstPin* p : all)
        p->AddRef();
    *pins = new CEnumPins(
        IID_IEnumPins, std::move(all),
        [](CGstPin* p) -> IPin* {
            p->AddRef();
            return p;
        },
        ReleasePin);
    return S_OK;
}

HRESULT CGstFilter::FindPin(LPCWSTR id, IPin** pin) {
    if (!id || !pin)
        return E_POINTER;
    *pin = nullptr;
    for (CGstPin* p : Pins()) {
        if (p->Name() == id) {
            p->AddRef();
            *pin = p;
            return S_OK;
        }
    }
    return VFW_E_NOT_FOUND;
}

HRESULT CGstFilter::SetSyncSource(IReferenceClock*) {
    // The pipeline keeps one clock for all its elements; a filter has none of
    // its own to drop.
    return S_OK;
}

bool CGstFilter::AcceptsMajor(CGstPin* pin, REFGUID major) {
    return pin->Major() == GUID_NULL || major == pin->Major();
}

HRESULT CGstFilter::OnReceiveConnection(CGstPin*, IPin*, GstCaps*) {
    return VFW_E_TYPE_NOT_ACCEPTED;
}

void CGstFilter::OnDisconnect(CGstPin*) {}

std::vector<GstCaps*> CGstFilter::OfferedCaps(CGstPin* pin) {
    std::vector<GstCaps*> out;
    if (GstCaps* caps = PadCaps(pin->GetPad()))
        out.push_back(caps);
    else if (pin->Major() != GUID_NULL)
        out.push_back(nullptr);
    return out;
}

CGstPin* CGstFilter::AddPin(const std::u16string& name, PIN_DIRECTION direction, GstPad* ghost,
                            REFGUID major, bool majorFixed) {
    gst_pad_set_active(ghost, TRUE);
    gst_element_add_pad(m_bin, ghost);
    std::lock_guard<std::mutex> lock(m_pinLock);
    m_pins.push_back(std::make_unique<CGstPin>(this, name, direction, ghost, major, majorFixed));
    return m_pins.back().get();
}

std::vector<CGstPin*> CGstFilter::Pins() {
    std::lock_guard<std::mutex> lock(m_pinLock);
    std::vector<CGstPin*> out;
    for (auto& p : m_pins)
        out.push_back(p.get());
    return out;
}
