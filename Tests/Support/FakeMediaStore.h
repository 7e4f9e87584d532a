#pragma once

#include <map>
#include <string>
#include <vector>

#include "Platform/Media/MediaQuery.h"

namespace zornic {

/** What a fake library stores, and how it filters, orders and groups it. */
struct FakeMediaStore {
    using IDs = std::vector<PersistentID>;
    struct Playlist {
        Dictionary values;
        IDs items;
    };
    struct Group {
        PersistentID id = 0;
        Dictionary values;
        MediaQueryDescription items;
    };

    /** Items of a playlist, or of all playlists in a folder. */
    IDs itemsOfPlaylist(PersistentID playlist) const;
    /** By name. */
    IDs playlistsMeeting(const MediaQueryDescription& description) const;
    /** In the order of the description. */
    IDs itemsMeeting(const MediaQueryDescription& description) const;
    /** Groups of `all`, in order of their first item; what belongs to no group is left out. */
    std::vector<Group> groups(const IDs& all, const MediaQueryDescription& description) const;
    /** Whether the description's items stand in the order of a playlist. */
    static bool isInPlaylistOrder(const MediaQueryDescription& description);
    /** The property by which items, or groups, come first of all. */
    static std::string itemSortProperty(const MediaQueryDescription& description);
    static std::string groupSortProperty(const MediaQueryDescription& description);
    /** The text by which a text property is put in order. */
    std::string sortText(PersistentID item, std::string_view property) const {
        return sortValue(item, property).asText();
    }

    PersistentID nextID = 1;
    std::map<PersistentID, Dictionary> items;
    std::map<PersistentID, Playlist> playlists;

private:
    bool itemMeets(PersistentID item, const MediaPredicate& predicate) const;
    static bool playlistMeets(const Playlist& playlist, const MediaPredicate& predicate);
    const Value& sortValue(PersistentID item, std::string_view property) const;
    Group group(const IDs& members, const MediaQueryDescription& description) const;
    std::uint64_t distinct(const IDs& members, const char* property) const;
};

}  // namespace zornic
