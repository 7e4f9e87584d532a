#include <cstdio>
#include <sys/stat.h>

#include "Host/Reader/Program/ReaderServer.h"

/** Reads music and pictures for helmo, which starts it. */
int main(int count, char** arguments) {
    using namespace helmo;
    struct stat status {};
    if (count != 2 || ::fstat(ReaderDescriptor::Socket, &status) != 0 || !S_ISSOCK(status.st_mode)) {
        std::fputs("helmo-reader is started by helmo, which gives it files to read.\n", stderr);
        return 2;
    }
    const bool isForPictures = std::string_view(arguments[1]) == nameOf(ReaderRole::Pictures);
    ReaderTasks tasks;
    return ReaderServer(tasks, isForPictures ? ReaderRole::Pictures : ReaderRole::Tags).run();
}
