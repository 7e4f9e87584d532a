#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "Host/Library/Mixes/MixTexts.h"
#include "Host/Library/SqliteMediaLibrary.h"
#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

/** Makes a library's Brivo mixes in the background, and makes them again when the library has changed much:
   by a tenth of its songs, by fifty new albums, so that a mix is worth nothing any more, or when the driver
   reads another language. Until then they stay as they are, also until the next start. Switched off, they
   are hidden, not forgotten. */
class Mixes {
public:
    Mixes(std::shared_ptr<SqliteMediaLibrary> library, bool isEnabled,
          MixTexts texts = MixTexts::localized());
    Mixes(const Mixes&) = delete;
    Mixes& operator=(const Mixes&) = delete;
    /** Stops what is being made, between two short steps, and waits for that. */
    ~Mixes();

    /** Looks whether mixes have to be made, hidden or shown, and does so. To be called after each scan; any
       thread. */
    void update();
    /** Switches Brivo on or off. Any thread. */
    void setEnabled(bool isEnabled);

private:
    void perform();
    bool areDue(Readers& readers) const;
    void make(const std::shared_ptr<Readers>& readers);
    /** Stores what `readers` told, unless another database has taken the place of theirs; whether it did. */
    bool keep(const std::shared_ptr<Readers>& readers, const std::function<void(MixStore&)>& change);

    const std::shared_ptr<SqliteMediaLibrary> _library;
    const MixTexts _texts;
    std::atomic<bool> _isEnabled, _isStopping{false}, _isQueued{false};
    /** Last: ends first. */
    zornic::SerialQueue _queue{"helmo.library.mixes", zornic::QueuePriority::Background};
};

}  // namespace helmo
