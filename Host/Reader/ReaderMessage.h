#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "Host/Library/TagReader.h"
#include "Host/Reader/Picture.h"

namespace helmo {

/** What helmo asks of its reader. */
struct ReaderRequest {
    enum class Kind : std::uint8_t { Tags = 1, PictureOfFile = 2, PictureOfBytes = 3 };

    /** Comes back with the reply; never 0. */
    std::uint32_t number = 0;
    Kind kind = Kind::Tags;
    /** The file's path, or the picture's bytes. */
    std::string subject;
    /** Of pictures only. */
    PixelSize fitting;
};

/** What the reader answers. */
struct ReaderReply {
    std::uint32_t number = 0;
    std::variant<TagReading, PictureReading> reading;
};

/** What lies at the beginning of a stream of messages. */
enum class MessageState { Whole, Incomplete, Rubbish };

/** Messages are bounded and begin with their length. A side believes nothing that the other one sends:
   lengths, kinds, numbers, texts and picture sizes are checked, and a stream with a fault in it is rubbish
   from there on. What is too long to send is sent shortened (texts) or empty (everything else). */
void append(const ReaderRequest& request, std::string& stream);
void append(const ReaderReply& reply, std::string& stream);

/** Takes one message from the beginning of `stream`; when it isn't whole, neither `stream` nor the message is
   of use for anything but waiting for more. */
MessageState take(std::string_view& stream, ReaderRequest& request);
/** A reply of more than `limit` bytes is rubbish. */
MessageState take(std::string_view& stream, ReaderReply& reply, std::size_t limit);

/** Bytes of the largest replies that there can be: with tags, and with a picture. */
inline constexpr std::size_t largestTagReply = 160 << 10;
inline constexpr std::size_t largestPictureReply = (maximumFittedPixels << 2) + largestTagReply;

}  // namespace helmo
