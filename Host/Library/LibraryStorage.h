#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "Host/Library/Database.h"
#include "Host/Library/MediaFiles.h"
#include "Host/Library/Readers.h"
#include "Host/Library/StorageTrouble.h"
#include "Host/TemporaryFolder.h"

namespace helmo {

/** The open database of a library. There always is one: where the file can't be used, it is read-only, else a
   temporary one, else one in memory. Used by one thread at a time; the readers by any. */
class LibraryStorage {
public:
    /** Opens or makes `file`, and its folder. Waits a moment for a lock. What isn't as usual goes to
       `troubles`, which outlives it. */
    LibraryStorage(std::filesystem::path file, StorageTroubles& troubles);

    /** The writing connection; none when nothing can be stored. */
    Database* writer() { return _writer.get(); }
    const std::shared_ptr<Readers>& readers() const { return _readers; }
    const std::filesystem::path& file() const { return _file; }

    /** Closes the database, sets the damaged file aside and makes a new one; a temporary one when damage
       comes back. */
    void replace(const std::string& reason);
    /** Closes the database, whose disk fails, leaves the file as it is, and makes a temporary one. */
    void moveElsewhere(const std::string& reason);

private:
    void openStored();
    bool openReadOnly(const DatabaseError& error);
    void openElsewhere(const std::string& reason, StorageTrouble trouble);
    void makeAnew(const std::string& reason);
    /** Whether the file is still the one that was opened, and not one that another program made since. */
    bool isWhatWasOpened() const;
    /** All connections, checked; none when it throws. */
    void connect(const std::filesystem::path& file, Database::Access access);
    void close();

    const std::filesystem::path _file;
    StorageTroubles& _troubles;
    bool _wasDamaged = false;
    std::optional<FileStamp> _opened;
    /** Goes after the connections. */
    std::optional<TemporaryFolder> _temporaryFolder;
    std::unique_ptr<Database> _writer;
    std::shared_ptr<Readers> _readers;
};

}  // namespace helmo
