#include "View Controllers/ZRNErrorViewController.h"

#include "Utilities/ZRNHelmoBundle.h"
#include "Utilities/ZRNHelmoScreen.h"

namespace zornic {
namespace {

constexpr double margin = 12, titleTop = 96, titleHeight = 72, messageTop = 177, messageHeight = 32;
/** How much lower the texts stand where no button follows them. */
constexpr double knobOffset = 40;
constexpr double buttonTop = 259, buttonWidth = 376;
constexpr int messageLines = 2;

void showText(Label& label, const std::optional<std::string>& text, Font font, Color color) {
    label.setStyledText(text ? StyledText(*text, {.font = font, .color = color, .backgroundColor = {}})
                             : StyledText());
}

}  // namespace

ZRNErrorViewController::~ZRNErrorViewController() {
    if (_okButton) _okButton->removeAllTargets();
}

void ZRNErrorViewController::setErrorTitle(std::optional<std::string> title) {
    if (title == _errorTitle) return;
    _errorTitle = std::move(title);
    updateTitleLabelText();
}

void ZRNErrorViewController::setErrorMessage(std::optional<std::string> message) {
    if (message == _errorMessage) return;
    _errorMessage = std::move(message);
    updateMessageLabelText();
}

void ZRNErrorViewController::updateTitleLabelText() {
    if (!_titleLabel) return;
    showText(*_titleLabel, _errorTitle, Font::thinSystemFont(72), Color::whiteColor());
    view()->setNeedsLayout();
}

void ZRNErrorViewController::updateMessageLabelText() {
    if (!_messageLabel) return;
    showText(*_messageLabel, _errorMessage, Font::systemFont(32), Color::white(1, 0.7));
    view()->setNeedsLayout();
}

void ZRNErrorViewController::loadView() {
    const auto screen = ZRNHelmoScreen();
    const auto root = make<View>(screen ? screen->bounds() : Rect());
    root->setAutoresizingMask(Autoresizing::FlexibleWidth | Autoresizing::FlexibleHeight);
    root->setBackgroundColor(_externalSystemMidGrayColor());
    setView(root);

    const double width = root->bounds().width();
    const bool isKnob = ZRNHelmoUIMode() == ZRNHelmoUIModeKnob;
    const double offset = isKnob ? knobOffset : 0;
    _titleLabel = addLabel({margin, titleTop + offset, width - 2 * margin, titleHeight});
    _messageLabel = addLabel({margin, messageTop + offset, width - 2 * margin, messageHeight});
    _messageLabel->setNumberOfLines(messageLines);
    if (!isKnob) addOKButton(width);
}

std::shared_ptr<Label> ZRNErrorViewController::addLabel(const Rect& frame) {
    auto label = make<Label>(frame);
    label->setAutoresizingMask(Autoresizing::FlexibleWidth);
    label->setTextAlignment(TextAlignment::Center);
    view()->addSubview(label);
    return label;
}

void ZRNErrorViewController::addOKButton(double screenWidth) {
    const Image image = ZRNHelmoImage("HelmoButtonTouch");
    const double height = image.size().height;
    _okButton = make<Button>(ButtonType::Custom);
    _okButton->setBackgroundImage(
        image.flattenedWithColor(Color::white(0.2039)).resizableWithCapInsets({0, height / 2, 0, height / 2}),
        ControlState::Normal);
    _okButton->setTitle(ZRNLocalizedString("OK"), ControlState::Normal);
    _okButton->titleLabel()->setFont(Font::systemFont(40));
    _okButton->setTitleColor(Color::whiteColor(), ControlState::Normal);
    _okButton->setFrame({(screenWidth - buttonWidth) * 0.5, buttonTop, buttonWidth, height});
    _okButton->addTarget(this, &ZRNErrorViewController::okButtonTapped, ControlEvent::TouchUpInside);
    view()->addSubview(_okButton);
}

void ZRNErrorViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    updateTitleLabelText();
    updateMessageLabelText();
}

void ZRNErrorViewController::viewDidLayoutSubviews() {
    ViewController::viewDidLayoutSubviews();
    if (!_titleLabel) return;
    const double width = view()->bounds().width() - 2 * margin;
    _titleLabel->sizeToFit();
    layOutTitle(width);
    // Its present width may be that of a shorter message before.
    _messageLabel->setFrame(
        {_messageLabel->frame().origin, _messageLabel->sizeThatFits({width, UnboundedLength})});
    layOutTitle(width);
}

/** Across the screen, where it stands and as high as it is. */
void ZRNErrorViewController::layOutTitle(double width) {
    const Rect fitted = _titleLabel->frame();
    _titleLabel->setFrame({margin, fitted.y(), width, fitted.height()});
}

void ZRNErrorViewController::okButtonTapped() {
    if (const auto presenter = presentingViewController()) presenter->dismissViewController(true);
}

}  // namespace zornic
