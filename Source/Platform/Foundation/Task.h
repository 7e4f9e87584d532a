#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace zornic {

using Task = std::function<void()>;

using Duration = std::chrono::steady_clock::duration;
using TimePoint = std::chrono::steady_clock::time_point;
/** Seconds with fractions, the unit of playback times and animations. */
using Seconds = std::chrono::duration<double>;

inline Duration toDuration(Seconds seconds) { return std::chrono::duration_cast<Duration>(seconds); }

/** Something that lasts as long as this is kept: destroying it ends it. Move-only. */
class [[nodiscard]] Token {
public:
    Token() = default;
    explicit Token(Task end) : _end(std::move(end)) {}
    Token(Token&& other) noexcept : _end(std::exchange(other._end, nullptr)) {}
    Token& operator=(Token&& other) noexcept {
        if (this != &other) {
            reset();
            _end = std::exchange(other._end, nullptr);
        }
        return *this;
    }
    ~Token() { reset(); }

    /** Ends it now; nothing when already ended. */
    void reset() {
        if (auto end = std::exchange(_end, nullptr)) end();
    }
    /** Whether it was ever started and not ended from this side. */
    explicit operator bool() const { return static_cast<bool>(_end); }

private:
    Task _end;
};

}  // namespace zornic
