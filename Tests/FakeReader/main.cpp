#include <cstdlib>
#include <new>
#include <unistd.h>

#include "Host/Reader/Program/ReaderServer.h"

namespace {

/** Misbehaves at files that are called so; everything else is a track of its file's name. */
class HostileTasks final : public helmo::ReaderTasks {
public:
    helmo::TagReading tags(const std::filesystem::path& file) override {
        const std::string name = file.stem().string();
        if (name == "crash" || _isDamaged) std::abort();
        if (name == "hang")
            for (;;) ::pause();
        if (name == "memory") throw std::bad_alloc();
        if (name == "exit") ::_exit(3);
        if (name == "rubbish" && ::write(helmo::ReaderDescriptor::Socket, "rubbish!", 8) != 8) std::abort();
        if (name == "exception") throw std::runtime_error("told so");
        _isDamaged = name == "damage";
        helmo::TagReading reading;
        reading.tags.title = name;
        return reading;
    }

private:
    /** The next file brings it down, though nothing is wrong with that one. */
    bool _isDamaged = false;
};

}  // namespace

int main() {
    HostileTasks tasks;
    return helmo::ReaderServer(tasks, helmo::ReaderRole::Tags).run();
}
