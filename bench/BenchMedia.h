// Media for the benchmarks, encoded with the pipeline library when they
// start.
#pragma once
#include <gst/gst.h>

#include <string>

// Runs an encoding pipeline to its end; true when it got there.
inline bool Encode(const std::string& description) {
    GstElement* p = gst_parse_launch(description.c_str(), nullptr);
    if (!p)
        return false;
    gst_element_set_state(p, GST_STATE_PLAYING);
    GstBus* bus = gst_element_get_bus(p);
    GstMessage* m = gst_bus_timed_pop_filtered(
        bus, 120 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool ok = m && GST_MESSAGE_TYPE(m) == GST_MESSAGE_EOS;
    if (m)
        gst_message_unref(m);
    gst_object_unref(bus);
    gst_element_set_state(p, GST_STATE_NULL);
    gst_object_unref(p);
    return ok;
}
