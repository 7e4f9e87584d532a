#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "Platform/Media/MediaItemCollection.h"
#include "Platform/Media/MediaLibrary.h"
#include "Platform/Media/MediaPlaylist.h"
#include "Platform/Media/MediaQuery.h"
#include "Tests/Support/FakeMediaStore.h"

namespace zornic {

/** A picture of which only the measures matter. */
class FakeImageSource final : public ImageSource {
public:
    FakeImageSource(Size size, double scale) : _size(size), _scale(scale) {}
    Size size() const override { return _size; }
    double scale() const override { return _scale; }
    std::size_t cost() const override {
        return static_cast<std::size_t>(_size.width * _size.height * _scale * _scale * 4);
    }

private:
    const Size _size;
    const double _scale;
};

/** A library in memory that filters, groups, orders and cuts into sections as a stored one does, and counts
   what it is asked for. Any thread. */
class FakeMediaLibrary final : public MediaLibrary {
public:
    /** Adds an item of music. What is missing of its own ID, media type and the IDs of artist, album artist,
       album, composer, genre and podcast is filled in; equal names get equal IDs. Returns its ID. */
    PersistentID addItem(Dictionary values);
    PersistentID addSong(const std::string& title, const std::string& artist, const std::string& album,
                         std::int64_t track = 0, Dictionary more = {});
    /** Adds a playlist or, with `IsFolder` among `more`, a folder. Returns its ID. */
    PersistentID addPlaylist(const std::string& name, std::vector<PersistentID> items, Dictionary more = {});
    void setValue(PersistentID item, const std::string& property, Value value);
    void removeItem(PersistentID item);
    /** Posts that the library changed, as sender. Changes alone only move the generation. */
    void postDidChange();

    bool hasSongs() const override;
    std::uint64_t generation() const override { return _generation; }
    std::shared_ptr<MediaItem> itemWithPersistentID(PersistentID persistentID,
                                                    bool verifyExistence) const override;
    std::shared_ptr<const MediaQueryResult> evaluate(const MediaQueryDescription& description) const override;
    Dictionary valuesOfItem(PersistentID persistentID,
                            const std::vector<std::string>& properties) const override;
    Dictionary valuesOfPlaylist(PersistentID persistentID,
                                const std::vector<std::string>& properties) const override;
    std::vector<MediaChapter> chaptersOfItem(PersistentID item, MediaChapterType type) const override;
    std::vector<std::string> representativeArtistsOfPlaylist(PersistentID playlist) const override;
    std::shared_ptr<const ImageSource> loadArtwork(const std::string& token, Size fittingSize,
                                                   double scale) const override;
    bool isDeviceLibrary() const override { return deviceLibrary; }
    bool isBrivoEnabled() const override { return brivoEnabled; }
    std::shared_ptr<MediaPlaylist> activeBrivoPlaylist() const override { return brivoPlaylist; }
    void removePlaylist(const MediaPlaylist& playlist) override;
    void noteItemPlayed(PersistentID persistentID) override { played.push_back(persistentID); }

    bool deviceLibrary = true;
    bool brivoEnabled = false;
    std::shared_ptr<MediaPlaylist> brivoPlaylist;
    /** Tokens that have a picture, and what else is known of items and playlists. Set while nothing runs. */
    std::set<std::string> artwork;
    std::map<PersistentID, std::vector<MediaChapter>> chapters;
    std::map<PersistentID, std::vector<std::string>> representativeArtists;
    std::vector<PersistentID> played;
    /** A row of every list whose entity has gone. */
    std::optional<std::uint64_t> goneRow;
    /** Runs on the asking thread before an answer is made, without a lock. Set before other threads ask. */
    std::function<void()> onEvaluate;
    std::function<void(const std::string& token)> onLoadArtwork;

    mutable std::atomic<int> evaluations{0};
    /** Fetches of values of items, and entities made for rows. */
    mutable std::atomic<int> fetches{0}, entitiesMade{0};
    std::vector<std::string> loadedArtwork() const;

private:
    using MakeRow =
        std::function<std::shared_ptr<MediaEntity>(const std::shared_ptr<MediaLibrary>&, std::uint64_t)>;
    /** Rows made when asked for, and counted. */
    std::shared_ptr<const MediaEntityList> list(std::uint64_t count, MakeRow row) const;
    /** Both append the text by which each row is put in order. */
    std::shared_ptr<const MediaEntityList> playlists(const MediaQueryDescription& description,
                                                     std::vector<std::string>& texts) const;
    std::shared_ptr<const MediaEntityList> groups(const std::vector<PersistentID>& items,
                                                  const MediaQueryDescription& description,
                                                  std::vector<std::string>& texts) const;
    void changed() { ++_generation; }

    mutable std::mutex _mutex;
    std::atomic<std::uint64_t> _generation{1};
    FakeMediaStore _store;
    mutable std::vector<std::string> _loadedArtwork;
};

}  // namespace zornic
