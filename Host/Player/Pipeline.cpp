#include "Host/Player/Pipeline.h"

#include <algorithm>

#include "Host/Player/PipelineReceiver.h"
#include "Host/Player/SoundFile.h"

namespace helmo {

namespace {

using Kind = PipelineEvent::Kind;

constexpr const char* sinkFactory(Pipeline::Sink sink) {
    return sink == Pipeline::Sink::Audio ? "autoaudiosink" : "fakesink";
}

/** Whether it has a length to move in; a station has none. */
bool isSeekable(GstElement* playbin) {
    gboolean seekable = FALSE;
    GstQuery* query = gst_query_new_seeking(GST_FORMAT_TIME);
    if (gst_element_query(playbin, query))
        gst_query_parse_seeking(query, nullptr, &seekable, nullptr, nullptr);
    gst_query_unref(query);
    return seekable;
}

using Query = gboolean (*)(GstElement*, GstFormat, gint64*);

std::optional<zornic::Seconds> answer(Query query, GstElement* playbin) {
    gint64 nanoseconds = -1;
    if (!playbin || !query(playbin, GST_FORMAT_TIME, &nanoseconds) || nanoseconds < 0) return std::nullopt;
    return std::chrono::nanoseconds(nanoseconds);
}

}  // namespace

Pipeline::Pipeline(const std::string& address, Sink sink, std::shared_ptr<Handover> handover, Handler handler)
    : _receiver(std::make_shared<Receiver>(std::move(handler), std::move(handover))) {
    // playbin3 would be the newer one, but up to 1.22 it loses short sources and locks up when closed while
    // it changes from one to the next.
    auto* playbin = gst_element_factory_make("playbin", nullptr);
    if (!playbin) return;
    _playbin.reset(GST_ELEMENT(gst_object_ref_sink(playbin)));

    if (auto* output = gst_element_factory_make(sinkFactory(sink), nullptr)) {
        if (sink == Sink::Null) g_object_set(output, "sync", TRUE, nullptr);
        _receiver->setSink(output);
        g_object_set(playbin, "audio-sink", output, nullptr);
    }
    // Without one it looks for a window to show pictures in.
    if (auto* pictures = gst_element_factory_make("fakesink", nullptr))
        g_object_set(playbin, "video-sink", pictures, nullptr);
    // Decoded sound ahead of the sink: the time there is for opening what follows.
    if (auto* ahead = gst_element_factory_make("queue", nullptr)) {
        g_object_set(ahead, "max-size-time", guint64(2 * GST_SECOND), "max-size-bytes", 0u,
                     "max-size-buffers", 0u, nullptr);
        g_object_set(playbin, "audio-filter", ahead, nullptr);
    }
    const bool isRemote = !address.starts_with("file:");
    gst_util_set_object_arg(G_OBJECT(playbin), "flags",
                            isRemote ? "audio+soft-volume+buffering" : "audio+soft-volume");
    g_object_set(playbin, "uri", address.c_str(), nullptr);

    using Kept = std::shared_ptr<Receiver>;
    const auto askNext = +[](GstElement* element, gpointer data) {
        static_cast<Kept*>(data)->get()->answerAboutToFinish(element);
    };
    const auto forget = +[](gpointer data, GClosure*) { delete static_cast<Kept*>(data); };
    _aboutToFinish = g_signal_connect_data(playbin, "about-to-finish", G_CALLBACK(askNext),
                                           new Kept(_receiver), forget, GConnectFlags(0));

    struct Listener {
        Kept receiver;
        GstElement* playbin;  // outlives its bus's handler, which `close()` takes away
    };
    const auto hear = +[](GstBus*, GstMessage* message, gpointer data) {
        const GstPointer<GstMessage> owned(message);
        auto* listener = static_cast<Listener*>(data);
        listener->receiver->receive(listener->playbin, message);
        return GST_BUS_DROP;
    };
    const GstPointer<GstBus> bus(gst_element_get_bus(playbin));
    gst_bus_set_sync_handler(bus.get(), hear, new Listener{_receiver, playbin},
                             [](gpointer data) { delete static_cast<Listener*>(data); });
}

Pipeline::~Pipeline() { close(); }

void Pipeline::open() {
    if (!_playbin) return _receiver->send({Kind::Failed, "GStreamer's element playbin is not installed"});
    switch (gst_element_set_state(_playbin.get(), GST_STATE_PAUSED)) {
        case GST_STATE_CHANGE_FAILURE:
            return _receiver->send({Kind::Failed, "it can't be opened"});
        // A live source has nothing to show before it plays.
        case GST_STATE_CHANGE_NO_PREROLL:
            return _receiver->send({Kind::Ready});
        default:
            return;
    }
}

void Pipeline::setPlaying(bool playing) {
    if (_playbin) gst_element_set_state(_playbin.get(), playing ? GST_STATE_PLAYING : GST_STATE_PAUSED);
}

void Pipeline::seekTo(zornic::Seconds time) {
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
    const auto flags = GstSeekFlags(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    if (!_playbin || !isSeekable(_playbin.get()) ||
        !gst_element_seek_simple(_playbin.get(), GST_FORMAT_TIME, flags, nanoseconds))
        _receiver->send({Kind::SeekRefused});
}

void Pipeline::close() {
    _receiver->close();
    if (!_playbin) return;
    gst_element_set_state(_playbin.get(), GST_STATE_NULL);
    g_signal_handler_disconnect(_playbin.get(), _aboutToFinish);
    const GstPointer<GstBus> bus(gst_element_get_bus(_playbin.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
    gst_bus_set_flushing(bus.get(), TRUE);
    _playbin.reset();
}

std::optional<zornic::Seconds> Pipeline::position() const {
    return answer(gst_element_query_position, _playbin.get());
}

std::optional<zornic::Seconds> Pipeline::duration() const {
    return answer(gst_element_query_duration, _playbin.get());
}

}  // namespace helmo
