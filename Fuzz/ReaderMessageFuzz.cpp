#include "Fuzz/Require.h"
#include "Host/Reader/ReaderMessage.h"

namespace {

using namespace helmo;

MessageState takeOne(std::string_view& stream, ReaderRequest& request) { return take(stream, request); }
MessageState takeOne(std::string_view& stream, ReaderReply& reply) {
    return take(stream, reply, largestPictureReply);
}

/** Takes `stream` apart message by message. */
template <class Message>
void takeApart(std::string_view stream) {
    for (Message message; takeOne(stream, message) == MessageState::Whole;) {
        std::string once, twice;
        append(message, once);
        std::string_view again = once;
        require(takeOne(again, message) == MessageState::Whole && again.empty(), "it is whole again");
        append(message, twice);
        require(once == twice, "it is the same after another journey");
    }
}

}  // namespace

/** The first byte says what follows: requests or replies. */
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view stream(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] & 1)
        takeApart<ReaderRequest>(stream);
    else
        takeApart<ReaderReply>(stream);
    return 0;
}
