#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Host/Library/Mixes/Mix.h"
#include "Host/Library/Mixes/MixSource.h"
#include "Host/Library/Mixes/MixTexts.h"

namespace helmo {

/** Finds out which mixes a library makes: genres, decades of a genre, decades, and artists with those whom
   compilations put beside them. The largest of each kind, none much the same as another, no two of one name.
   Not on the main thread. */
class MixPlan {
public:
    /** All outlive it. */
    MixPlan(const MixSource& source, const MixTexts& texts, const std::function<bool()>& isStopping)
        : _source(source), _texts(texts), _isStopping(isStopping) {}
    /** The mixes, at most `mostMixes`; none when it was stopped. */
    std::vector<Mix> make();

private:
    enum class Kind { Genre, GenreOfDecade, Artist, Decade };
    struct Group {
        Kind kind;
        /** Rows of the collections and the year that it is about; 0: not about one. */
        std::int64_t genre = 0, artist = 0;
        int decade = 0;
        /** By row. */
        std::vector<MixSong> songs;
    };

    void gatherSongs();
    void gatherArtists();
    void offer(Group group);
    /** Takes the largest groups of a kind until it has `quota` of that kind. */
    void choose(Kind kind, std::size_t quota);
    bool isLikeAnother(const Group& group) const;
    void describe(const Group& group, Mix& mix) const;
    void take(const Group& group);

    const MixSource& _source;
    const MixTexts& _texts;
    const std::function<bool()>& _isStopping;
    /** Largest first. */
    std::map<Kind, std::vector<Group>> _groups;
    std::vector<Group> _chosen;
    std::set<std::string> _names;
    std::vector<Mix> _mixes;
};

}  // namespace helmo
