#include "View Controllers/ZRNNowPlayingViewController.h"

#include "Platform/Toolkit/NavigationController.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
namespace {

constexpr double initialWidth = 400, initialHeight = 240;
constexpr double playModeHeight = 42, gapAbovePlayModes = 17;
constexpr auto holdDelay = std::chrono::milliseconds(500);
constexpr const char* respondToHeldAction = "_respondToHeldAction";
constexpr ZRNNowPlayingActionType noAction{-1};
constexpr unsigned letGoEvents =
    ControlEvent::TouchUpInside | ControlEvent::TouchUpOutside | ControlEvent::TouchCancel;

}  // namespace

void ZRNNowPlayingViewController::setDataSource(
    std::weak_ptr<ZRNNowPlayingViewControllerDataSource> dataSource) {
    _dataSource = std::move(dataSource);
}

void ZRNNowPlayingViewController::setDelegate(std::weak_ptr<ZRNNowPlayingViewControllerDelegate> delegate) {
    _delegate = std::move(delegate);
}

// View

void ZRNNowPlayingViewController::loadView() {
    const auto host = make<_ZRNNowPlayingHostView>(Rect(0, 0, initialWidth, initialHeight));
    host->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    addNowPlayingView(*host);
    addTransportControlView(*host);
    addPlayModeControlView(*host);
    host->setResponderViews({_transportControlView->playPauseButton(), _transportControlView->leftButton(),
                             _transportControlView->fastForwardButton()});
    setView(host);
    reloadData();
}

void ZRNNowPlayingViewController::addNowPlayingView(View& host) {
    _nowPlayingView = make<ZRNNowPlayingView>();
    _nowPlayingView->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    host.addSubview(_nowPlayingView);
}

void ZRNNowPlayingViewController::addTransportControlView(View& host) {
    _transportControlView = make<ZRNTransportControlView>();
    _initializeTransportControls();
    _transportControlView->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    host.addSubview(_transportControlView);
}

void ZRNNowPlayingViewController::addPlayModeControlView(View& host) {
    _playModeControlView = make<ZRNPlayModeControlView>();
    _playModeControlView->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleTopMargin);
    _playModeControlView->repeatButton()->addTarget(this, &ZRNNowPlayingViewController::_repeatButtonTouchUp,
                                                    ControlEvent::TouchUpInside);
    _playModeControlView->shuffleButton()->addTarget(
        this, &ZRNNowPlayingViewController::_shuffleButtonTouchUp, ControlEvent::TouchUpInside);
    _playModeControlView->brivoButton()->addTarget(this, &ZRNNowPlayingViewController::_brivoButtonTouchUp,
                                                   ControlEvent::TouchUpInside);
    host.addSubview(_playModeControlView);
}

void ZRNNowPlayingViewController::_initializeTransportControls() {
    using Self = ZRNNowPlayingViewController;
    const auto& left = _transportControlView->leftButton();
    const auto& fastForward = _transportControlView->fastForwardButton();
    _transportControlView->playPauseButton()->addTarget(this, &Self::_playPauseButtonTouchUp,
                                                        ControlEvent::TouchUpInside);
    left->addTarget(this, &Self::_leftButtonTouchDown, ControlEvent::TouchDown);
    left->addTarget(this, &Self::_leftButtonTouchUp, letGoEvents);
    fastForward->addTarget(this, &Self::_fastForwardButtonTouchDown, ControlEvent::TouchDown);
    fastForward->addTarget(this, &Self::_fastForwardButtonTouchUp, letGoEvents);
    _transportControlView->setMode(0);
}

// Appearance

void ZRNNowPlayingViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    clearNavigationBar();
    layoutForAppearance();
}

void ZRNNowPlayingViewController::viewWillDisappear(bool animated) {
    ViewController::viewWillDisappear(animated);
    if (const auto bar = _clearedBar.lock()) {
        bar->setBarColor(_navbarColor);
        bar->setHidesShadow(_navbarHidesShadow);
    }
    _clearedBar.reset();
}

void ZRNNowPlayingViewController::clearNavigationBar() {
    auto* const navigation = navigationController();
    if (!navigation) return;
    const auto& bar = navigation->navigationBar();
    _clearedBar = bar;
    _navbarColor = bar->barColor();
    _navbarHidesShadow = bar->hidesShadow();
    bar->setBarColor(Color::clear());
    bar->setHidesShadow(true);
}

/** Containers put a view in its place after it was told that it appears; from then on the masks keep what is
   laid out here. So one that comes back on view where it was (a swipe back that was let go) is left as it is.
 */
void ZRNNowPlayingViewController::layoutForAppearance() {
    const auto& host = view();
    if (_laidOut && host->window()) return;
    _laidOut = true;
    Rect area = host->bounds();
    if (auto* const navigation = navigationController()) {
        const auto& bar = navigation->navigationBar();
        if (bar->window() && !bar->isHidden()) area = area.inset({-bar->frame().height(), 0, 0, 0});
    }
    _nowPlayingView->setFrame(area);
    _nowPlayingView->setNeedsLayout();
    _nowPlayingView->layoutIfNeeded();
    const double textBottom = host->convertFromWindow(_nowPlayingView->albumLabel()->frame()).maxY();
    const Rect controls = area.inset({textBottom, 0, 0, 0});
    _playModeControlView->setFrame(
        {controls.x(), controls.maxY() - playModeHeight, controls.width(), playModeHeight});
    _transportControlView->setFrame(controls.inset({0, 0, playModeHeight + gapAbovePlayModes, 0}));
}

// Content

void ZRNNowPlayingViewController::reloadData() {
    if (!_playModeControlView) return;
    const auto source = dataSource();
    _nowPlayingView->titleLabel()->setText(source ? source->titleForNowPlayingController(*this) : "");
    _nowPlayingView->artistLabel()->setText(source ? source->artistTextForNowPlayingController(*this) : "");
    _nowPlayingView->albumLabel()->setText(source ? source->albumTextForNowPlayingController(*this) : "");
    _nowPlayingView->artworkView()->setImage(source ? source->backgroundArtForNowPlayingController(*this)
                                                    : Image());
    _nowPlayingView->setExplicitTrack(source &&
                                      source->nowPlayingViewControllerIsShowingExplicitTrack(*this));
    updatePlayControls();
    _nowPlayingView->setNeedsLayout();
    for (const std::shared_ptr<View>& content :
         {std::shared_ptr<View>(_transportControlView), std::shared_ptr<View>(_playModeControlView),
          std::shared_ptr<View>(_nowPlayingView)})
        content->setHidden(!source);
}

void ZRNNowPlayingViewController::updatePlayControls() {
    if (!_playModeControlView) return;
    const auto transport = _transportControlView;
    _updateTransportControlWithDefaultImageActionType(
        transport->leftButton(), transport->defaultLeftButtonImage(), ZRNNowPlayingActionTypeLeft);
    _updateTransportControlWithDefaultImageActionType(transport->playPauseButton(), {},
                                                      ZRNNowPlayingActionTypePlayPause);
    _updateTransportControlWithDefaultImageActionType(transport->fastForwardButton(),
                                                      transport->defaultFastForwardButtonImage(),
                                                      ZRNNowPlayingActionTypeFastForward);
    updateProgress();
    _updatePlayModesState();
}

void ZRNNowPlayingViewController::_updateTransportControlWithDefaultImageActionType(
    const std::shared_ptr<ZRNButton>& button, const Image& defaultImage, ZRNNowPlayingActionType type) {
    Image image;
    bool tinted = false;
    std::optional<bool> shown, enabled;
    if (const auto told = delegate())
        shown = told->nowPlayingViewControllerShouldDisplayButtonWithImageTinted(*this, type, image, tinted);
    button->setHidden(!shown.value_or(true));
    if (!image) image = defaultImage;
    if (image)
        button->setImage(image.withRenderingMode(ImageRenderingMode::AlwaysTemplate), ControlState::Normal);
    button->setSelected(tinted);
    if (const auto told = delegate()) enabled = told->nowPlayingViewControllerShouldEnableButton(*this, type);
    button->setEnabled(enabled.value_or(true));
}

void ZRNNowPlayingViewController::updateProgress() {
    double elapsed = 0, duration = 0;
    if (const auto source = dataSource())
        duration = source->playbackDurationForNowPlayingViewControllerWithElapsedTime(*this, elapsed);
    const auto source = dataSource();
    _transportControlView->setProgressActive(source && source->nowPlayingViewControllerIsPlaying(*this));
    _nowPlayingView->progressView()->setPlaybackTimeDuration(elapsed, duration);
}

void ZRNNowPlayingViewController::_updatePlayModesState() {
    using Delegate = ZRNNowPlayingViewControllerDelegate;
    const auto can = [this](std::optional<bool> (Delegate::*question)(ZRNNowPlayingViewController&)) {
        const auto told = delegate();
        return told && ((*told).*question)(*this).value_or(false);
    };
    const bool shuffles = can(&Delegate::nowPlayingViewControllerCanShuffle);
    if (const auto source = shuffles ? dataSource() : nullptr)
        if (const auto type = source->shuffleTypeForNowPlayingViewController(*this))
            _updateShuffleStateWithType(*type);
    const bool repeats = can(&Delegate::nowPlayingViewControllerCanRepeat);
    if (const auto source = repeats ? dataSource() : nullptr)
        if (const auto type = source->repeatTypeForNowPlayingViewController(*this))
            _updateRepeatStateWithType(*type);
    const bool creates = can(&Delegate::nowPlayingViewControllerCanCreate);
    _playModeControlView->shuffleButton()->setHidden(!shuffles);
    _playModeControlView->repeatButton()->setHidden(!repeats);
    _playModeControlView->brivoButton()->setHidden(!creates);
}

void ZRNNowPlayingViewController::_updateShuffleStateWithType(std::uint64_t type) {
    const auto& button = _playModeControlView->shuffleButton();
    button->setSelected(type != 0);
    std::optional<std::string> label;
    if (const auto source = dataSource()) label = source->shuffleStringForNowPlayingViewController(*this);
    button->setLabelTemplateString(label ? *label
                                         : ZRNLocalizedString(type != 0 ? "Shuffle all" : "Shuffle off"));
}

void ZRNNowPlayingViewController::_updateRepeatStateWithType(std::uint64_t type) {
    const auto& button = _playModeControlView->repeatButton();
    button->setSelected(type != 0);
    std::optional<std::string> label;
    if (const auto source = dataSource()) label = source->repeatStringForNowPlayingViewController(*this);
    const char* const key = type == 2 ? "Repeat all" : type == 1 ? "Repeat song" : "Repeat off";
    button->setLabelTemplateString(label ? *label : ZRNLocalizedString(key));
}

// Actions

void ZRNNowPlayingViewController::_sendActionWithState(ZRNNowPlayingActionType action,
                                                       ZRNNowPlayingActionState state) {
    const auto self = strong(this);
    if (const auto told = delegate()) told->nowPlayingViewControllerDidSendActionState(*this, action, state);
}

void ZRNNowPlayingViewController::_playPauseButtonTouchUp(const std::shared_ptr<Control>&) {
    _sendActionWithState(ZRNNowPlayingActionTypePlayPause, ZRNNowPlayingActionStateEnded);
}

void ZRNNowPlayingViewController::_leftButtonTouchDown(const std::shared_ptr<Control>&) {
    holdAction(ZRNNowPlayingActionTypeLeft);
}

void ZRNNowPlayingViewController::_leftButtonTouchUp(const std::shared_ptr<Control>&) { _sendHeldAction(); }

void ZRNNowPlayingViewController::_fastForwardButtonTouchDown(const std::shared_ptr<Control>&) {
    holdAction(ZRNNowPlayingActionTypeFastForward);
}

void ZRNNowPlayingViewController::_fastForwardButtonTouchUp(const std::shared_ptr<Control>&) {
    _sendHeldAction();
}

void ZRNNowPlayingViewController::holdAction(ZRNNowPlayingActionType action) {
    _heldAction = action;
    _delayedCalls.perform(respondToHeldAction, holdDelay, [this] { _respondToHeldAction(); });
}

void ZRNNowPlayingViewController::_respondToHeldAction() {
    _delayedCalls.cancel(respondToHeldAction);
    _sendActionWithState(_heldAction, ZRNNowPlayingActionStateBegan);
}

void ZRNNowPlayingViewController::_sendHeldAction() {
    const auto self = strong(this);
    _delayedCalls.cancel(respondToHeldAction);
    _sendActionWithState(_heldAction, ZRNNowPlayingActionStateEnded);
    _heldAction = noAction;
}

void ZRNNowPlayingViewController::_shuffleButtonTouchUp(const std::shared_ptr<Control>&) {
    const auto self = strong(this);
    if (const auto told = delegate()) told->nowPlayingViewControllerToggleShuffle(*this);
}

void ZRNNowPlayingViewController::_repeatButtonTouchUp(const std::shared_ptr<Control>&) {
    const auto self = strong(this);
    if (const auto told = delegate()) told->nowPlayingViewControllerToggleRepeat(*this);
}

void ZRNNowPlayingViewController::_brivoButtonTouchUp(const std::shared_ptr<Control>&) {
    const auto self = strong(this);
    if (const auto told = delegate()) told->nowPlayingViewControllerCreate(*this);
}

}  // namespace zornic
