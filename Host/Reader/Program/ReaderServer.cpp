#include "Host/Reader/Program/ReaderServer.h"

#include <array>
#include <cerrno>
#include <new>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Host/Library/TagText.h"
#include "Host/Reader/Program/ReaderLimits.h"

namespace helmo {

namespace {

constexpr int badUse = 2;
/** A reader of pictures that nobody needed for so long ends: its memory is worth more than its start. */
constexpr int idleMilliseconds = 30'000;
/** Replies are sent when there are so many, or when nothing more is asked for. */
constexpr int repliesAtOnce = 16;
constexpr std::size_t bytesAtOnce = 16 << 10, keptCapacity = 1 << 20;

void release(std::string& buffer) {
    if (buffer.capacity() > keptCapacity) buffer = std::string();
}

}  // namespace

int ReaderServer::run() {
    applyReaderLimits(_role);
    void* const page = ::mmap(nullptr, ReaderProgress::pageSize, PROT_READ | PROT_WRITE, MAP_SHARED,
                              ReaderDescriptor::Progress, 0);
    if (page == MAP_FAILED) return badUse;
    _progress = static_cast<ReaderProgress*>(page);
    setProgress(ReaderProgress::idle);
    while (receive()) {
        std::string_view stream = _incoming;
        auto state = MessageState::Whole;
        for (ReaderRequest request; (state = take(stream, request)) == MessageState::Whole;) answer(request);
        if (state == MessageState::Rubbish) return badUse;
        _incoming.erase(0, _incoming.size() - stream.size());
        if (_incoming.empty()) release(_incoming);
        setProgress(ReaderProgress::idle);
        flush();
    }
    return 0;
}

/** False at the end, or when nothing came for long. */
bool ReaderServer::receive() {
    static std::array<char, 65536> buffer;
    for (;;) {
        pollfd waiting{ReaderDescriptor::Socket, POLLIN, 0};
        if (_role == ReaderRole::Pictures && ::poll(&waiting, 1, idleMilliseconds) == 0) return false;
        const auto count = ::read(ReaderDescriptor::Socket, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        _incoming.append(buffer.data(), static_cast<std::size_t>(count));
        return true;
    }
}

void ReaderServer::answer(const ReaderRequest& request) {
    setProgress(request.number);
    restartReaderTime();
    try {
        append(replyTo(request), _outgoing);
    } catch (const std::bad_alloc&) {
        // What is left of the memory may be in pieces: a fresh process goes on, and learns from the exit
        // status and from the page what happened here.
        flush();
        ::_exit(ReaderExit::OutOfMemory);
    }
    if (++_gathered < repliesAtOnce && _outgoing.size() < bytesAtOnce) return;
    setProgress(ReaderProgress::idle);
    flush();
}

ReaderReply ReaderServer::replyTo(const ReaderRequest& request) {
    using Kind = ReaderRequest::Kind;
    std::string problem;
    try {
        if (request.kind == Kind::Tags) {
            TagReading reading = _tasks.tags(request.subject);
            reading.problem = cleanTagText(reading.problem);
            return {request.number, std::move(reading)};
        }
        PictureReading reading = request.kind == Kind::PictureOfFile
                                     ? _tasks.pictureOfFile(request.subject, request.fitting)
                                     : _tasks.pictureOfBytes(request.subject, request.fitting);
        reading.problem = cleanTagText(reading.problem);
        return {request.number, std::move(reading)};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        problem = cleanTagText(std::string("it can't be read: ") + error.what());
    }
    if (request.kind == Kind::Tags) return {request.number, TagReading{{}, problem, false}};
    return {request.number, PictureReading{{}, problem}};
}

void ReaderServer::flush() {
    std::size_t sent = 0;
    while (sent < _outgoing.size()) {
        const auto count =
            ::send(ReaderDescriptor::Socket, _outgoing.data() + sent, _outgoing.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) ::_exit(0);  // nobody listens any more
        sent += static_cast<std::size_t>(count);
    }
    _outgoing.clear();
    release(_outgoing);
    _gathered = 0;
}

void ReaderServer::setProgress(std::uint32_t request) {
    _progress->request.store(request, std::memory_order_relaxed);
}

}  // namespace helmo
