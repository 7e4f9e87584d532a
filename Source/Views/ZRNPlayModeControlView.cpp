#include "Views/ZRNPlayModeControlView.h"

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNViews.h"

namespace zornic {
namespace {

constexpr EdgeInsets margins{6, 12, 8, 12};
constexpr float spacing = 10;
/** A label of the platform's may be long: it shrinks before it loses its end. */
constexpr double smallestTitle = 0.7;

void shrinkTitle(const ZRNButton& button) {
    button.titleLabel()->setAdjustsFontSizeToFitWidth(true);
    button.titleLabel()->setMinimumScaleFactor(smallestTitle);
}

}  // namespace

void ZRNPlayModeControlView::didMake() {
    View::didMake();
    _brivoButton = addButton();
    _brivoButton->setLabelTemplateString(ZRNLocalizedString("Create"));
    _repeatButton = addButton();
    shrinkTitle(*_repeatButton);
    _shuffleButton = addButton();
    shrinkTitle(*_shuffleButton);
}

std::shared_ptr<ZRNButton> ZRNPlayModeControlView::addButton() {
    const auto button = ZRNButton::buttonWithType(ButtonType::Custom);
    button->setShowBezelInTouch(true);
    addSubview(button);
    return button;
}

void ZRNPlayModeControlView::layoutSubviews() {
    View::layoutSubviews();
    ZRNTileViewsHorizontally({_repeatButton, _brivoButton, _shuffleButton}, bounds().inset(margins), spacing);
}

}  // namespace zornic
