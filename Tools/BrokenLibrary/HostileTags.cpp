#include "Tools/BrokenLibrary/HostileTags.h"

#include "Tools/BrokenLibrary/Bytes.h"

namespace helmo::broken {

namespace {

using namespace std::string_literals;

std::uint64_t saidOr(std::int64_t said, std::size_t real) {
    return said < 0 ? real : static_cast<std::uint64_t>(said);
}

/** Seven bits a byte. */
std::string syncSafe(std::uint64_t value) {
    std::string bytes;
    for (int shift = 21; shift >= 0; shift -= 7) bytes += static_cast<char>(value >> shift & 0x7f);
    return bytes;
}

}  // namespace

std::string id3Frame(std::string_view name, std::string_view content, std::int64_t size) {
    return std::string(name) + bigEndian(saidOr(size, content.size()), 4) + "\0\0"s + std::string(content);
}

std::string id3Text(std::string_view name, std::string_view text, char encoding) {
    return id3Frame(name, encoding + std::string(text));
}

std::string id3Picture(std::string_view bytes) {
    return id3Frame("APIC", "\0image/jpeg\0\x03\0"s + std::string(bytes));
}

std::string id3Tag(std::string_view frames, std::int64_t size, char version, char flags) {
    return "ID3"s + version + '\0' + flags + syncSafe(saidOr(size, frames.size())) + std::string(frames);
}

std::string vorbisComments(const Comments& comments, std::int64_t count) {
    std::string block = littleEndian(4, 4) + "none" + littleEndian(saidOr(count, comments.size()), 4);
    for (const auto& [name, value] : comments)
        block += littleEndian(name.size() + 1 + value.size(), 4) + name + '=' + value;
    return block;
}

std::string withFlacBlock(const std::string& flac, int type, std::string_view block, std::int64_t size) {
    constexpr std::size_t firstBlockEnd = 4 + 4 + 34;  // the mark, then the stream's description
    std::string file = flac.substr(0, firstBlockEnd);
    file[4] = 0;  // not the last
    const bool wasLast = (flac[4] & '\x80') != 0;
    file += static_cast<char>(type | (wasLast ? 0x80 : 0));
    return file + bigEndian(saidOr(size, block.size()), 3) + std::string(block) + flac.substr(firstBlockEnd);
}

std::string apeTag(std::string_view items, std::uint32_t count) {
    return std::string(items) + "APETAGEX" + littleEndian(2000, 4) + littleEndian(items.size() + 32, 4) +
           littleEndian(count, 4) + std::string(12, '\0');
}

}  // namespace helmo::broken
