#pragma once

#include <unistd.h>
#include <utility>

namespace helmo {

/** One owned file descriptor. */
class Descriptor {
public:
    Descriptor() = default;
    /** Takes `number` over; negative: none. */
    explicit Descriptor(int number) : _number(number) {}
    Descriptor(Descriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) close();
        _number = std::exchange(other._number, -1);
        return *this;
    }
    ~Descriptor() { close(); }

    explicit operator bool() const { return _number >= 0; }
    int number() const { return _number; }
    void close() {
        if (_number >= 0) ::close(std::exchange(_number, -1));
    }

private:
    int _number = -1;
};

}  // namespace helmo
