#include "Cell Configurations/ZRNShuffleActionCellConfiguration.h"

#include "Data Sources/ZRNQueryPlaybackContext.h"
#include "Platform/LibraryKit/QueryTableViewController.h"
#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"
#include "Utilities/ZRNShared.h"

namespace zornic {

const ZRNShuffleActionCellConfiguration& ZRNShuffleActionCellConfiguration::instance() {
    static const ZRNShuffleActionCellConfiguration configuration;
    return configuration;
}

void ZRNShuffleActionCellConfiguration::configureCellWithViewControllerEntityAtIndexAnimated(
    const std::shared_ptr<TableViewCell>& cell, QueryTableViewController&,
    const std::shared_ptr<MediaEntity>&, std::uint64_t, bool) const {
    cell->textLabel()->setText(ZRNLocalizedString("SHUFFLE"));
    const Image glyph = ZRNHelmoImage("HelmoShuffleButton").flattenedWithColor(_externalSystemGrayColor());
    cell->setAccessoryView(make<ImageView>(glyph));
}

void ZRNShuffleActionCellConfiguration::performActionForCellWithViewController(
    const std::shared_ptr<TableViewCell>&, QueryTableViewController& viewController) const {
    const auto context = make<ZRNQueryPlaybackContext>(viewController.queryDataSource()->query());
    context->setShuffleType(1);
    if (const auto player = ZRNSharedAVPlayer()) player->reloadWithPlaybackContext(context);
    if (auto* navigation = viewController.navigationController())
        navigation->ZRN_pushNowPlayingViewControllerAnimated(true);
}

}  // namespace zornic
