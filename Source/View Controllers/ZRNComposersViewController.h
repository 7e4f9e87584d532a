#pragma once

#include "View Controllers/ZRNArtistsViewController.h"

namespace zornic {

/** The list of composers: one leads to all albums with his works at once. Main thread. */
class ZRNComposersViewController : public ZRNArtistsViewController {
public:
    using ZRNArtistsViewController::ZRNArtistsViewController;

    std::int64_t containerItemType() const override { return 5; }
    std::string persistentIDProperty() const override {
        return MediaCollectionProperty::ComposerPersistentID;
    }
    std::string itemPersistentIDProperty() const override { return MediaItemProperty::ComposerPersistentID; }
    /** No setting concerns composers. */
    void defaultsDidChange() override {}
};

}  // namespace zornic
