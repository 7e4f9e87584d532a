#include "Host/Reader/ReaderProcess.h"

#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>

namespace helmo {

namespace {

constexpr auto endLimit = std::chrono::seconds(1);
/** Own descriptors lie above those that the reader is born with. */
constexpr int firstDescriptor = 10;
constexpr std::size_t keptCapacity = 1 << 20;

std::string textOf(int error) { return std::generic_category().message(error); }

Descriptor movedUp(Descriptor descriptor) {
    return Descriptor(::fcntl(descriptor.number(), F_DUPFD_CLOEXEC, firstDescriptor));
}

/** A page whose size nobody can change any more: reading it can't fail, whatever the other side does. */
Descriptor makePage() {
    Descriptor page(::memfd_create("helmo-reader", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!page || ::ftruncate(page.number(), ReaderProgress::pageSize) != 0 ||
        ::fcntl(page.number(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0)
        return Descriptor();
    return movedUp(std::move(page));
}

/** Starts `program` with nothing but the two descriptors; 0 or what went wrong. */
int spawn(pid_t& process, const std::string& program, ReaderRole role, int socket, int page) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::posix_spawn_file_actions_addopen(&actions, standard, "/dev/null", O_RDWR, 0);
    ::posix_spawn_file_actions_adddup2(&actions, socket, ReaderDescriptor::Socket);
    ::posix_spawn_file_actions_adddup2(&actions, page, ReaderDescriptor::Progress);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, ReaderDescriptor::Progress + 1);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    sigset_t none, all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    // In a group of its own, so that a key press that ends helmo doesn't look like a crash at some file.
    ::posix_spawnattr_setpgroup(&attributes, 0);
    ::posix_spawnattr_setflags(&attributes,
                               POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    std::string name = program, word = nameOf(role);
    char* const arguments[] = {name.data(), word.data(), nullptr};
    const int problem = ::posix_spawn(&process, program.c_str(), &actions, &attributes, arguments, environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return problem;
}

ReaderProcess::End endOf(int status) {
    ReaderProcess::End end;
    if (WIFSIGNALED(status)) {
        end.reason = "signal " + std::to_string(WTERMSIG(status));
    } else {
        const int code = WEXITSTATUS(status);
        end.isOutOfMemory = code == ReaderExit::OutOfMemory;
        end.isOutOfTime = code == ReaderExit::OutOfTime;
        end.isPeaceful = code == 0;
        end.reason = "exit status " + std::to_string(code);
    }
    return end;
}

}  // namespace

/** What the sleeping thread and the one that uses the reader both know. */
struct ReaderProcess::Life {
    std::mutex mutex;
    std::condition_variable hasChanged;
    pid_t process = 0;
    bool mustEnd = false, hasEnded = false;
    End end;

    /** From birth to death. The reader hangs on the thread that started it: it is killed when that ends. */
    void keep(const std::string& program, ReaderRole role, Descriptor socket, Descriptor page) {
        pid_t child = 0;
        const int problem = spawn(child, program, role, socket.number(), page.number());
        socket.close();
        page.close();
        std::unique_lock lock(mutex);
        if (problem != 0) {
            end.reason = textOf(problem);
        } else {
            process = child;
            if (mustEnd) ::kill(child, SIGKILL);
            lock.unlock();
            siginfo_t info;
            // It stays known by its number until nobody can send it a signal any more.
            while (::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT) != 0 && errno == EINTR)
                continue;
            lock.lock();
            int status = 0;
            if (::waitpid(child, &status, 0) == child) end = endOf(status);
        }
        hasEnded = true;
        hasChanged.notify_all();
    }
    void kill() {
        std::lock_guard lock(mutex);
        mustEnd = true;
        if (process > 0 && !hasEnded) ::kill(process, SIGKILL);
    }
};

ReaderProcess::ReaderProcess(const std::filesystem::path& program, ReaderRole role)
    : _life(std::make_shared<Life>()) {
    int pair[2] = {-1, -1};
    Descriptor page = makePage();
    if (!page || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0) {
        _life->end.reason = textOf(errno);
        _life->hasEnded = true;
        return;
    }
    _socket = Descriptor(pair[0]);
    Descriptor theirs = movedUp(Descriptor(pair[1]));
    void* const memory = ::mmap(nullptr, ReaderProgress::pageSize, PROT_READ, MAP_SHARED, page.number(), 0);
    if (memory != MAP_FAILED) _progress = static_cast<ReaderProgress*>(memory);
    try {
        std::thread([life = _life, program = program.string(), role, socket = std::move(theirs),
                     page = std::move(page)]() mutable {
            life->keep(program, role, std::move(socket), std::move(page));
        }).detach();
    } catch (const std::system_error& error) {
        _socket.close();
        _life->end.reason = error.what();
        _life->hasEnded = true;
    }
}

ReaderProcess::~ReaderProcess() {
    end();
    if (_progress) ::munmap(_progress, ReaderProgress::pageSize);
}

bool ReaderProcess::exchange(bool mustSend, std::chrono::milliseconds limit) {
    if (!_socket) return false;
    if (mustSend) send();
    const auto before = _incoming.size();
    if (!receive()) return false;
    if (_incoming.size() > before || limit.count() == 0) return true;
    pollfd waiting{_socket.number(), static_cast<short>(_outgoing.empty() ? POLLIN : POLLIN | POLLOUT), 0};
    ::poll(&waiting, 1, static_cast<int>(limit.count()));
    send();
    return receive();
}

/** What the reader doesn't take any more is lost: that it has gone shows when receiving. */
void ReaderProcess::send() {
    std::size_t sent = 0;
    while (sent < _outgoing.size()) {
        const auto count = ::send(_socket.number(), _outgoing.data() + sent, _outgoing.size() - sent,
                                  MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) break;
        sent += static_cast<std::size_t>(count);
    }
    _outgoing.erase(0, sent);
}

/** Up to a few buffers full. False at the end, when nothing was received any more. */
bool ReaderProcess::receive() {
    constexpr int buffersAtOnce = 16;
    for (int received = 0; received < buffersAtOnce; ++received) {
        const auto count = ::recv(_socket.number(), _buffer.data(), _buffer.size(), MSG_DONTWAIT);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return true;
        if (count <= 0) return received > 0;
        _incoming.append(_buffer.data(), static_cast<std::size_t>(count));
        if (static_cast<std::size_t>(count) < _buffer.size()) return true;
    }
    return true;
}

void ReaderProcess::take(std::size_t bytes) {
    _taken += bytes;
    if (_taken < _incoming.size()) return;
    if (_incoming.capacity() > keptCapacity) _incoming = std::string();
    _incoming.clear();
    _taken = 0;
}

std::uint32_t ReaderProcess::current() const {
    return _progress ? _progress->request.load(std::memory_order_relaxed) : ReaderProgress::notStarted;
}

ReaderProcess::End ReaderProcess::end() {
    _life->kill();
    _socket.close();
    std::unique_lock lock(_life->mutex);
    _life->hasChanged.wait_for(lock, endLimit, [this] { return _life->hasEnded; });
    return _life->end;
}

}  // namespace helmo
