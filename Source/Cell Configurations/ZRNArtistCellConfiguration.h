#pragma once

#include <optional>

#include "Cell Configurations/ZRNCellConfiguration.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/LibraryKit/ApplicationDefaults.h"

namespace zornic {

/** An artist: the name, and a cover at the left. Which name that is, and which ID tells artists apart,
   follows the driver's setting; the answers are kept for each kind of row until a setting changes. */
class ZRNArtistCellConfiguration : public ZRNCellConfiguration {
public:
    static const ZRNArtistCellConfiguration& instance();
    ZRNArtistCellConfiguration();

    void configureCellWithViewControllerEntityAtIndexAnimated(const std::shared_ptr<TableViewCell>& cell,
                                                              QueryTableViewController& viewController,
                                                              const std::shared_ptr<MediaEntity>& entity,
                                                              std::uint64_t index,
                                                              bool animated) const override;
    /** Valid until a setting changes. */
    const std::vector<std::string>& mediaEntityPropertiesToFetch() const override;
    const std::vector<std::string>& collectionPropertiesToFetch() const override {
        return mediaEntityPropertiesToFetch();
    }
    std::string reuseIdentifier() const override { return "MusicArtistCellConfiguration"; }

    // How a kind of row names what it reads: of the collection, and of items
    std::string titleProperty() const { return answers().naming.title; }
    std::string persistentIDProperty() const { return answers().naming.persistentID; }
    std::string itemPersistentIDProperty() const { return answers().naming.itemPersistentID; }
    std::string representativeItemPersistentIDProperty() const {
        return answers().naming.representativeItemPersistentID;
    }
    virtual std::string representativeItemTitleProperty() const { return MediaItemProperty::AlbumArtist; }
    virtual std::string unknownTitleText() const;
    /** How the items of a row are gathered: by album. */
    MediaGrouping groupingType() const { return MediaGrouping::Album; }

protected:
    struct Naming {
        std::string title, persistentID, itemPersistentID, representativeItemPersistentID;
    };
    /** Asked once, and again after a setting changed. */
    virtual Naming naming() const;

private:
    struct Answers {
        Naming naming;
        std::vector<std::string> propertiesToFetch;
        /** The settings that they are from: others know better. */
        std::weak_ptr<ApplicationDefaults> defaults;
    };
    const Answers& answers() const;

    mutable std::optional<Answers> _answers;
    Observation _defaultsObservation;
};

}  // namespace zornic
