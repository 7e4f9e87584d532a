#include "Host/Player/GStreamerEngine.h"

#include <algorithm>
#include <utility>

#include "Host/Player/SoundFile.h"
#include "Platform/Foundation/RunLoop.h"

namespace helmo {

using zornic::mainQueue;
using zornic::PlaybackSource;
using zornic::Seconds;
using zornic::weak;

namespace {

constexpr auto watchInterval = std::chrono::seconds(1);
constexpr int mostStalledLooks = 2;
constexpr int mostRestarts = 3;
/** A file whose sound ends this long before its end was cut off; where the length is estimated it may be so.
 */
constexpr Seconds mostMissing{3};

std::string sentence(const PlaybackSource& source, const std::string& reason) {
    return "“" + nameOf(source.location) + "” can't be played: " + reason + ".";
}

/** Why a source can't even be tried; empty when it can. */
std::string obstacle(const PlaybackSource& source) {
    if (const auto& missing = GStreamerEngine::prepare(); !missing.empty()) return missing;
    if (source.location.empty()) return "it has no address";
    if (isAddress(source.location)) return {};
    auto reason = unreadableReason(source.location);
    if (reason.empty() && kindOfFile(source.location) == FileKind::Other) reason = "it is not a sound file";
    return reason;
}

}  // namespace

const std::string& GStreamerEngine::prepare() {
    static const std::string problem = [] {
        GError* error = nullptr;
        if (gst_init_check(nullptr, nullptr, &error)) return std::string();
        const GstPointer<GError> kept(error);
        return std::string("GStreamer can't be started: ") + (kept ? kept->message : "it is not known why");
    }();
    return problem;
}

GStreamerEngine::GStreamerEngine(Options options) : _options(std::move(options)), _sink(_options.sink) {}

GStreamerEngine::~GStreamerEngine() {
    ++*_load;
    letGoOfPipeline();
}

void GStreamerEngine::load(const PlaybackSource& source, bool play) {
    _source = source;
    _next.reset();
    _playing = play;
    _advancing = _pausedFromOutside = false;
    _restarts = 0;
    begin(source.startTime, _options.sink);
}

void GStreamerEngine::setNext(const std::optional<PlaybackSource>& source) {
    if (source == _next) return;
    _next = source;
    if (_wantedSeek) return;
    switch (_handover->offer(source)) {
        case Handover::State::Open:
            return;
        case Handover::State::Given:
            // The pipeline would go on with the earlier answer: take the present source up again where it is.
            return begin(currentTime(), _sink);
        case Handover::State::Sounding:
            // The present source has just ended, and the earlier answer must not be heard.
            const auto load = ++*_load;
            letGoOfPipeline();
            _phase = Phase::Opening;
            mainQueue().async([self = weak(this), load] {
                if (const auto engine = self.lock(); engine && *engine->_load == load) engine->goOn();
            });
    }
}

void GStreamerEngine::stop() {
    ++*_load;
    letGoOfPipeline();
    _source.reset();
    _next.reset();
    _wantedSeek.reset();
    _duration.reset();
    _handover = std::make_shared<Handover>();
    _watching.reset();
    _phase = Phase::Empty;
    _position = Seconds::zero();
    _playing = _sounding = _buffering = _advancing = _pausedFromOutside = false;
}

void GStreamerEngine::seekTo(Seconds time) {
    if (_phase == Phase::Empty) return;
    time = std::max(time, Seconds::zero());
    if (const auto end = duration()) time = std::min(time, *end);
    if (_phase == Phase::Opening || _phase == Phase::Seeking) {
        _wantedSeek = _position = time;
    } else if (_handover->state() != Handover::State::Open) {
        begin(time, _sink);  // the pipeline reads the next source already and has no way back
    } else {
        performSeek(time);
    }
}

Seconds GStreamerEngine::currentTime() const {
    if (_phase != Phase::Ready || !_pipeline) return _position;
    return _pipeline->position().value_or(_position);
}

std::optional<Seconds> GStreamerEngine::duration() const {
    if (_duration) return _duration;
    if (_source && _source->duration > Seconds::zero()) return _source->duration;
    return std::nullopt;
}

void GStreamerEngine::begin(Seconds time, Pipeline::Sink sink) {
    const auto load = ++*_load;
    letGoOfPipeline();
    _phase = Phase::Opening;
    _sounding = _buffering = false;
    _sink = sink;
    _position = time;
    _wantedSeek = time > Seconds::zero() ? std::optional(time) : std::nullopt;
    _duration.reset();
    _handover = std::make_shared<Handover>();
    if (!_wantedSeek) _handover->offer(_next);  // a seek can't reach back over a hand-over
    _stalledLooks = 0;
    if (!_watching)
        _watching = zornic::RunLoop::main().every(watchInterval, [self = weak(this)] {
            if (const auto engine = self.lock()) engine->watch();
        });

    const auto receive = [self = weak(this), load](const PipelineEvent& event) {
        mainQueue().async([self, load, event] {
            if (const auto engine = self.lock()) engine->receive(load, event);
        });
    };
    _queue.async([self = weak(this), load, latest = _load, source = *_source, sink, handover = _handover,
                  receive] {
        if (*latest != load) return;
        if (auto reason = obstacle(source); !reason.empty())
            return receive({PipelineEvent::Kind::Failed, std::move(reason)});
        const auto pipeline = std::make_shared<Pipeline>(addressOf(source.location), sink, handover, receive);
        mainQueue().async([self, load, pipeline] {
            if (const auto engine = self.lock()) engine->didMakePipeline(load, pipeline);
        });
        pipeline->open();
    });
}

void GStreamerEngine::didMakePipeline(std::uint64_t load, std::shared_ptr<Pipeline> pipeline) {
    std::swap(_pipeline, pipeline);
    if (load != *_load) {
        letGoOfPipeline();  // overtaken
        std::swap(_pipeline, pipeline);
    }
}

void GStreamerEngine::letGoOfPipeline() {
    onPipeline([](Pipeline& pipeline) { pipeline.close(); });
    _pipeline.reset();
}

void GStreamerEngine::onPipeline(std::function<void(Pipeline&)> operation) {
    if (_pipeline)
        _queue.async([pipeline = _pipeline, operation = std::move(operation)] { operation(*pipeline); });
}

void GStreamerEngine::setPlaying(bool playing) {
    _pausedFromOutside = false;
    if (_phase == Phase::Empty || playing == _playing) return;
    _playing = playing;
    applyPlaying();
}

void GStreamerEngine::applyPlaying() {
    if (_phase != Phase::Ready && _phase != Phase::Ended) return;
    onPipeline([playing = _playing && !_buffering](Pipeline& pipeline) { pipeline.setPlaying(playing); });
}

void GStreamerEngine::performSeek(Seconds time) {
    _phase = Phase::Seeking;
    _position = time;
    onPipeline([time](Pipeline& pipeline) { pipeline.seekTo(time); });
}

void GStreamerEngine::readDuration() {
    // Once the next source was handed over, the answer may be about that one.
    if (!_pipeline || _handover->state() != Handover::State::Open) return;
    const auto duration = _pipeline->duration();
    if (!duration || duration == _duration) return;
    _duration = duration;
    tell([](Delegate& delegate) { delegate.engineDurationDidChange(); });
}

void GStreamerEngine::goOn() {
    if (auto next = std::exchange(_next, std::nullopt)) {
        _advancing = true;
        _restarts = 0;
        _source = std::move(next);
        return begin(_source->startTime, _options.sink);
    }
    _phase = _pipeline ? Phase::Ended : Phase::Empty;
    _playing = _advancing = false;
    applyPlaying();
    tell([](Delegate& delegate) { delegate.engineDidReachEnd(); });
}

void GStreamerEngine::watch() {
    const bool isRunning = _phase == Phase::Ready && _playing && !_buffering;
    const bool isPreparing = _phase == Phase::Opening || _phase == Phase::Seeking;
    const auto time = currentTime();
    const bool hasMoved = time != std::exchange(_watchedTime, time);
    if (isRunning && hasMoved) _restarts = 0;
    // A server may keep us waiting; it has a time limit of its own.
    if (hasMoved || !(isRunning || isPreparing) || !_source || isAddress(_source->location))
        _stalledLooks = 0;
    else if (++_stalledLooks >= mostStalledLooks)
        restart();
}

void GStreamerEngine::restart() {
    // Short sources now and then get lost on their way to the sink, without any message, and so do sound
    // devices.
    if (++_restarts > mostRestarts) return didFail("it does not get going");
    log("“" + nameOf(_source->location) + "” got stuck; it is started anew.");
    if (_handover->state() == Handover::State::Sounding) didAdvance();
    // Lost between the present source and the next one.
    const auto end = duration();
    if (_handover->state() == Handover::State::Given && end && currentTime() > *end - Seconds(0.5))
        return goOn();
    begin(currentTime(), _sink);
}

void GStreamerEngine::receive(std::uint64_t load, const PipelineEvent& event) {
    if (load != *_load || _phase == Phase::Empty) return;
    using Kind = PipelineEvent::Kind;
    switch (event.kind) {
        case Kind::Ready:
        case Kind::SeekRefused:
            return becomeReady();
        case Kind::Advanced:
            return didAdvance();
        case Kind::Ended:
            return didEnd();
        case Kind::Failed:
            return didFail(event.text);
        case Kind::SinkFailed:
            return sinkDidFail(event.text);
        case Kind::Silent:
            if (!std::exchange(_saidSilent, true))
                log("No sound device: " + event.text + ". Playing in silence.");
            return;
        case Kind::Buffering:
            return setBuffering(event.percent < 100);
        case Kind::DurationChanged:
            return readDuration();
        case Kind::Sounding:
            return setSounding(true);
        case Kind::NotSounding:
            return setSounding(false);
        case Kind::ClockLost:
            onPipeline([](Pipeline& pipeline) { pipeline.setPlaying(false); });
            return applyPlaying();
        case Kind::PauseRequested:
            return requestPlaying(false);
        case Kind::PlayRequested:
            return requestPlaying(true);
    }
}

void GStreamerEngine::becomeReady() {
    if (_phase != Phase::Opening && _phase != Phase::Seeking) return;
    if (const auto time = std::exchange(_wantedSeek, std::nullopt))
        return _handover->state() == Handover::State::Open ? performSeek(*time) : begin(*time, _sink);
    _phase = Phase::Ready;
    _handover->offer(_next);
    applyPlaying();
    const auto load = _load->load();
    if (std::exchange(_advancing, false)) tell([](Delegate& delegate) { delegate.engineDidAdvanceToNext(); });
    if (load == *_load) readDuration();
}

void GStreamerEngine::didAdvance() {
    auto source = _handover->settle();
    if (!source) return;
    _source = std::move(source);
    _next.reset();
    _duration.reset();
    _position = Seconds::zero();
    const auto load = _load->load();
    tell([](Delegate& delegate) { delegate.engineDidAdvanceToNext(); });
    if (load == *_load) readDuration();
}

void GStreamerEngine::didEnd() {
    // While seeking it is an end that was left behind.
    if (_phase != Phase::Ready && _phase != Phase::Ended) return;
    const auto end = duration();
    const bool isEarly = end && currentTime() < *end - mostMissing && !isAddress(_source->location);
    if (isEarly) return askWhyItEnded();
    _position = end.value_or(currentTime());
    goOn();
}

void GStreamerEngine::askWhyItEnded() {
    // A file that goes away while it is read just seems to end. The disk that it was on may be slow to say
    // so.
    _queue.async([self = weak(this), load = _load->load(), location = _source->location] {
        const auto reason = unreadableReason(location);
        mainQueue().async([self, load, reason] {
            const auto engine = self.lock();
            if (!engine || *engine->_load != load) return;
            if (!reason.empty()) return engine->didFail("it broke off, " + reason);
            engine->_position = engine->duration().value_or(engine->currentTime());
            engine->goOn();
        });
    });
}

void GStreamerEngine::didFail(const std::string& reason) {
    if (_handover->state() == Handover::State::Sounding) didAdvance();
    if (_handover->state() == Handover::State::Given) {
        // The present source was read to its end before, so the trouble is the next one's. That leaves the
        // pipeline stuck: what is left of the present source comes from a new one.
        const auto next = *std::exchange(_next, std::nullopt);
        begin(currentTime(), _sink);
        return tellFailure(next, reason, true);
    }
    const auto source = *_source;
    if (!_advancing) {
        stop();
        return tellFailure(source, reason, false);
    }
    const auto load = ++*_load;
    letGoOfPipeline();
    tellFailure(source, reason, true);
    if (load == *_load) goOn();  // with what was offered instead
}

void GStreamerEngine::sinkDidFail(const std::string& reason) {
    if (_sink == Pipeline::Sink::Null) return didFail(reason);
    if (_handover->state() == Handover::State::Sounding) didAdvance();
    log("The sound device failed: " + reason + ". Playing on in silence.");
    begin(currentTime(), Pipeline::Sink::Null);
}

void GStreamerEngine::setSounding(bool sounding) {
    if (std::exchange(_sounding, sounding) != sounding)
        tell([](Delegate& delegate) { delegate.engineStateDidChange(); });
}

void GStreamerEngine::setBuffering(bool buffering) {
    if (std::exchange(_buffering, buffering) == buffering) return;
    applyPlaying();
    tell([](Delegate& delegate) { delegate.engineStateDidChange(); });
}

void GStreamerEngine::requestPlaying(bool playing) {
    if (playing == _playing || (playing && !_pausedFromOutside)) return;
    _pausedFromOutside = !playing;
    _playing = playing;
    applyPlaying();
    tell([](Delegate& delegate) { delegate.engineStateDidChange(); });
}

void GStreamerEngine::tell(const std::function<void(Delegate&)>& call) {
    if (const auto delegate = _delegate.lock()) call(*delegate);
}

void GStreamerEngine::tellFailure(const PlaybackSource& source, const std::string& reason, bool isNext) {
    tell([&](Delegate& delegate) { delegate.engineDidFail(source, sentence(source, reason), isNext); });
}

void GStreamerEngine::log(const std::string& line) const {
    if (_options.log) _options.log(line);
}

}  // namespace helmo
