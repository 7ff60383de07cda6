// The pipeline side of a filter: each filter is a bin of pipeline elements
// and each pin one of its ghost pads. The graph and the filter modules both
// build on these classes; across a module boundary only the virtual
// interfaces are used, so each module may carry its own copy of the code.
#pragma once
#include <gst/gst.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/media/MediaInterfaces.h"

// The graph's private ways into a filter and a pin.
extern const IID IID_IGstFilter;
extern const IID IID_IGstPin;

// The structure name of an element message by which a filter hands the graph
// an event for its queue: the fields "code" (int), "param1" and "param2"
// (int64).
extern const char* const kGraphEventMessage;

class IGstFilter : public IUnknown {
public:
    // The filter's bin; the filter keeps its own reference.
    virtual GstElement* GetElement() = 0;
    // Called by the graph before data may flow for the first time.
    virtual void PrepareRun() = 0;
    // The graph the filter stands in, or null once it has left; no reference
    // is held.
    virtual void JoinGraph(IUnknown* graph) = 0;
};

class IGstPin : public IUnknown {
public:
    virtual GstPad* GetPad() = 0;
};

// Makes sure the pipeline library is initialised; false when it can't be.
// The answer of the first call holds for the life of the process.
bool EnsureGstInit();
// Replaces the call that starts the library (null: the library's own), for
// a test that must see it fail. Only a call before the first start counts.
void SetPipelineLibraryStart(bool (*start)());

// The caps a pad carries now, or failing that what it can carry; null when
// neither is known. The caller unrefs.
GstCaps* PadCaps(GstPad* pad);
// The major type of a stream description.
const GUID& MajorTypeOfCaps(const GstCaps* caps);
// A media type record for caps (null caps: only the major type).
AM_MEDIA_TYPE* NewMediaType(const GstCaps* caps, REFGUID major);
// The caps a media type record carries in its format block, or null.
GstCaps* CapsOfMediaType(const AM_MEDIA_TYPE* mt);

// A filter tells the graph of an event of its own (EC_...) by posting this
// from its bin; the graph queues it like its own events. Any thread.
void NotifyGraph(GstElement* filterBin, LONG code, LONG_PTR param1, LONG_PTR param2);
// Whether a bus message is such a notice, and what it carries.
bool ParseGraphNotice(GstMessage* message, LONG* code, LONG_PTR* param1, LONG_PTR* param2);

// The song a stream's tags name: the title, with the artist in front when
// the tags give one apart ("Artist - Title"). Empty when there is no title.
// Never longer than kMaxStreamTitleBytes (a server's text is not trusted).
constexpr size_t kMaxStreamTitleBytes = 1024;
std::string StreamTitleOfTags(const GstTagList* tags);

class CGstFilter;

class CGstPin : public IPin, public IGstPin {
public:
    // A pin whose major type is fixed states it whatever its caps say.
    CGstPin(CGstFilter* filter, const std::u16string& name, PIN_DIRECTION direction, GstPad* pad,
            REFGUID major, bool majorFixed = false);
    ~CGstPin();

    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;

    HRESULT Connect(IPin* receiver, const AM_MEDIA_TYPE* mt) override;
    HRESULT ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* mt) override;
    HRESULT Disconnect() override;
    HRESULT QueryDirection(PIN_DIRECTION* direction) override;
    HRESULT QueryId(char16_t* id, ULONG size) override;
    HRESULT EnumMediaTypes(IEnumMediaTypes** types) override;

    GstPad* GetPad() override { return m_pad; }

    const std::u16string& Name() const { return m_name; }
    PIN_DIRECTION Direction() const { return m_direction; }
    REFGUID Major() const { return m_major; }
    // The major type stated for a stream of these caps.
    GUID StatedMajor(const GstCaps* caps) const;
    bool IsConnected() const { return m_connected; }
    // The major type of the media type the last connection was made with.
    REFGUID ConnectedMajor() const { return m_connectedMajor; }

private:
    CGstFilter* m_filter;
    std::u16string m_name;
    PIN_DIRECTION m_direction;
    GstPad* m_pad;
    GUID m_major;
    bool m_majorFixed;
    GUID m_connectedMajor{};
    std::atomic<bool> m_connected{false};
};

class CGstFilter : public IBaseFilter, public IGstFilter {
public:
    explicit CGstFilter(const char* binName);
    // Takes over a bin of the filter's own making (floating or owned).
    explicit CGstFilter(GstElement* bin);
    virtual ~CGstFilter();
    CGstFilter(const CGstFilter&) = delete;
    CGstFilter& operator=(const CGstFilter&) = delete;

    HRESULT QueryInterface(REFIID riid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;

    HRESULT EnumPins(IEnumPins** pins) override;
    HRESULT FindPin(LPCWSTR id, IPin** pin) override;
    HRESULT SetSyncSource(IReferenceClock* clock) override;

    GstElement* GetElement() override { return m_bin; }
    void PrepareRun() override {}
    void JoinGraph(IUnknown*) override {}

    // Hooks of the pins. A filter may link the connector's pad to its pin
    // itself while it takes the connection; the connector then keeps that
    // link.
    virtual bool AcceptsMajor(CGstPin* pin, REFGUID major);
    virtual HRESULT OnReceiveConnection(CGstPin* pin, IPin* connector, GstCaps* caps);
    virtual void OnDisconnect(CGstPin* pin);
    // The media types a pin offers, each with a reference for the caller.
    virtual std::vector<GstCaps*> OfferedCaps(CGstPin* pin);
    // Further major types a pin takes, offered after those of its caps.
    virtual std::vector<GUID> FurtherMajors(CGstPin*) { return {}; }

protected:
    virtual HRESULT QueryOther(REFIID riid, void** ppv);
    // Adds a ghost pad to the bin and a pin for it.
    CGstPin* AddPin(const std::u16string& name, PIN_DIRECTION direction, GstPad* ghost,
                    REFGUID major, bool majorFixed = false);
    std::vector<CGstPin*> Pins();

    GstElement* m_bin;

private:
    std::atomic<ULONG> m_refs{1};
    std::mutex m_pinLock;
    std::vector<std::unique_ptr<CGstPin>> m_pins;
};
