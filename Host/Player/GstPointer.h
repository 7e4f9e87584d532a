#pragma once

#include <memory>

#include <gst/gst.h>

namespace helmo {

/** Gives back what GStreamer and GLib hand out, each in its own way. */
struct GstRelease {
    void operator()(GstElement* element) const { gst_object_unref(element); }
    void operator()(GstBus* bus) const { gst_object_unref(bus); }
    void operator()(GstMessage* message) const { gst_message_unref(message); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstBuffer* buffer) const { gst_buffer_unref(buffer); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(gchar* text) const { g_free(text); }
};

/** One owned reference of GStreamer's or GLib's. */
template <class T>
using GstPointer = std::unique_ptr<T, GstRelease>;

}  // namespace helmo
