#include "Tests/Support/FakeMediaLibrary.h"

#include <cctype>

#include "Platform/Foundation/NotificationCenter.h"

namespace zornic {

namespace {

PersistentID idOfName(const std::string& kind, const std::string& name) {
    return name.empty() ? 0 : (std::hash<std::string>()(kind + ":" + name) >> 2) | 1;
}

std::string sectionTitle(const std::string& text) {
    const auto first = static_cast<unsigned char>(text.empty() ? ' ' : text.front());
    return std::isalpha(first) ? std::string(1, static_cast<char>(std::toupper(first))) : "#";
}

std::vector<MediaQuerySection> sectionsOf(const std::vector<std::string>& texts) {
    std::vector<MediaQuerySection> sections;
    for (std::uint64_t row = 0; row < texts.size(); ++row) {
        const auto title = sectionTitle(texts[row]);
        if (sections.empty() || sections.back().title != title) sections.push_back({title, {row, 0}});
        ++sections.back().range.length;
    }
    return sections;
}

Dictionary someOf(const Dictionary& all, const std::vector<std::string>& properties) {
    Dictionary values;
    for (const auto& property : properties)
        if (const auto& value = valueForKey(all, property)) values[property] = value;
    return values;
}

MediaQuerySectionInfo infoOf(const std::vector<MediaQuerySection>& sections) {
    std::vector<std::string> titles;
    std::vector<std::uint64_t> indices;
    for (const auto& section : sections) {
        indices.push_back(titles.size());
        titles.push_back(section.title);
    }
    return {std::move(titles), std::move(indices)};
}

/** Rows made when asked for. */
class LazyList final : public MediaEntityList {
public:
    using Make = std::function<std::shared_ptr<MediaEntity>(std::uint64_t)>;
    LazyList(std::uint64_t count, Make make) : _count(count), _make(std::move(make)) {}
    std::uint64_t count() const override { return _count; }
    std::shared_ptr<MediaEntity> entityAtIndex(std::uint64_t index) const override {
        return index < _count ? _make(index) : nullptr;
    }

private:
    const std::uint64_t _count;
    const Make _make;
};

class Result final : public MediaQueryResult {
public:
    std::shared_ptr<const MediaEntityList> items() const override { return itemList; }
    std::shared_ptr<const MediaEntityList> collections() const override { return collectionList; }
    std::vector<MediaQuerySection> itemSections() const override { return itemParts; }
    std::vector<MediaQuerySection> collectionSections() const override { return collectionParts; }
    MediaQuerySectionInfo itemSectionInfo() const override { return infoOf(itemParts); }
    MediaQuerySectionInfo collectionSectionInfo() const override { return infoOf(collectionParts); }
    double maxAggregate(const std::string& property) const override {
        double largest = 0;
        for (const auto& values : rows) largest = std::max(largest, valueForKey(values, property).asNumber());
        return largest;
    }
    double totalAggregate(const std::string& property) const override {
        double sum = 0;
        for (const auto& values : rows) sum += valueForKey(values, property).asNumber();
        return sum;
    }

    std::shared_ptr<const MediaEntityList> itemList, collectionList;
    std::vector<MediaQuerySection> itemParts, collectionParts;
    std::vector<Dictionary> rows;
};

}  // namespace

PersistentID FakeMediaLibrary::addItem(Dictionary values) {
    using namespace MediaItemProperty;
    const auto text = [&](const char* property) { return valueForKey(values, property).asText(); };
    values.try_emplace(AlbumArtist, text(Artist));
    std::lock_guard lock(_mutex);
    const auto id =
        values.try_emplace(MediaItemProperty::PersistentID, _store.nextID).first->second.asUnsigned();
    _store.nextID = std::max(_store.nextID, id) + 1;
    values.try_emplace(MediaItemProperty::MediaType, MediaType::Music);
    values.try_emplace(ArtistPersistentID, idOfName("artist", text(Artist)));
    values.try_emplace(AlbumArtistPersistentID, idOfName("albumArtist", text(AlbumArtist)));
    values.try_emplace(
        AlbumPersistentID,
        text(AlbumTitle).empty() ? 0 : idOfName("album", text(AlbumTitle) + "/" + text(AlbumArtist)));
    values.try_emplace(ComposerPersistentID, idOfName("composer", text(Composer)));
    values.try_emplace(GenrePersistentID, idOfName("genre", text(Genre)));
    values.try_emplace(PodcastPersistentID, idOfName("podcast", text(PodcastTitle)));
    _store.items[id] = std::move(values);
    changed();
    return id;
}

PersistentID FakeMediaLibrary::addSong(const std::string& title, const std::string& artist,
                                       const std::string& album, std::int64_t track, Dictionary more) {
    using namespace MediaItemProperty;
    more.insert({{Title, title}, {Artist, artist}, {AlbumTitle, album}, {AlbumTrackNumber, track}});
    more.try_emplace(PlaybackDuration, 180.0);
    more.try_emplace(Location, "/music/" + title);
    return addItem(std::move(more));
}

PersistentID FakeMediaLibrary::addPlaylist(const std::string& name, std::vector<PersistentID> items,
                                           Dictionary more) {
    std::lock_guard lock(_mutex);
    more[MediaPlaylistProperty::Name] = name;
    const auto id =
        more.try_emplace(MediaPlaylistProperty::PersistentID, _store.nextID).first->second.asUnsigned();
    _store.nextID = std::max(_store.nextID, id) + 1;
    _store.playlists[id] = {std::move(more), std::move(items)};
    changed();
    return id;
}

void FakeMediaLibrary::setValue(PersistentID item, const std::string& property, Value value) {
    std::lock_guard lock(_mutex);
    _store.items.at(item)[property] = std::move(value);
    changed();
}

void FakeMediaLibrary::removeItem(PersistentID item) {
    std::lock_guard lock(_mutex);
    _store.items.erase(item);
    changed();
}

void FakeMediaLibrary::removePlaylist(const MediaPlaylist& playlist) {
    std::lock_guard lock(_mutex);
    _store.playlists.erase(playlist.persistentID());
    changed();
}

std::vector<MediaChapter> FakeMediaLibrary::chaptersOfItem(PersistentID item, MediaChapterType) const {
    const auto found = chapters.find(item);
    return found == chapters.end() ? std::vector<MediaChapter>() : found->second;
}

std::vector<std::string> FakeMediaLibrary::representativeArtistsOfPlaylist(PersistentID playlist) const {
    const auto found = representativeArtists.find(playlist);
    return found == representativeArtists.end() ? std::vector<std::string>() : found->second;
}

void FakeMediaLibrary::postDidChange() {
    NotificationCenter::defaultCenter().post(MediaLibraryDidChangeNotification, strong(this));
}

bool FakeMediaLibrary::hasSongs() const {
    std::lock_guard lock(_mutex);
    return !_store.items.empty();
}

std::shared_ptr<MediaItem> FakeMediaLibrary::itemWithPersistentID(PersistentID persistentID,
                                                                  bool verify) const {
    std::lock_guard lock(_mutex);
    if (persistentID == 0 || (verify && !_store.items.contains(persistentID))) return nullptr;
    return make<MediaItem>(weak(const_cast<FakeMediaLibrary*>(this)), persistentID, Dictionary());
}

std::shared_ptr<const MediaQueryResult> FakeMediaLibrary::evaluate(
    const MediaQueryDescription& description) const {
    if (onEvaluate) onEvaluate();
    ++evaluations;
    const auto result = std::make_shared<Result>();
    std::lock_guard lock(_mutex);
    const auto items = _store.itemsMeeting(description);
    std::vector<std::string> texts;
    for (const auto item : items) {
        result->rows.push_back(_store.items.at(item));
        texts.push_back(_store.sortText(item, FakeMediaStore::itemSortProperty(description)));
    }
    if (description.useSections && !FakeMediaStore::isInPlaylistOrder(description))
        result->itemParts = sectionsOf(texts);
    result->itemList = list(items.size(), [items, rows = result->rows](const auto& library, auto index) {
        return make<MediaItem>(library, items[index], rows[index]);
    });
    texts.clear();
    result->collectionList = description.grouping == MediaGrouping::Playlist
                                 ? playlists(description, texts)
                                 : groups(items, description, texts);
    if (description.useSections) result->collectionParts = sectionsOf(texts);
    return result;
}

std::shared_ptr<const MediaEntityList> FakeMediaLibrary::playlists(const MediaQueryDescription& description,
                                                                   std::vector<std::string>& texts) const {
    const auto playlists = _store.playlistsMeeting(description);
    std::vector<Dictionary> rows;
    for (const auto id : playlists) {
        rows.push_back(_store.playlists.at(id).values);
        texts.push_back(valueForKey(rows.back(), MediaPlaylistProperty::Name).asText());
    }
    return list(playlists.size(), [playlists, rows](const auto& library, auto index) {
        return make<MediaPlaylist>(playlists[index], library, rows[index]);
    });
}

std::shared_ptr<const MediaEntityList> FakeMediaLibrary::groups(const std::vector<PersistentID>& items,
                                                                const MediaQueryDescription& description,
                                                                std::vector<std::string>& texts) const {
    const auto groups = _store.groups(items, description);
    for (const auto& group : groups) {
        const auto first =
            valueForKey(group.values, MediaCollectionProperty::RepresentativeItemPersistentID).asUnsigned();
        texts.push_back(_store.sortText(first, FakeMediaStore::groupSortProperty(description)));
    }
    return list(groups.size(), [groups](const auto& library, auto index) {
        const auto& group = groups[index];
        return make<MediaItemCollection>(library, group.id, group.values, group.items);
    });
}

std::shared_ptr<const MediaEntityList> FakeMediaLibrary::list(std::uint64_t count, MakeRow row) const {
    const auto weakSelf = weak(const_cast<FakeMediaLibrary*>(this));
    return std::make_shared<LazyList>(count, [weakSelf, row = std::move(row)](auto index) {
        const auto library = weakSelf.lock();
        if (library) ++library->entitiesMade;
        return library && library->goneRow == index ? nullptr : row(library, index);
    });
}

Dictionary FakeMediaLibrary::valuesOfItem(PersistentID persistentID,
                                          const std::vector<std::string>& properties) const {
    std::lock_guard lock(_mutex);
    ++fetches;
    const auto found = _store.items.find(persistentID);
    return found == _store.items.end() ? Dictionary() : someOf(found->second, properties);
}

Dictionary FakeMediaLibrary::valuesOfPlaylist(PersistentID persistentID,
                                              const std::vector<std::string>& properties) const {
    std::lock_guard lock(_mutex);
    ++fetches;
    const auto found = _store.playlists.find(persistentID);
    return found == _store.playlists.end() ? Dictionary() : someOf(found->second.values, properties);
}

std::shared_ptr<const ImageSource> FakeMediaLibrary::loadArtwork(const std::string& token, Size fittingSize,
                                                                 double scale) const {
    if (onLoadArtwork) onLoadArtwork(token);
    std::lock_guard lock(_mutex);
    _loadedArtwork.push_back(token);
    return artwork.contains(token) ? std::make_shared<FakeImageSource>(fittingSize, scale) : nullptr;
}

std::vector<std::string> FakeMediaLibrary::loadedArtwork() const {
    std::lock_guard lock(_mutex);
    return _loadedArtwork;
}

}  // namespace zornic
