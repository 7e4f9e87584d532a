#include "Host/Player/PipelineReceiver.h"

#include <utility>

#include "Host/Player/SoundFile.h"
#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

using Kind = PipelineEvent::Kind;

/** The reason as a driver understands it, in the middle of a sentence. */
std::string reasonFor(const GError& error) {
    if (error.domain == GST_RESOURCE_ERROR) {
        if (error.code == GST_RESOURCE_ERROR_NOT_FOUND) return "it can't be found";
        if (error.code == GST_RESOURCE_ERROR_NOT_AUTHORIZED) return "access is not permitted";
        if (error.code == GST_RESOURCE_ERROR_OPEN_READ) return "it can't be opened";
        if (error.code == GST_RESOURCE_ERROR_SEEK) return "its server can't skip within it";
        if (error.code == GST_RESOURCE_ERROR_READ) return "reading it failed";
    }
    if (error.domain == GST_STREAM_ERROR) {
        if (error.code == GST_STREAM_ERROR_TYPE_NOT_FOUND || error.code == GST_STREAM_ERROR_WRONG_TYPE)
            return "it is not a sound file";
        if (error.code == GST_STREAM_ERROR_CODEC_NOT_FOUND) return "no decoder for its format is installed";
        if (error.code == GST_STREAM_ERROR_DECODE || error.code == GST_STREAM_ERROR_DEMUX)
            return "its content is damaged";
        if (error.code == GST_STREAM_ERROR_DECRYPT || error.code == GST_STREAM_ERROR_DECRYPT_NOKEY)
            return "it is protected";
    }
    std::string text = zornic::validUtf8(error.message ? error.message : "it is not known why");
    while (text.ends_with('.')) text.pop_back();
    return text;
}

GstPointer<GError> errorOf(GstMessage* message) {
    GError* error = nullptr;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
        gst_message_parse_error(message, &error, nullptr);
    else
        gst_message_parse_warning(message, &error, nullptr);
    return GstPointer<GError>(error);
}

}  // namespace

bool Pipeline::Receiver::isFromSink(GstMessage* message) const {
    GstObject* source = GST_MESSAGE_SRC(message);
    return _sink && source && (source == _sink || gst_object_has_as_ancestor(source, _sink));
}

void Pipeline::Receiver::receive(GstElement* playbin, GstMessage* message) {
    switch (GST_MESSAGE_TYPE(message)) {
        case GST_MESSAGE_ERROR:
            return receiveError(message);
        case GST_MESSAGE_WARNING:
            return receiveWarning(message);
        case GST_MESSAGE_STREAM_START:
            return receiveStreamStart(message);
        case GST_MESSAGE_STATE_CHANGED:
            return receiveState(playbin, message);
        case GST_MESSAGE_REQUEST_STATE:
            return receiveRequest(message);
        case GST_MESSAGE_ELEMENT:
            return receiveElement(message);
        case GST_MESSAGE_EOS:
            return send({Kind::Ended});
        case GST_MESSAGE_ASYNC_DONE:
            return send({Kind::Ready});
        case GST_MESSAGE_CLOCK_LOST:
            return send({Kind::ClockLost});
        case GST_MESSAGE_DURATION_CHANGED:
            return send({Kind::DurationChanged});
        case GST_MESSAGE_BUFFERING: {
            PipelineEvent event{Kind::Buffering};
            gst_message_parse_buffering(message, &event.percent);
            return send(event);
        }
        default:
            return;
    }
}

void Pipeline::Receiver::answerAboutToFinish(GstElement* playbin) {
    if (_closed) return;
    if (const auto source = _handover->give())
        g_object_set(playbin, "uri", addressOf(source->location).c_str(), nullptr);
}

void Pipeline::Receiver::receiveError(GstMessage* message) {
    const auto error = errorOf(message);
    std::string reason = reasonFor(*error);
    {
        std::lock_guard lock(_mutex);
        if (!_missingDecoder.empty()) reason = "a decoder is missing: " + _missingDecoder;
    }
    send({isFromSink(message) ? Kind::SinkFailed : Kind::Failed, std::move(reason)});
}

void Pipeline::Receiver::receiveWarning(GstMessage* message) {
    if (isFromSink(message)) send({Kind::Silent, reasonFor(*errorOf(message))});
}

void Pipeline::Receiver::receiveStreamStart(GstMessage* message) {
    guint group = 0;
    gst_message_parse_group_id(message, &group);
    {
        std::lock_guard lock(_mutex);
        const auto before = std::exchange(_group, group);
        if (!before || *before == group) return;
    }
    if (_handover->didSound()) send({Kind::Advanced});
}

void Pipeline::Receiver::receiveState(GstElement* playbin, GstMessage* message) {
    if (GST_MESSAGE_SRC(message) != GST_OBJECT(playbin)) return;
    GstState before = GST_STATE_NULL, now = GST_STATE_NULL;
    gst_message_parse_state_changed(message, &before, &now, nullptr);
    if (now == GST_STATE_PLAYING)
        send({Kind::Sounding});
    else if (before == GST_STATE_PLAYING)
        send({Kind::NotSounding});
}

void Pipeline::Receiver::receiveRequest(GstMessage* message) {
    GstState state = GST_STATE_NULL;
    gst_message_parse_request_state(message, &state);
    if (state == GST_STATE_PAUSED) send({Kind::PauseRequested});
    if (state == GST_STATE_PLAYING) send({Kind::PlayRequested});
}

void Pipeline::Receiver::receiveElement(GstMessage* message) {
    const auto* structure = gst_message_get_structure(message);
    if (!structure || !gst_structure_has_name(structure, "missing-plugin")) return;
    const char* name = gst_structure_get_string(structure, "name");
    std::lock_guard lock(_mutex);
    _missingDecoder = zornic::validUtf8(name ? name : "its format is not known");
}

}  // namespace helmo
