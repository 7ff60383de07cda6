// Choice of the private folder, loading filters from module files, and the
// pin look-ups.
#include <filesystem>
#include <functional>
#include <tuple>

#include "platform/media/ModuleLoader.h"
#include "platform/media/OsVersion.h"
#include "tests/player/PlayerTestSupport.h"

namespace fs = std::filesystem;

namespace {

// Answers the version query as told for the life of the object.
class ScopedOsVersion {
public:
    ScopedOsVersion(bool exOk, bool plainOk, DWORD major, DWORD minor) {
        SetOsVersionQuery([=](OSVERSIONINFOW* info) -> BOOL {
            bool ex = info->dwOSVersionInfoSize == sizeof(OSVERSIONINFOEXW);
            if (ex ? !exOk : !plainOk)
                return FALSE;
            info->dwMajorVersion = major;
            info->dwMinorVersion = minor;
            return TRUE;
        });
    }
    ~ScopedOsVersion() { SetOsVersionQuery(nullptr); }
};

CString FolderOf(const CString& path) {
    CString folder = path.Left(path.ReverseFind(u'/'));
    return folder.Mid(folder.ReverseFind(u'/') + 1);
}

CString FolderFor(DWORD major, DWORD minor) {
    ScopedOsVersion version(true, true, major, minor);
    CMediaPlayer player;
    return FolderOf(player.m_splitterPath);
}

// A pin of a chosen direction and media types, for the look-ups.
class CFakePin : public IPin {
public:
    CFakePin(PIN_DIRECTION dir, std::vector<GUID> types, bool directionFails = false,
             bool enumFails = false)
        : m_dir(dir), m_types(std::move(types)), m_directionFails(directionFails),
          m_enumFails(enumFails) {}
    int m_refs = 1;
    HRESULT QueryInterface(REFIID, void** ppv) override {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    ULONG AddRef() override { return ++m_refs; }
    ULONG Release() override { return --m_refs; }
    HRESULT Connect(IPin*, const AM_MEDIA_TYPE*) override { return E_NOTIMPL; }
    HRESULT ReceiveConnection(IPin*, const AM_MEDIA_TYPE*) override { return E_NOTIMPL; }
    HRESULT Disconnect() override { return S_FALSE; }
    HRESULT QueryDirection(PIN_DIRECTION* d) override {
        if (m_directionFails)
            return E_FAIL;
        *d = m_dir;
        return S_OK;
    }
    HRESULT QueryId(char16_t*, ULONG) override { return E_NOTIMPL; }
    HRESULT EnumMediaTypes(IEnumMediaTypes** out) override;

    PIN_DIRECTION m_dir;
    std::vector<GUID> m_types;
    bool m_directionFails;
    bool m_enumFails;
};

// Hands out one item after the other, each made by the given function.
template <typename Interface, typename Out>
class CFakeEnum : public Interface {
public:
    CFakeEnum(size_t count, std::function<Out(size_t)> make) : m_count(count), m_make(make) {}
    virtual ~CFakeEnum() = default;
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return ++m_refs; }
    ULONG Release() override {
        ULONG left = --m_refs;
        if (!left)
            delete this;
        return left;
    }
    HRESULT Next(ULONG, Out* out, ULONG* got) override {
        if (m_next >= m_count) {
            *got = 0;
            return S_FALSE;
        }
        *out = m_make(m_next++);
        *got = 1;
        return S_OK;
    }
    HRESULT Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT Reset() override { return E_NOTIMPL; }

private:
    ULONG m_refs = 1;
    size_t m_count;
    std::function<Out(size_t)> m_make;
    size_t m_next = 0;
};

HRESULT CFakePin::EnumMediaTypes(IEnumMediaTypes** out) {
    if (m_enumFails)
        return E_FAIL;
    std::vector<GUID> types = m_types;
    *out = new CFakeEnum<IEnumMediaTypes, AM_MEDIA_TYPE*>(types.size(), [types](size_t i) {
        auto* mt = static_cast<AM_MEDIA_TYPE*>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
        memset(mt, 0, sizeof(*mt));
        mt->majortype = types[i];
        // A format block, which the look-up must free with the record.
        mt->cbFormat = 8;
        mt->pbFormat = static_cast<BYTE*>(CoTaskMemAlloc(8));
        return mt;
    });
    return S_OK;
}

class CFakeFilter : public IBaseFilter {
public:
    std::vector<CFakePin*> m_pins;
    HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG AddRef() override { return 2; }
    ULONG Release() override { return 1; }
    HRESULT EnumPins(IEnumPins** out) override {
        std::vector<CFakePin*> pins = m_pins;
        *out = new CFakeEnum<IEnumPins, IPin*>(pins.size(), [pins](size_t i) -> IPin* {
            pins[i]->AddRef();
            return pins[i];
        });
        return S_OK;
    }
    HRESULT FindPin(LPCWSTR, IPin**) override { return E_NOTIMPL; }
    HRESULT SetSyncSource(IReferenceClock*) override { return S_OK; }
};

} // namespace

TEST(FilterPathsTest, FolderFollowsTheSystemVersion) {
    const std::tuple<DWORD, DWORD, const char16_t*> cases[] = {
        {6, 0, u"LAV_XP"}, {6, 1, u"LAV"},    {6, 2, u"LAV"},    {6, 3, u"LAV"},
        {10, 0, u"LAV"},   {5, 1, u"LAV_XP"}, {11, 0, u"LAV_XP"}};
    for (const auto& [major, minor, folder] : cases)
        EXPECT_EQ(folder, FolderFor(major, minor)) << major << "." << minor;
    // The platform's own answer is 10.0.
    CMediaPlayer player;
    EXPECT_EQ(u"LAV", FolderOf(player.m_splitterPath));
}

TEST(FilterPathsTest, PlainRecordIsAskedWhenTheExtendedOneFails) {
    {
        ScopedOsVersion version(false, true, 6, 0);
        CMediaPlayer player;
        EXPECT_EQ(u"LAV_XP", FolderOf(player.m_splitterPath));
    }
    ScopedOsVersion version(false, false, 10, 0);
    CMediaPlayer player;
    EXPECT_TRUE(player.m_splitterPath.IsEmpty());
    EXPECT_TRUE(player.m_videoPath.IsEmpty());
    EXPECT_TRUE(player.m_audioPath.IsEmpty());
    EXPECT_FALSE(player.m_asyncCdPath.IsEmpty());
    IBaseFilter* filter = nullptr;
    EXPECT_EQ(MakeHresult(0x8007007E),
              player.CreateObjectFromPath(player.m_splitterPath, CLSID_LAVSplitterSource, &filter));
}

TEST(CreateObjectTest, ModulesGiveFiltersOrSystemErrors) {
    std::string stage = StagedStartDir();
    CMediaPlayer player;
    IBaseFilter* filter = nullptr;
    ASSERT_EQ(S_OK, player.CreateObjectFromPath(CString(stage + "/LAV/LAVAudio_1.ax"),
                                                CLSID_LAVAudio, &filter));
    ASSERT_NE(nullptr, filter);
    IPin* pin = nullptr;
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin(filter, PINDIR_INPUT, MEDIATYPE_Audio, &pin));
    SafeRelease(pin);
    EXPECT_EQ(S_OK, filter->FindPin(u"Output", &pin));
    SafeRelease(pin);
    filter->Release();
    // A class the module does not make.
    EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE,
              player.CreateObjectFromPath(CString(stage + "/LAV/LAVAudio_1.ax"), CLSID_LAVVideo,
                                          &filter));
    EXPECT_EQ(nullptr, filter);
    // A file that is no module, and a module without the export.
    TempDir dir;
    TempDir::Write(dir / "broken.ax", "not a module");
    EXPECT_EQ(MakeHresult(0x800700C1),
              player.CreateObjectFromPath(dir.File("broken.ax"), CLSID_LAVVideo, &filter));
    EXPECT_EQ(MakeHresult(0x8007007E),
              player.CreateObjectFromPath(dir.File("missing.ax"), CLSID_LAVVideo, &filter));
}

TEST(GetPinTest, FindsPinsByDirectionAndMajorType) {
    CFakePin audioOut(PINDIR_OUTPUT, {MEDIATYPE_Video, MEDIATYPE_Audio});
    CFakePin bareIn(PINDIR_INPUT, {});
    CFakePin failingIn(PINDIR_INPUT, {}, false, true);
    CFakeFilter filter;
    filter.m_pins = {&audioOut, &bareIn};
    IPin* pin = reinterpret_cast<IPin*>(1);
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin(&filter, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin));
    EXPECT_EQ(&audioOut, pin);
    pin->Release();
    EXPECT_EQ(E_FAIL, CMediaPlayer::GetPin(&filter, PINDIR_OUTPUT, MEDIATYPE_Stream, &pin));
    EXPECT_EQ(nullptr, pin);
    // An input pin that lists no type matches any type; not so an output.
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin(&filter, PINDIR_INPUT, MEDIATYPE_Stream, &pin));
    EXPECT_EQ(&bareIn, pin);
    pin->Release();
    CFakeFilter bare;
    CFakePin bareOut(PINDIR_OUTPUT, {});
    bare.m_pins = {&bareOut, &failingIn};
    EXPECT_EQ(E_FAIL, CMediaPlayer::GetPin(&bare, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin));
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin(&bare, PINDIR_INPUT, MEDIATYPE_Audio, &pin));
    EXPECT_EQ(&failingIn, pin);
    pin->Release();
    EXPECT_EQ(E_POINTER, CMediaPlayer::GetPin(nullptr, PINDIR_INPUT, MEDIATYPE_Audio, &pin));
    EXPECT_EQ(E_POINTER, CMediaPlayer::GetPin(&filter, PINDIR_INPUT, MEDIATYPE_Audio, nullptr));

    // By position, only pins of that direction count.
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin2(&bare, PINDIR_INPUT, 0, &pin));
    EXPECT_EQ(&failingIn, pin);
    pin->Release();
    EXPECT_EQ(E_FAIL, CMediaPlayer::GetPin2(&filter, PINDIR_INPUT, 1, &pin));
    EXPECT_EQ(nullptr, pin);
    EXPECT_EQ(E_POINTER, CMediaPlayer::GetPin2(nullptr, PINDIR_INPUT, 0, &pin));

    // A failing direction query stops the walk by type; by position that
    // pin is simply not of the wanted direction.
    CFakePin broken(PINDIR_OUTPUT, {MEDIATYPE_Audio}, true);
    CFakeFilter brokenFirst;
    brokenFirst.m_pins = {&broken, &audioOut};
    EXPECT_EQ(E_UNEXPECTED,
              CMediaPlayer::GetPin(&brokenFirst, PINDIR_OUTPUT, MEDIATYPE_Audio, &pin));
    EXPECT_EQ(nullptr, pin);
    EXPECT_EQ(S_OK, CMediaPlayer::GetPin2(&brokenFirst, PINDIR_OUTPUT, 0, &pin));
    EXPECT_EQ(&audioOut, pin);
    pin->Release();

    // Every reference handed out came back.
    for (CFakePin* p : {&audioOut, &bareIn, &bareOut, &failingIn, &broken})
        EXPECT_EQ(1, p->m_refs);
}

// A module folder that lacks the video decoder: audio still plays, video
// fails with the decoder's text, and a folder without the splitter fails
// before anything else.
TEST(ModuleFolderTest, MissingVideoDecoderFailsOnlyVideo) {
    std::string stage = StagedStartDir();
    TempDir start;
    fs::create_directories(start / "LAV");
    fs::copy_file(stage + "/LAV/LAVSplitter_1.ax", start / "LAV/LAVSplitter_1.ax");
    fs::copy_file(stage + "/LAV/LAVAudio_1.ax", start / "LAV/LAVAudio_1.ax");
    TestMedia& media = TestMedia::Get();
    SetGraphAudioSink("fakesink sync=true");
    SetGraphVideoSink("fakesink sync=true");
    MessageBoxRecorder boxes;
    ScopedCurrentDir cwd(start.Path());
    {
        CMediaPlayer player;
        CTestFrame frame;
        EXPECT_FALSE(player.PlayFileLav(CString(media.Video()), &frame));
        EXPECT_EQ(std::vector<CString>{u"ERROR - CreateObjectFromPath failed - clsidLavVid"},
                  boxes.Texts());
        EXPECT_EQ(0, player.m_state);
        EXPECT_TRUE(player.PlayFileLav(CString(media.Audio()), &frame));
        player.CleanPlayback();
    }
    boxes.Clear();
    fs::remove(start / "LAV/LAVSplitter_1.ax");
    {
        CMediaPlayer player;
        CTestFrame frame;
        EXPECT_FALSE(player.PlayFileLav(CString(media.Audio()), &frame));
        EXPECT_EQ(std::vector<CString>{u"ERROR - CreateObjectFromPath2 failed - clsidLavSrc"},
                  boxes.Texts());
    }
}
