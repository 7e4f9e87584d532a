#include "Host/Reader/ReaderConversation.h"

#include <algorithm>
#include <utility>

namespace helmo {

namespace {

/** So many requests are sent at once while the reader still has enough to do. */
constexpr std::size_t requestsAtOnce = 16;
constexpr auto lookInterval = std::chrono::milliseconds(250);

std::string failureText(const ReaderProcess::End& end, bool isHung, bool isMad,
                        std::chrono::milliseconds limit) {
    if (isHung || end.isOutOfTime) {
        const auto tenths = limit.count() / 100;
        return "reading took longer than " + std::to_string(tenths / 10) +
               (tenths % 10 ? "." + std::to_string(tenths % 10) : "") + " s";
    }
    if (isMad) return "the reader gave no sensible answer";
    if (end.isOutOfMemory) return "reading needed more memory than allowed";
    return "the reader crashed at it (" + end.reason + ")";
}

}  // namespace

void ReaderConversation::ask(ReaderRequest request) {
    if (++_lastNumber >= ReaderProgress::idle) _lastNumber = 1;
    request.number = _lastNumber;
    _exchanges.push_back({std::move(request), {}, false});
    if (!isUsable())
        _exchanges.back().answer = ReaderAnswer();
    else if (_secondChance == 0)
        write(_exchanges.back());
    if (_gathered >= requestsAtOnce || _gathered == _sent) flush();
}

void ReaderConversation::flush() {
    if (_gathered == 0) return;
    _gathered = 0;
    converse({});
}

std::optional<ReaderAnswer> ReaderConversation::take(bool wait) {
    if (_exchanges.empty()) return std::nullopt;
    if (!_exchanges.front().answer) converse({});
    while (wait && !_exchanges.front().answer) converse(lookInterval);
    if (!_exchanges.front().answer) return std::nullopt;
    auto answer = std::move(_exchanges.front().answer);
    _exchanges.pop_front();
    return answer;
}

void ReaderConversation::write(Exchange& exchange) {
    if (!_process) {
        _process = std::make_unique<ReaderProcess>(_program->file(), _role);
        _answered = 0;
        _seen = ReaderProgress::notStarted;
        _seenSince = Clock::now();
    }
    if (_sent == 0) _seenSince = Clock::now();
    append(exchange.request, _process->outgoing());
    exchange.wasSent = true;
    ++_sent;
    ++_gathered;
}

void ReaderConversation::writeAll() {
    for (Exchange& exchange : _exchanges)
        if (!exchange.answer && !exchange.wasSent) write(exchange);
}

void ReaderConversation::converse(std::chrono::milliseconds wait) {
    if (!isUsable() || _sent == 0) return;
    const bool hasEnough = _gathered < requestsAtOnce && _sent - _gathered >= requestsAtOnce;
    const bool mustSend = wait.count() > 0 || _gathered == 0 || !hasEnough;
    if (mustSend) _gathered = 0;
    const bool isThere = _process->exchange(mustSend, wait);
    const bool isSensible = readReplies();
    if (!isThere || !isSensible)
        bury(false, !isSensible);
    else if (isStuck())
        bury(true, false);
}

/** False when the reader sent rubbish. */
bool ReaderConversation::readReplies() {
    auto stream = _process->incoming();
    const auto size = stream.size();
    const auto limit = _role == ReaderRole::Tags ? largestTagReply : largestPictureReply;
    auto state = MessageState::Whole;
    for (ReaderReply reply; (state = helmo::take(stream, reply, limit)) == MessageState::Whole;) {
        Exchange* const exchange = unanswered(reply.number);
        const bool isOfTags = std::holds_alternative<TagReading>(reply.reading);
        if (!exchange || isOfTags != (exchange->request.kind == ReaderRequest::Kind::Tags)) return false;
        if (std::exchange(_secondChance, 0) != 0) writeAll();
        exchange->answer = ReaderAnswer{std::move(reply), {}};
        --_sent;
        ++_answered;
        _barrenReaders = 0;
        _seenSince = Clock::now();
    }
    _process->take(size - stream.size());
    return state != MessageState::Rubbish;
}

/** Whether the reader has been at one request, or silent though asked, for longer than it may. */
bool ReaderConversation::isStuck() {
    const auto current = _process->current();
    const auto now = Clock::now();
    if (_sent == 0 || current != _seen) {
        _seen = current;
        _seenSince = now;
    }
    return now - _seenSince > _program->limit();
}

/** Ends the reader, finds who was to blame, and sees to it that the others are asked again. */
void ReaderConversation::bury(bool isHung, bool isMad) {
    const auto current = _process->current();
    const auto end = _process->end();
    _process = nullptr;
    Exchange* guilty = unanswered(current);
    if (!guilty && (isHung || isMad)) guilty = oldestSent();
    const bool wasAlone = _answered == 0 && guilty && guilty == oldestSent();
    for (Exchange& exchange : _exchanges) exchange.wasSent = false;
    _sent = _gathered = 0;
    _secondChance = 0;
    if (!guilty && ++_barrenReaders == maximumBarrenReaders) {
        _program->reportUnusable(end.reason);
        for (Exchange& exchange : _exchanges)
            if (!exchange.answer) exchange.answer = ReaderAnswer();
        return;
    }
    if (guilty && (wasAlone || isHung || end.isOutOfTime)) {
        fail(*guilty, failureText(end, isHung, isMad, _program->limit()));
    } else if (guilty) {
        _secondChance = guilty->request.number;
        write(*guilty);
        return;
    }
    writeAll();
}

void ReaderConversation::fail(Exchange& exchange, std::string failure) {
    exchange.answer = ReaderAnswer{{}, std::move(failure)};
    _barrenReaders = 0;
}

/** Numbers are given in order, so they say where. */
ReaderConversation::Exchange* ReaderConversation::unanswered(std::uint32_t number) {
    if (_exchanges.empty()) return nullptr;
    const std::uint32_t at = number - _exchanges.front().request.number;
    if (at >= _exchanges.size()) return nullptr;
    Exchange& exchange = _exchanges[at];
    return exchange.request.number == number && exchange.wasSent && !exchange.answer ? &exchange : nullptr;
}

ReaderConversation::Exchange* ReaderConversation::oldestSent() {
    const auto found = std::ranges::find_if(
        _exchanges, [](const Exchange& exchange) { return exchange.wasSent && !exchange.answer; });
    return found == _exchanges.end() ? nullptr : &*found;
}

}  // namespace helmo
