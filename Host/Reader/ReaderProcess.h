#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "Host/Reader/Descriptor.h"
#include "Host/Reader/ReaderProgress.h"

namespace helmo {

/** One running reader: a stream of bytes to it and from it, what it is at, and why it ended. A thread that
   sleeps as long as the reader lives starts it and takes leave of it, so that none is left over dead, and
   none outlives helmo. One thread. */
class ReaderProcess {
public:
    /** What became of a reader. */
    struct End {
        bool isOutOfMemory = false, isOutOfTime = false;
        /** It ended by itself and content. */
        bool isPeaceful = false;
        /** In words: "signal 11". */
        std::string reason;
    };

    /** Starts `program`; whether that worked shows at the first exchange. */
    ReaderProcess(const std::filesystem::path& program, ReaderRole role);
    /** Ends the reader at once. */
    ~ReaderProcess();
    ReaderProcess(const ReaderProcess&) = delete;
    ReaderProcess& operator=(const ReaderProcess&) = delete;

    /** Bytes for the reader, sent by the next exchange that sends. */
    std::string& outgoing() { return _outgoing; }
    /** Bytes from the reader that were not taken yet. */
    std::string_view incoming() const { return std::string_view(_incoming).substr(_taken); }
    void take(std::size_t bytes);

    /** Sends (when asked to) and receives what goes without waiting, and waits up to `limit` when nothing was
       received. False when the reader has gone. */
    bool exchange(bool mustSend, std::chrono::milliseconds limit);
    /** Number of the request that the reader says it is at, or a value of `ReaderProgress`. Believe nothing.
     */
    std::uint32_t current() const;
    /** Ends the reader if it still runs, and says how it ended. One that is stuck in the system's hands, as
       at a broken disk, is left to the sleeping thread. */
    End end();

private:
    struct Life;

    void send();
    bool receive();

    std::shared_ptr<Life> _life;
    Descriptor _socket;
    ReaderProgress* _progress = nullptr;
    std::string _outgoing, _incoming;
    std::size_t _taken = 0;
    std::array<char, 65536> _buffer;
};

}  // namespace helmo
