#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "Host/Reader/ReaderMessage.h"
#include "Host/Reader/ReaderProcess.h"
#include "Host/Reader/ReaderProgram.h"

namespace helmo {

/** What came of a request: a reading, or why the reader failed at it; neither when there is no reader. */
struct ReaderAnswer {
    std::optional<ReaderReply> reply;
    std::string failure;
};

/** Requests to one reader, each answered in its turn whatever becomes of the reader: when it dies, hangs or
   answers rubbish, the request that it was at fails, and the others are asked again of a fresh one. A request
   at which a reader crashed that had read others before gets a second chance: their damage may have killed
   it. The reader runs from the first request on. One thread. */
class ReaderConversation {
public:
    ReaderConversation(std::shared_ptr<ReaderProgram> program, ReaderRole role)
        : _program(std::move(program)), _role(role) {}

    /** Asks for something; its number is given here. Never waits. */
    void ask(ReaderRequest request);
    /** The next answer, in the order of asking; none when it isn't there (`wait` false) or nothing is asked
       for. */
    std::optional<ReaderAnswer> take(bool wait);
    std::size_t pending() const { return _exchanges.size(); }
    /** Sends what is still gathered. */
    void flush();

private:
    struct Exchange {
        ReaderRequest request;
        std::optional<ReaderAnswer> answer;
        bool wasSent = false;
    };
    using Clock = std::chrono::steady_clock;

    bool isUsable() const { return _barrenReaders < maximumBarrenReaders; }
    void write(Exchange& exchange);
    void writeAll();
    void converse(std::chrono::milliseconds wait);
    bool readReplies();
    bool isStuck();
    void bury(bool isHung, bool isMad);
    Exchange* unanswered(std::uint32_t number);
    Exchange* oldestSent();
    void fail(Exchange& exchange, std::string failure);

    static constexpr int maximumBarrenReaders = 3;

    const std::shared_ptr<ReaderProgram> _program;
    const ReaderRole _role;
    std::unique_ptr<ReaderProcess> _process;
    std::deque<Exchange> _exchanges;
    std::uint32_t _lastNumber = 0;
    /** Requests written for this reader that it has not answered, and those of them that are only gathered.
     */
    std::size_t _sent = 0, _gathered = 0;
    std::size_t _answered = 0;
    /** Readers in a row that ended without having answered anything or failed at anything. */
    int _barrenReaders = 0;
    /** Number of the request that is tried a second time, alone; 0: none. */
    std::uint32_t _secondChance = 0;
    std::uint32_t _seen = ReaderProgress::notStarted;
    Clock::time_point _seenSince;
};

}  // namespace helmo
