#include "Platform/Toolkit/Animation.h"

#include <memory>

#include "Platform/Foundation/RunLoop.h"

namespace zornic {

namespace {

class Running : public std::enable_shared_from_this<Running> {
public:
    Running(Seconds duration, double (*easing)(double), std::function<void(double)> step,
            std::function<void(bool)> completion)
        : _duration(duration), _easing(easing), _step(std::move(step)), _completion(std::move(completion)) {}

    void start() {
        _start = RunLoop::main().now();
        _frames = RunLoop::main().onFrame([weak = weak_from_this()](TimePoint now) {
            if (const auto self = weak.lock()) self->frame(now);
        });
    }
    void end(bool finished) {
        if (std::exchange(_ended, true)) return;
        _frames.reset();
        if (_completion) _completion(finished);
    }

private:
    void frame(TimePoint now) {
        const Seconds elapsed = now - _start;
        if (elapsed < _duration) {
            if (elapsed > Seconds::zero()) _step(_easing(elapsed / _duration));
            return;
        }
        _step(1);
        end(true);
    }

    const Seconds _duration;
    double (*const _easing)(double);
    const std::function<void(double)> _step;
    const std::function<void(bool)> _completion;
    TimePoint _start;
    Token _frames;
    bool _ended = false;
};

}  // namespace

double easeOut(double progress) {
    const double left = 1 - progress;
    return 1 - left * left * left;
}

double linear(double progress) { return progress; }

Token animate(Seconds duration, double (*easing)(double), std::function<void(double)> step,
              std::function<void(bool finished)> completion) {
    const auto running = std::make_shared<Running>(duration, easing, std::move(step), std::move(completion));
    running->start();
    return Token([running] { running->end(false); });
}

}  // namespace zornic
