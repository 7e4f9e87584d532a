#pragma once

#include <memory>
#include <optional>

#include "Host/Library/SqliteMediaLibrary.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/RunLoop.h"
#include "Platform/Media/AVController.h"

namespace helmo {

/** Remembers how far the driver has heard a book, a podcast or a lecture: every ten seconds while it plays,
   when it pauses, when something else follows and at the end of its own life. One that was heard out begins
   anew. Main thread. */
class BookmarkKeeper : public zornic::Object {
public:
    BookmarkKeeper(std::shared_ptr<zornic::AVController> player, std::shared_ptr<SqliteMediaLibrary> library)
        : _player(std::move(player)), _library(std::move(library)) {}
    void didMake() override;
    ~BookmarkKeeper() override;

private:
    /** The piece that plays, and where it was when somebody last looked. */
    struct Listening {
        zornic::PersistentID item = 0;
        zornic::Seconds duration{0}, time{0};
        zornic::TimePoint looked{};
        bool wasPlaying = false;
    };

    void itemDidChange();
    void itemDidEnd();
    void look();
    void look(zornic::Seconds time);
    void save();
    void leave();

    const std::shared_ptr<zornic::AVController> _player;
    const std::shared_ptr<SqliteMediaLibrary> _library;
    std::optional<Listening> _listening;
    /** What is stored, or was there when it was taken up. */
    zornic::Seconds _saved{0};
    zornic::Token _timer;
    zornic::Observation _itemObservation, _endObservation, _stateObservation;
};

}  // namespace helmo
