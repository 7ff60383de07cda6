#include "platform/media/PipelineService.h"

#include "platform/media/GstFilter.h"

namespace {

// What every file, stream and disc graph is made of: the splitter's
// demuxing, the decoders' queues and converters, and the renderers' ends.
constexpr const char* kRequiredElements[] = {
    "uridecodebin", "decodebin",    "queue",      "capsfilter", "audioconvert",  "audioresample",
    "volume",       "videoconvert", "videoscale", "fakesink",   "autoaudiosink", "autovideosink",
};

} // namespace

bool StartPipelineService() {
    if (!EnsureGstInit())
        return false;
    for (const char* name : kRequiredElements) {
        GstElementFactory* factory = gst_element_factory_find(name);
        if (!factory)
            return false;
        gst_object_unref(factory);
    }
    return true;
}
