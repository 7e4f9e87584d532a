#include "Host/Library/LibraryStorage.h"

#include <atomic>

#include "Host/Library/DatabaseFile.h"
#include "Host/Library/Schema.h"

namespace helmo {

namespace {

using Kind = DatabaseError::Kind;
using Access = Database::Access;

/** For a lock when opening: helmo has to come up. */
constexpr std::chrono::milliseconds openingPatience{1500};
/** For a lock when writing; a write is tried again. */
constexpr std::chrono::milliseconds writingPatience{250};

Access accessForReaders(Access access) { return access == Access::ReadWrite ? Access::ReadOnly : access; }

}  // namespace

LibraryStorage::LibraryStorage(std::filesystem::path file, StorageTroubles& troubles)
    : _file(std::move(file)), _troubles(troubles) {
    try {
        openStored();
    } catch (const DatabaseError& error) {
        if (!openReadOnly(error))
            openElsewhere(error.what(),
                          error.kind() == Kind::Busy ? StorageTrouble::InUse : StorageTrouble::Elsewhere);
    } catch (const std::filesystem::filesystem_error& error) {
        openElsewhere(error.code().message(), StorageTrouble::Elsewhere);
    }
}

void LibraryStorage::openStored() {
    if (_file.has_parent_path()) std::filesystem::create_directories(_file.parent_path());
    try {
        connect(_file, Access::ReadWrite);
    } catch (const DatabaseError& error) {
        if (!error.isDamage()) throw;
        makeAnew(error.what());
    }
}

bool LibraryStorage::isWhatWasOpened() const {
    const auto now = FileStamp::of(_file);
    return now && _opened && now->inode == _opened->inode && now->device == _opened->device;
}

void LibraryStorage::makeAnew(const std::string& reason) {
    const std::string problem = "library: " + _file.string() + " is damaged (" + reason + "); ";
    _wasDamaged = true;
    if (isWhatWasOpened())
        _troubles.log(problem + "kept as " + setAside(_file).filename().string() + ", a new one is made");
    else
        _troubles.log(problem + "it was replaced already");
    connect(_file, Access::ReadWrite);
    _troubles.add(StorageTrouble::Damaged);
}

bool LibraryStorage::openReadOnly(const DatabaseError& error) {
    std::error_code unreadable;
    const bool mayBeWhole = error.kind() != Kind::Busy && !error.isDamage();
    if (!mayBeWhole || !std::filesystem::exists(_file, unreadable)) return false;
    for (const auto access : {Access::ReadOnly, Access::Immutable}) {
        try {
            connect(_file, access);
        } catch (const DatabaseError&) {
            continue;
        }
        _troubles.log("library: " + _file.string() + " can't be written (" + error.what() +
                      "); nothing new is stored");
        _troubles.add(error.kind() == Kind::NoRoom ? StorageTrouble::NoRoom : StorageTrouble::ReadOnly);
        return true;
    }
    return false;
}

void LibraryStorage::openElsewhere(const std::string& reason, StorageTrouble trouble) {
    _troubles.log("library: " + _file.string() + " can't be used (" + reason +
                  "); a temporary library is used until helmo ends");
    _temporaryFolder.emplace();
    try {
        if (_temporaryFolder->path().empty()) throw DatabaseError(0, "no temporary folder");
        connect(_temporaryFolder->path() / _file.filename(), Access::ReadWrite);
    } catch (const DatabaseError& error) {
        static std::atomic<int> databases{0};
        _troubles.log(std::string("library: it is kept in memory: ") + error.what());
        connect("/helmo-library-" + std::to_string(++databases), Access::Memory);
    }
    _troubles.add(trouble);
}

void LibraryStorage::replace(const std::string& reason) {
    close();
    if (_wasDamaged) return openElsewhere(reason, StorageTrouble::Elsewhere);
    try {
        makeAnew(reason);
    } catch (const DatabaseError& error) {
        openElsewhere(error.what(), StorageTrouble::Elsewhere);
    } catch (const std::filesystem::filesystem_error& error) {
        openElsewhere(reason + "; " + error.code().message(), StorageTrouble::Elsewhere);
    }
}

void LibraryStorage::moveElsewhere(const std::string& reason) {
    close();
    openElsewhere(reason, StorageTrouble::Elsewhere);
}

void LibraryStorage::connect(const std::filesystem::path& file, Access access) {
    _opened = FileStamp::of(file);
    auto writer = std::make_unique<Database>(file, access, openingPatience);
    Schema::prepare(*writer);
    probe(*writer);
    if (!_opened) _opened = FileStamp::of(file);
    writer->setPatience(writingPatience);
    _readers = std::make_shared<Readers>(file, accessForReaders(access));
    if (access == Access::ReadWrite || access == Access::Memory) _writer = std::move(writer);
}

void LibraryStorage::close() {
    if (_readers) _readers->close();
    _writer = nullptr;
}

}  // namespace helmo
