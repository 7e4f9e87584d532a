#include "Host/Library/AlbumDecision.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "Host/Library/LeadArtist.h"
#include "Host/Library/SortKey.h"

namespace helmo {

namespace {

constexpr std::size_t filesOfOwnAlbum = 3, artistsOfCompilation = 3, filesOfTwoArtists = 4;

using Indices = std::vector<std::size_t>;

/** How programs call nobody, folded. */
bool isVarious(const std::string& artist) {
    static constexpr std::array names{"various",
                                      "various artists",
                                      "various interprets",
                                      "va",
                                      "v.a.",
                                      "v/a",
                                      "diverse",
                                      "diverse interpreten",
                                      "diverse artister",
                                      "artistes divers",
                                      "artisti vari",
                                      "artistas varios",
                                      "varios artistas",
                                      "vários artistas",
                                      "verschiedene",
                                      "verschiedene interpreten",
                                      "verschillende artiesten",
                                      "разные исполнители",
                                      "ヴァリアス・アーティスト",
                                      "群星"};
    return std::ranges::find(names, SortKey::folded(artist)) != names.end();
}

std::string ofFiles(std::size_t count, std::size_t all) {
    return std::to_string(count) + " of " + std::to_string(all) + " files";
}

class Deciding {
public:
    explicit Deciding(const std::vector<AlbumFile>& files) : _files(files) {
        _result.albumOfFile.resize(files.size());
        std::vector<std::string> artists;
        for (const AlbumFile& file : files) artists.push_back(file.artist);
        _leads = LeadArtist::of(artists);
    }

    AlbumDecision run() {
        Indices untagged;
        for (std::size_t at = 0; at < _files.size(); ++at)
            if (_files[at].albumArtist.empty()) untagged.push_back(at);
        putTagged();
        takeOwnAlbums(untagged);
        if (untagged.empty()) return std::move(_result);
        if (_tagged.empty())
            decide(untagged);
        else
            join(untagged);
        return std::move(_result);
    }

private:
    struct Tagged {
        std::string name;
        std::size_t files = 0;
    };

    void put(const Indices& files, AlbumOwner owner) {
        for (const std::size_t file : files) _result.albumOfFile[file] = _result.albums.size();
        _result.albums.push_back(std::move(owner));
    }

    void putTagged() {
        std::map<std::string, Indices> byName;
        std::vector<std::string> names;
        for (std::size_t at = 0; at < _files.size(); ++at) {
            if (_files[at].albumArtist.empty()) continue;
            std::string name = SortKey::folded(_files[at].albumArtist);
            Indices& files = byName[name];
            if (files.empty()) names.push_back(std::move(name));
            files.push_back(at);
        }
        for (const std::string& name : names) {
            const Indices& files = byName[name];
            const AlbumFile& first = _files[files.front()];
            const bool isCompilation = isMarked(files) || isVarious(first.albumArtist);
            put(files, {first.albumArtist, first.sortAlbumArtist, isCompilation});
            _tagged.push_back({name, files.size()});
        }
    }

    /** Whether most files say that it is a compilation. */
    bool isMarked(const Indices& files) {
        const auto marked = static_cast<std::size_t>(
            std::ranges::count_if(files, [&](std::size_t file) { return _files[file].isCompilation; }));
        const bool isCompilation = marked > 0 && marked * 2 >= files.size();
        if (marked > 0 && marked < files.size())
            _result.contradiction = ofFiles(marked, files.size()) +
                                    " are marked as part of a compilation; the album is " +
                                    (isCompilation ? "taken for one" : "not taken for one");
        return isCompilation;
    }

    /** Files of one artist whose numbers are mostly those of others as well. */
    bool hasOwnAlbum(const Indices& files, const std::string& lead) const {
        const auto taken = std::ranges::count_if(files, [&](std::size_t file) {
            const auto others = _artistsAt.find({_files[file].disc, _files[file].number});
            return others != _artistsAt.end() &&
                   others->second.size() > (others->second.contains(lead) ? 1 : 0);
        });
        return files.size() >= filesOfOwnAlbum && static_cast<std::size_t>(taken) * 2 > files.size();
    }

    /** Takes those files out of `files`. */
    void takeOwnAlbums(Indices& files) {
        std::map<std::string, Indices> byLead;
        for (std::size_t at = 0; at < _files.size(); ++at)
            if (_files[at].number != 0)
                _artistsAt[{_files[at].disc, _files[at].number}].insert(_leads[at].folded);
        for (const std::size_t file : files)
            if (!_files[file].isCompilation && !_leads[file].folded.empty())
                byLead[_leads[file].folded].push_back(file);
        for (const auto& [lead, own] : byLead) {
            if (_files.size() == own.size() || isTaggedArtist(lead) || !hasOwnAlbum(own, lead)) continue;
            put(own, ownerOf(own));
            std::erase_if(
                files, [&taken = own](std::size_t file) { return std::ranges::binary_search(taken, file); });
        }
    }

    bool isTaggedArtist(const std::string& lead) const {
        return std::ranges::find(_tagged, lead, &Tagged::name) != _tagged.end();
    }

    /** Files that name no album artist among files that do. */
    void join(const Indices& files) {
        const auto largest = std::ranges::max_element(_tagged, {}, &Tagged::files);
        std::size_t strangers = 0;
        for (const std::size_t file : files) {
            auto album = std::ranges::find(_tagged, _leads[file].folded, &Tagged::name);
            if (album == _tagged.end()) {
                album = largest;
                ++strangers;
            }
            _result.albumOfFile[file] = static_cast<std::size_t>(album - _tagged.begin());
        }
        if (strangers == 0) return;
        const auto& name = _result.albums[static_cast<std::size_t>(largest - _tagged.begin())].name;
        _result.contradiction = ofFiles(strangers, _files.size()) + (strangers == 1 ? " names" : " name") +
                                " no album artist and " + (strangers == 1 ? "is" : "are") +
                                " put to those of " + name;
    }

    void decide(const Indices& files) {
        if (isMarked(files)) return put(files, {{}, {}, true});
        std::map<std::string, Indices> byLead;
        std::size_t named = 0;
        for (const std::size_t file : files) {
            if (_leads[file].folded.empty()) continue;
            byLead[_leads[file].folded].push_back(file);
            ++named;
        }
        if (byLead.empty()) return put(files, {});
        const auto most =
            std::ranges::max_element(byLead, {}, [](const auto& lead) { return lead.second.size(); });
        const std::size_t largest = most->second.size();
        if (byLead.size() == 1 || (largest * 2 > named && largest >= filesOfOwnAlbum))
            return put(files, ownerOf(most->second));
        const bool isMusic =
            std::ranges::all_of(files, [&](std::size_t file) { return _files[file].isMusic; });
        const bool areMany =
            byLead.size() >= artistsOfCompilation || (largest * 2 == named && named >= filesOfTwoArtists);
        if (isMusic && areMany) return put(files, {{}, {}, true});
        for (const auto& [lead, own] : byLead) put(own, ownerOf(own));
        Indices nameless;
        std::ranges::copy_if(files, std::back_inserter(nameless),
                             [&](std::size_t file) { return _leads[file].folded.empty(); });
        if (!nameless.empty()) put(nameless, {});
    }

    /** The artist of files that have one lead: by his whole name when they agree in it. */
    AlbumOwner ownerOf(const Indices& files) const {
        const AlbumFile& first = _files[files.front()];
        const bool isOne =
            std::ranges::all_of(files, [&](std::size_t file) { return _files[file].artist == first.artist; });
        if (isOne) return {first.artist, first.sortArtist, false};
        const std::string& name = _leads[files.front()].name;
        const auto alone =
            std::ranges::find(files, name, [&](std::size_t file) { return _files[file].artist; });
        return {name, alone == files.end() ? std::string() : _files[*alone].sortArtist, false};
    }

    const std::vector<AlbumFile>& _files;
    std::vector<LeadArtist> _leads;
    /** Album artists that are named, folded, with the files that do; their albums come first. */
    std::vector<Tagged> _tagged;
    std::map<std::pair<std::int64_t, std::int64_t>, std::set<std::string>> _artistsAt;
    AlbumDecision _result;
};

bool areAlike(const AlbumFile& file, const AlbumFile& first) {
    return file.artist == first.artist && file.albumArtist == first.albumArtist &&
           file.isCompilation == first.isCompilation;
}

AlbumOwner ownerByItself(const AlbumFile& file) {
    if (!file.albumArtist.empty())
        return {file.albumArtist, file.sortAlbumArtist, file.isCompilation || isVarious(file.albumArtist)};
    if (file.isCompilation) return {{}, {}, true};
    return {file.artist, file.sortArtist, false};
}

}  // namespace

bool AlbumOwner::isSomebody() const { return !name.empty() && !(isCompilation && isVarious(name)); }

AlbumDecision AlbumDecision::of(const std::vector<AlbumFile>& files) {
    const auto isAsFirst = [&](const AlbumFile& file) { return areAlike(file, files.front()); };
    if (!std::ranges::all_of(files, isAsFirst)) return Deciding(files).run();
    return {{ownerByItself(files.front())}, Indices(files.size(), 0), {}};
}

}  // namespace helmo
