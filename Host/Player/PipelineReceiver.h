#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "Host/Player/Handover.h"
#include "Host/Player/Pipeline.h"

namespace helmo {

/** Hears what a pipeline says on its own threads and makes events of it. Shared with the pipeline's
   callbacks, so that a late message finds it alive. Any thread. */
class Pipeline::Receiver {
public:
    Receiver(Handler handler, std::shared_ptr<Handover> handover)
        : _handler(std::move(handler)), _handover(std::move(handover)) {}

    /** The element whose messages are about the sound device; it lives as long as the pipeline. Before it
     * opens. */
    void setSink(GstElement* sink) { _sink = GST_OBJECT(sink); }
    /** No event is sent from now on. */
    void close() { _closed = true; }
    void send(PipelineEvent event) const {
        if (!_closed) _handler(event);
    }
    void receive(GstElement* playbin, GstMessage* message);
    void answerAboutToFinish(GstElement* playbin);

private:
    bool isFromSink(GstMessage* message) const;
    void receiveError(GstMessage* message);
    void receiveWarning(GstMessage* message);
    void receiveStreamStart(GstMessage* message);
    void receiveState(GstElement* playbin, GstMessage* message);
    void receiveRequest(GstMessage* message);
    void receiveElement(GstMessage* message);

    const Handler _handler;
    const std::shared_ptr<Handover> _handover;
    GstObject* _sink = nullptr;
    std::atomic<bool> _closed = false;
    std::mutex _mutex;
    /** Identifies the source that sounds: a stream starts anew after some seeks, but in the same group. */
    std::optional<guint> _group;
    /** What a decoder is missing for, told just before the error that says no more than that one is. */
    std::string _missingDecoder;
};

}  // namespace helmo
