#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Host/Player/GstPointer.h"
#include "Platform/Foundation/Task.h"

namespace helmo {

class Handover;

/** What a pipeline has to say. A value. */
struct PipelineEvent {
    enum class Kind {
        /** Sound is ready at the position that was asked for. */
        Ready,
        /** A seek was refused; it goes on where it was. */
        SeekRefused,
        /** The source that was handed over sounds. */
        Advanced,
        Ended,
        /** It can't go on; `text` says why. */
        Failed,
        /** The sound device broke down; `text` says why. */
        SinkFailed,
        /** There is no sound device; it keeps time in silence; `text` says why. */
        Silent,
        /** `percent` of the buffer is filled; 100: enough to play. */
        Buffering,
        DurationChanged,
        Sounding,
        NotSounding,
        /** Its clock went away; pausing and playing finds another. */
        ClockLost,
        /** Something outside (a phone call) wants a pause, or wants it over. */
        PauseRequested,
        PlayRequested
    };
    Kind kind;
    std::string text{};
    int percent = 0;
};

/** Decodes one source, and those that follow it without a gap, into a sink. Its operations may wait for a
   device or a disk, so they belong to a background queue; the two questions may be asked on any thread. */
class Pipeline {
public:
    enum class Sink { Audio, Null };
    /** Called on any thread, also during an operation. */
    using Handler = std::function<void(const PipelineEvent&)>;

    /** Does nothing yet; `address` is a URI. `handover` is asked what follows. */
    Pipeline(const std::string& address, Sink sink, std::shared_ptr<Handover> handover, Handler handler);
    ~Pipeline();
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    /** Opens source and sink and decodes up to the first sound, paused: `Ready` or `Failed` follows. */
    void open();
    void setPlaying(bool playing);
    /** `Ready`, `SeekRefused` or `Ended` follows. */
    void seekTo(zornic::Seconds time);
    /** Lets go of source and sink; no event follows. */
    void close();

    /** nullopt while unknown. */
    std::optional<zornic::Seconds> position() const;
    std::optional<zornic::Seconds> duration() const;

private:
    class Receiver;

    const std::shared_ptr<Receiver> _receiver;
    GstPointer<GstElement> _playbin;
    gulong _aboutToFinish = 0;
};

}  // namespace helmo
