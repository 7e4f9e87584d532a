#pragma once

#include <algorithm>
#include <cstdint>
#include <istream>
#include <string>

namespace helmo {

/** Reads big-endian numbers and bytes anywhere in a stream. What lies behind its end reads as nothing. */
class ByteSource {
public:
    explicit ByteSource(std::istream& stream) : _stream(stream) {
        stream.clear();
        stream.seekg(0, std::ios::end);
        const auto end = stream.tellg();
        _size = end > 0 ? static_cast<std::uint64_t>(end) : 0;
    }

    std::uint64_t size() const { return _size; }
    /** `count` bytes from `at` on; fewer at the end. */
    std::string bytes(std::uint64_t at, std::size_t count) {
        if (at >= _size) return {};
        std::string result(static_cast<std::size_t>(std::min<std::uint64_t>(count, _size - at)), '\0');
        _stream.clear();
        _stream.seekg(static_cast<std::streamoff>(at));
        _stream.read(result.data(), static_cast<std::streamsize>(result.size()));
        result.resize(static_cast<std::size_t>(std::max<std::streamsize>(_stream.gcount(), 0)));
        return result;
    }
    /** A number of `count` bytes; 0 where they are not all there. */
    std::uint64_t number(std::uint64_t at, std::size_t count) { return numberIn(bytes(at, count), 0, count); }
    /** The same of bytes that were read. */
    static std::uint64_t numberIn(const std::string& bytes, std::size_t at, std::size_t count) {
        if (at > bytes.size() || bytes.size() - at < count) return 0;
        std::uint64_t value = 0;
        for (std::size_t end = at + count; at < end; ++at)
            value = value << 8 | static_cast<unsigned char>(bytes[at]);
        return value;
    }

private:
    std::istream& _stream;
    std::uint64_t _size = 0;
};

}  // namespace helmo
