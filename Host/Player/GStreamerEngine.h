#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Host/Player/Handover.h"
#include "Host/Player/Pipeline.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/PlaybackEngine.h"

namespace helmo {

/** Plays files and stations with GStreamer. What may wait for a device, a disk or a server runs on a queue of
   its own; each load gets a fresh pipeline, so that nothing of a broken source lives on. Main thread. */
class GStreamerEngine final : public zornic::PlaybackEngine {
public:
    struct Options {
        /** `Null`: decodes in real time and makes no sound. */
        Pipeline::Sink sink = Pipeline::Sink::Audio;
        /** Takes a line about something that the driver need not be told. Main thread. */
        std::function<void(const std::string&)> log;
    };

    /** Loads GStreamer, which takes a while at the first start. Empty, or why it can't be loaded. Any thread;
       a load does it as well. */
    static const std::string& prepare();

    explicit GStreamerEngine(Options options);
    /** Stops; no callback follows. */
    ~GStreamerEngine() override;

    void setDelegate(std::weak_ptr<zornic::PlaybackEngineDelegate> delegate) override {
        _delegate = std::move(delegate);
    }
    void load(const zornic::PlaybackSource& source, bool play) override;
    void setNext(const std::optional<zornic::PlaybackSource>& source) override;
    void play() override { setPlaying(true); }
    void pause() override { setPlaying(false); }
    void stop() override;
    void seekTo(zornic::Seconds time) override;
    zornic::Seconds currentTime() const override;
    std::optional<zornic::Seconds> duration() const override;
    bool isPlaying() const override { return _playing; }

private:
    enum class Phase { Empty, Opening, Seeking, Ready, Ended };
    using Delegate = zornic::PlaybackEngineDelegate;

    void begin(zornic::Seconds time, Pipeline::Sink sink);
    void didMakePipeline(std::uint64_t load, std::shared_ptr<Pipeline> pipeline);
    void letGoOfPipeline();
    void onPipeline(std::function<void(Pipeline&)> operation);
    void setPlaying(bool playing);
    void applyPlaying();
    void performSeek(zornic::Seconds time);
    void readDuration();
    /** The present source ended: goes on with `_next`, if there is one, with the gap that loading takes. */
    void goOn();

    /** Gets a local file going again whose time stands still though it should run. */
    void watch();
    void restart();

    void receive(std::uint64_t load, const PipelineEvent& event);
    void becomeReady();
    void didAdvance();
    void didEnd();
    /** Goes on after an early end, or fails when its file is gone. */
    void askWhyItEnded();
    void didFail(const std::string& reason);
    void sinkDidFail(const std::string& reason);
    void setSounding(bool sounding);
    void setBuffering(bool buffering);
    void requestPlaying(bool playing);

    void tell(const std::function<void(Delegate&)>& call);
    void tellFailure(const zornic::PlaybackSource& source, const std::string& reason, bool isNext);
    void log(const std::string& line) const;

    const Options _options;
    std::weak_ptr<Delegate> _delegate;
    std::optional<zornic::PlaybackSource> _source, _next;
    Phase _phase = Phase::Empty;
    bool _playing = false, _sounding = false, _buffering = false;
    /** The source was the next one and is being loaded; the player still takes the one before for the present
     * one. */
    bool _advancing = false;
    bool _pausedFromOutside = false;
    bool _saidSilent = false;
    /** Position while the pipeline can't be asked. */
    zornic::Seconds _position{0};
    std::optional<zornic::Seconds> _wantedSeek, _duration;
    /** What `watch()` saw last, for how many looks since, and how often it started anew. */
    zornic::Seconds _watchedTime{0};
    int _stalledLooks = 0, _restarts = 0;
    zornic::Token _watching;

    /** Counts loads, so that what an earlier one still has to say is recognised; the queue skips overtaken
     * ones. */
    const std::shared_ptr<std::atomic<std::uint64_t>> _load = std::make_shared<std::atomic<std::uint64_t>>(0);
    Pipeline::Sink _sink;
    std::shared_ptr<Handover> _handover = std::make_shared<Handover>();
    std::shared_ptr<Pipeline> _pipeline;
    zornic::SerialQueue _queue{"player", zornic::QueuePriority::Highest};
};

}  // namespace helmo
