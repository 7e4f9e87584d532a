#include "Cell Configurations/ZRNArtistCellConfiguration.h"

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/MediaItem.h"
#include "Platform/Media/MediaLibrary.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNShared.h"

namespace zornic {
namespace {

bool isSameOwner(const std::weak_ptr<ApplicationDefaults>& left,
                 const std::shared_ptr<ApplicationDefaults>& right) {
    return !left.owner_before(right) && !right.owner_before(left);
}

std::shared_ptr<MediaItem> itemWithPersistentID(PersistentID persistentID) {
    const auto library = MediaLibrary::defaultLibrary();
    return library && persistentID != 0 ? library->itemWithPersistentID(persistentID, false) : nullptr;
}

}  // namespace

const ZRNArtistCellConfiguration& ZRNArtistCellConfiguration::instance() {
    static const ZRNArtistCellConfiguration configuration;
    return configuration;
}

ZRNArtistCellConfiguration::ZRNArtistCellConfiguration()
    : _defaultsObservation(NotificationCenter::defaultCenter().observe(
          ApplicationDefaultsDidChangeNotification, nullptr,
          // On the main queue, so that no row is being filled meanwhile. It lives as long as the process.
          [this](const Notification&) { mainQueue().async([this] { _answers.reset(); }); })) {}

std::string ZRNArtistCellConfiguration::unknownTitleText() const {
    return ZRNLocalizedString("UNKNOWN_ALBUM_ARTIST");
}

ZRNArtistCellConfiguration::Naming ZRNArtistCellConfiguration::naming() const {
    using namespace MediaCollectionProperty;
    if (ZRNGroupsByAlbumArtist())
        return {AlbumArtistName, AlbumArtistPersistentID, MediaItemProperty::AlbumArtistPersistentID,
                RepresentativeItemPersistentID};
    return {ArtistName, ArtistPersistentID, MediaItemProperty::ArtistPersistentID,
            RepresentativeItemPersistentID};
}

const ZRNArtistCellConfiguration::Answers& ZRNArtistCellConfiguration::answers() const {
    const auto defaults = ZRNSharedDefaults();
    if (_answers && isSameOwner(_answers->defaults, defaults)) return *_answers;
    Naming names = naming();
    auto properties =
        propertiesByAdding({MediaCollectionProperty::AlbumCount, MediaCollectionProperty::ItemCount,
                            names.title, names.representativeItemPersistentID},
                           ZRNCellConfiguration::mediaEntityPropertiesToFetch());
    _answers = Answers{std::move(names), std::move(properties), defaults};
    return *_answers;
}

const std::vector<std::string>& ZRNArtistCellConfiguration::mediaEntityPropertiesToFetch() const {
    return answers().propertiesToFetch;
}

void ZRNArtistCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController& viewController,
    const std::shared_ptr<MediaEntity>& entity, std::uint64_t, bool) const {
    const Dictionary values = entity->valuesForProperties(collectionPropertiesToFetch());
    std::string title = valueForKey(values, titleProperty()).asText();
    const auto pictured =
        itemWithPersistentID(valueForKey(values, representativeItemPersistentIDProperty()).asUnsigned());
    if (title.empty()) {
        if (const auto item = pictured ? pictured : entity->representativeItem()) {
            title = item->valueForProperty(representativeItemTitleProperty()).asText();
            // A row that nobody named stays so: its text is asked for, and not shown.
            if (title.empty()) static_cast<void>(unknownTitleText());
        }
    }
    cell->textLabel()->setText(title);
    requestArtwork(pictured ? pictured->artworkCatalog() : nullptr, 0, cell, viewController);
}

}  // namespace zornic
