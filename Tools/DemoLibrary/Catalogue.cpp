#include "Tools/DemoLibrary/Catalogue.h"

#include <algorithm>
#include <iterator>

namespace helmo::demo {

const std::vector<Album>& catalogue() {
    static const std::vector<Album> albums = [] {
        auto all = musicAlbums();
        std::ranges::move(spokenAlbums(), std::back_inserter(all));
        return all;
    }();
    return albums;
}

}  // namespace helmo::demo
