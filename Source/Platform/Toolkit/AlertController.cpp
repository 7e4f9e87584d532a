#include "Platform/Toolkit/AlertController.h"

#include <algorithm>

namespace zornic {

namespace {

constexpr double maximumWidth = 480, screenMargin = 24, padding = 16, gap = 8, cancelGap = 16;
constexpr double buttonHeight = 52, minimumButtonHeight = 44, panelRadius = 12, buttonRadius = 8;

}  // namespace

AlertController::AlertController(std::string title, std::string message, AlertControllerStyle style)
    : _message(std::move(message)), _style(style) {
    ViewController::setTitle(title);
    setPresentationStyle(PresentationStyle::OverCurrent);
}

void AlertController::addAction(std::shared_ptr<AlertAction> action) {
    if (!action) return;
    _actions.push_back(std::move(action));
    if (!_panel) return;
    _buttons.push_back(makeButton(_actions.back()));
    view()->setNeedsLayout();
}

void AlertController::choose(const std::shared_ptr<AlertAction>& action) {
    if (_chosen || std::find(_actions.begin(), _actions.end(), action) == _actions.end()) return;
    const auto self = strong<AlertController>(this);
    _chosen = true;
    dismissViewController(true, [self, chosen = action] {
        self->_chosen = false;
        if (const auto& handler = chosen->handler()) handler();
    });
}

bool AlertController::handleBack() {
    auto choice = std::find_if(_actions.begin(), _actions.end(), [](const auto& action) {
        return action->style() == AlertActionStyle::Cancel;
    });
    if (choice == _actions.end() && _actions.size() == 1) choice = _actions.begin();
    if (choice != _actions.end())
        choose(*choice);
    else if (_actions.empty())
        dismissViewController(true);
    return true;  // a question without a way out waits for its answer
}

std::shared_ptr<View> AlertController::preferredFocusedItem() {
    return _buttons.empty() ? nullptr : orderedButtons().front();
}

// View

void AlertController::loadView() {
    ViewController::loadView();
    view()->setBackgroundColor(Color::blackColor().withAlpha(0.6));
    _panel = make<View>();
    _panel->setBackgroundColor(_externalSystemSuperDarkGrayColor());
    _panel->layer()->setCornerRadius(panelRadius);
    view()->addSubview(_panel);
    const auto addLabel = [this](const std::string& text, Font font, Color color) {
        auto label = make<Label>();
        label->setText(text);
        label->setFont(font);
        label->setTextColor(color);
        label->setTextAlignment(TextAlignment::Center);
        label->setNumberOfLines(0);
        _panel->addSubview(label);
        return label;
    };
    _titleLabel = addLabel(title(), Font::boldSystemFont(17), Color::whiteColor());
    _messageLabel = addLabel(_message, Font::systemFont(15), _externalSystemGrayColor());
    for (const auto& action : _actions) _buttons.push_back(makeButton(action));
}

std::shared_ptr<Button> AlertController::makeButton(const std::shared_ptr<AlertAction>& action) {
    auto button = make<Button>();
    button->setTitle(action->title(), ControlState::Normal);
    button->setTitleColor(_externalSystemTealColor(), ControlState::Normal);
    const bool cancel = action->style() == AlertActionStyle::Cancel;
    button->titleLabel()->setFont(cancel ? Font::boldSystemFont(17) : Font::systemFont(17));
    button->setBackgroundColor(_externalSystemDarkGrayColor());
    button->layer()->setCornerRadius(buttonRadius);
    button->addTarget(
        shared_from_this(),
        [this, weakAction = std::weak_ptr(action)](const auto&) { choose(weakAction.lock()); },
        ControlEvent::TouchUpInside);
    _panel->addSubview(button);
    return button;
}

std::vector<std::shared_ptr<Button>> AlertController::orderedButtons() const {
    std::vector<std::shared_ptr<Button>> first, last;
    for (std::size_t i = 0; i < _buttons.size(); ++i) {
        const bool apart =
            _style == AlertControllerStyle::ActionSheet && _actions[i]->style() == AlertActionStyle::Cancel;
        (apart ? last : first).push_back(_buttons[i]);
    }
    first.insert(first.end(), last.begin(), last.end());
    return first;
}

void AlertController::viewDidLayoutSubviews() {
    ViewController::viewDidLayoutSubviews();
    if (!_panel) return;
    const Rect area = view()->bounds();
    const double width = std::max(0.0, std::min(maximumWidth, area.width() - 2 * screenMargin));
    const double inner = std::max(0.0, width - 2 * padding), room = area.height() - 2 * gap;
    const double buttons = layoutButtons(0, inner, room - 2 * padding, false);
    const double texts = layoutTexts(padding, inner, room - buttons - 2 * padding - 2 * gap);
    const double height = texts + layoutButtons(texts, inner, room - texts - padding, true) + padding;
    const double scale = view()->displayScale();
    _panel->setFrame({roundedToScale((area.width() - width) / 2, scale),
                      roundedToScale(std::max(0.0, (area.height() - height) / 2), scale), width, height});
}

double AlertController::layoutTexts(double top, double width, double room) {
    const double limit = top + std::max(0.0, room);
    for (const auto& label : {_titleLabel, _messageLabel}) {
        const Size wanted = label->text().empty() ? Size{} : label->sizeThatFits({width, UnboundedLength});
        const double line = label->font().lineHeight();
        const bool cut =
            top + wanted.height > limit && line > 0;  // whole lines only, the last with an ellipsis
        const int least = label == _titleLabel ? 1 : 0;
        const int lines = cut ? std::max(least, static_cast<int>((limit - top) / line)) : 0;
        label->setNumberOfLines(lines);
        const double height = cut ? lines * line : wanted.height;
        label->setFrame({padding, top, width, height});
        if (height > 0) top += height + gap;
    }
    return top + gap;
}

double AlertController::layoutButtons(double top, double width, double room, bool placed) {
    const auto buttons = orderedButtons();
    if (buttons.empty()) return 0;
    const bool apart = _style == AlertControllerStyle::ActionSheet && buttons.size() > 1 &&
                       std::any_of(_actions.begin(), _actions.end(), [](const auto& action) {
                           return action->style() == AlertActionStyle::Cancel;
                       });
    const bool pair =
        _style == AlertControllerStyle::Alert && buttons.size() == 2 &&
        std::all_of(buttons.begin(), buttons.end(), [&](const auto& button) {
            return button->sizeThatFits({width, buttonHeight}).width <= (width - gap) / 2 - 2 * gap;
        });
    const auto heightOf = [&](std::size_t columns, double each) {
        const auto rows = static_cast<double>((buttons.size() + columns - 1) / columns);
        return rows * each + (rows - 1) * gap + (apart ? cancelGap - gap : 0);
    };
    std::size_t columns = pair ? 2 : 1;
    double each = buttonHeight;
    if (heightOf(columns, each) > room) each = minimumButtonHeight;
    if (heightOf(columns, each) > room) columns = 2;
    const double column = (width - gap * static_cast<double>(columns - 1)) / static_cast<double>(columns);
    const std::size_t lastRow = (buttons.size() - 1) / columns;
    for (std::size_t i = 0; placed && i < buttons.size(); ++i) {
        const auto row = static_cast<double>(i / columns), at = static_cast<double>(i % columns);
        const double shift = apart && i / columns == lastRow ? cancelGap - gap : 0;
        const bool alone = columns > 1 && i + 1 == buttons.size() && i % columns == 0;
        buttons[i]->setFrame(
            {padding + at * (column + gap), top + row * (each + gap) + shift, alone ? width : column, each});
    }
    return heightOf(columns, each);
}

}  // namespace zornic
