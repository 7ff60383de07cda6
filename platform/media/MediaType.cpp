#include <cstring>

#include "platform/media/GstFilter.h"

void FreeMediaType(AM_MEDIA_TYPE& mt) {
    if (mt.cbFormat != 0) {
        CoTaskMemFree(mt.pbFormat);
        mt.cbFormat = 0;
    }
    mt.pbFormat = nullptr;
    SafeRelease(mt.pUnk);
}

void DeleteMediaType(AM_MEDIA_TYPE* pmt) {
    if (!pmt)
        return;
    FreeMediaType(*pmt);
    CoTaskMemFree(pmt);
}

GstCaps* PadCaps(GstPad* pad) {
    if (!pad)
        return nullptr;
    GstCaps* caps = gst_pad_get_current_caps(pad);
    // A stream held at a pin has its caps only on the pads behind the pin.
    GstPad* inner = GST_PAD(gst_object_ref(pad));
    for (int depth = 0; !caps && depth < 8 && GST_IS_GHOST_PAD(inner); ++depth) {
        GstPad* target = gst_ghost_pad_get_target(GST_GHOST_PAD(inner));
        gst_object_unref(inner);
        inner = target;
        if (!inner)
            break;
        caps = gst_pad_get_current_caps(inner);
    }
    if (inner)
        gst_object_unref(inner);
    if (!caps && GST_PAD_PEER(pad) == nullptr) {
        GstCaps* possible = gst_pad_query_caps(pad, nullptr);
        if (possible && !gst_caps_is_any(possible) && !gst_caps_is_empty(possible))
            caps = possible;
        else if (possible)
            gst_caps_unref(possible);
    }
    return caps;
}

const GUID& MajorTypeOfCaps(const GstCaps* caps) {
    if (!caps || gst_caps_get_size(caps) == 0)
        return GUID_NULL;
    const char* name = gst_structure_get_name(gst_caps_get_structure(caps, 0));
    if (g_str_has_prefix(name, "video/") || g_str_has_prefix(name, "image/"))
        return MEDIATYPE_Video;
    if (g_str_has_prefix(name, "audio/"))
        return MEDIATYPE_Audio;
    if (g_str_has_prefix(name, "text/") || g_str_has_prefix(name, "subpicture/") ||
        g_str_has_prefix(name, "subtitle/") || strcmp(name, "application/x-ssa") == 0 ||
        strcmp(name, "application/x-ass") == 0)
        return MEDIATYPE_Text;
    return MEDIATYPE_Stream;
}

AM_MEDIA_TYPE* NewMediaType(const GstCaps* caps, REFGUID major) {
    auto* mt = static_cast<AM_MEDIA_TYPE*>(CoTaskMemAlloc(sizeof(AM_MEDIA_TYPE)));
    memset(mt, 0, sizeof(*mt));
    mt->majortype = major;
    mt->bFixedSizeSamples = TRUE;
    mt->lSampleSize = 1;
    if (caps) {
        gchar* text = gst_caps_to_string(caps);
        size_t size = strlen(text) + 1;
        mt->pbFormat = static_cast<BYTE*>(CoTaskMemAlloc(size));
        memcpy(mt->pbFormat, text, size);
        mt->cbFormat = static_cast<ULONG>(size);
        mt->formattype = FORMAT_PipelineCaps;
        mt->bFixedSizeSamples = FALSE;
        g_free(text);
    }
    return mt;
}

GstCaps* CapsOfMediaType(const AM_MEDIA_TYPE* mt) {
    if (!mt || mt->formattype != FORMAT_PipelineCaps || mt->cbFormat == 0 || !mt->pbFormat)
        return nullptr;
    if (mt->pbFormat[mt->cbFormat - 1] != 0)
        return nullptr;
    return gst_caps_from_string(reinterpret_cast<const char*>(mt->pbFormat));
}
