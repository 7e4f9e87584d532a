#pragma once

#include <string>

#include "Host/Reader/Program/ReaderTasks.h"
#include "Host/Reader/ReaderMessage.h"
#include "Host/Reader/ReaderProgress.h"

namespace helmo {

/** Answers requests, one after the other, until helmo closes its end. */
class ReaderServer {
public:
    ReaderServer(ReaderTasks& tasks, ReaderRole role) : _tasks(tasks), _role(role) {}
    /** Under the limits of its role; the process's exit status. */
    int run();

private:
    bool receive();
    void answer(const ReaderRequest& request);
    ReaderReply replyTo(const ReaderRequest& request);
    void flush();
    void setProgress(std::uint32_t request);

    ReaderTasks& _tasks;
    const ReaderRole _role;
    ReaderProgress* _progress = nullptr;
    std::string _incoming, _outgoing;
    int _gathered = 0;
};

}  // namespace helmo
