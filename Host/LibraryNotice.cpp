#include "Host/LibraryNotice.h"

#include "Host/Player/SoundFile.h"
#include "Platform/Foundation/PlatformText.h"
#include "Platform/Foundation/RunLoop.h"
#include "Platform/Foundation/StringFormat.h"

namespace helmo {

using namespace zornic;

namespace {

const char* nameOfTexts(StorageTrouble trouble) {
    switch (trouble) {
        case StorageTrouble::Damaged:
            return "LIBRARY_DAMAGED";
        case StorageTrouble::ReadOnly:
            return "LIBRARY_READ_ONLY";
        case StorageTrouble::NoRoom:
            return "LIBRARY_NO_ROOM";
        case StorageTrouble::Busy:
            return "LIBRARY_BUSY";
        case StorageTrouble::Failing:
            return "LIBRARY_FAILING";
        case StorageTrouble::InUse:
            return "LIBRARY_IN_USE";
        case StorageTrouble::Elsewhere:
            break;
    }
    return "LIBRARY_ELSEWHERE";
}

/** Whether there is an empty library now, to be filled again. */
bool beginsAnew(StorageTrouble trouble) {
    return trouble == StorageTrouble::Damaged || trouble == StorageTrouble::InUse ||
           trouble == StorageTrouble::Elsewhere;
}

}  // namespace

LibraryNotice::LibraryNotice(std::shared_ptr<SqliteMediaLibrary> library,
                             std::vector<std::filesystem::path> folders, std::shared_ptr<HostNotices> notices,
                             std::function<void()> rescan)
    : _library(std::move(library)),
      _folders(std::move(folders)),
      _notices(std::move(notices)),
      _rescan(std::move(rescan)) {}

LibraryNotice::~LibraryNotice() { _library->setTroubleHandler({}); }

void LibraryNotice::didMake() {
    Object::didMake();
    _library->setTroubleHandler([weakSelf = weak(this)](StorageTrouble trouble) {
        mainQueue().async([weakSelf, trouble] {
            if (const auto self = weakSelf.lock()) self->note(trouble);
        });
    });
    // A folder on a network or a failing disk may keep one waiting.
    globalQueue(QueuePriority::Background).async([weakSelf = weak(this), folders = _folders] {
        std::vector<std::filesystem::path> unreachable;
        std::error_code error;
        for (const auto& folder : folders)
            if (!std::filesystem::is_directory(folder, error)) unreachable.push_back(folder);
        if (unreachable.empty()) return;
        mainQueue().async([weakSelf, unreachable = std::move(unreachable)] {
            if (const auto self = weakSelf.lock()) self->noteUnreachable(unreachable);
        });
    });
}

void LibraryNotice::note(StorageTrouble trouble) {
    const std::string name = nameOfTexts(trouble);
    _notices->tellOnce(name, {platformText(name + "_TITLE"), platformText(name + "_MESSAGE")});
    if (beginsAnew(trouble)) return _rescan();
    if (!_retry) _retry = RunLoop::main().every(toDuration(retryInterval), [this] { retry(); });
}

void LibraryNotice::retry() {
    if (_library->isStoring())
        _retry.reset();
    else
        _rescan();
}

void LibraryNotice::noteUnreachable(const std::vector<std::filesystem::path>& folders) {
    _notices->tellOnce(
        "folders",
        {platformText("MUSIC_UNREACHABLE_TITLE"),
         folders.size() == 1
             ? formatted(platformText("MUSIC_UNREACHABLE_MESSAGE"), {nameOf(folders.front())})
             : formatted(platformText("MUSIC_UNREACHABLE_MANY_MESSAGE"), {std::uint64_t{folders.size()}})});
}

}  // namespace helmo
