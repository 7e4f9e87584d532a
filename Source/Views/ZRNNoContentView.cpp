#include "Views/ZRNNoContentView.h"

#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
namespace {

constexpr double margin = 12, lineDistance = 28, aboveMiddle = -11;

std::shared_ptr<Label> makeLabel(const std::string& text, double size) {
    const auto label = make<Label>();
    label->setText(text);
    label->setFont(Font::systemFont(size));
    label->setTextAlignment(TextAlignment::Center);
    label->setTextColor(Color::whiteColor());
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    return label;
}

}  // namespace

ZRNNoContentView::ZRNNoContentView(const Rect& frame)
    : ZRNNoContentView(frame, ZRNLocalizedString("NO_CONTENT_TITLE"),
                       ZRNLocalizedString("NO_CONTENT_SUBTITLE")) {}

ZRNNoContentView::ZRNNoContentView(const Rect& frame, std::string title, std::string subtitle)
    : View(frame), _title(std::move(title)), _subtitle(std::move(subtitle)) {}

void ZRNNoContentView::didMake() {
    View::didMake();
    setBackgroundColor(_externalSystemExtraDarkGrayColor());
    _titleLabel = makeLabel(_title, 28);
    _subtitleLabel = makeLabel(_subtitle, 16);
    _subtitleLabel->setNumberOfLines(2);
    _spacer = make<View>();
    _spacer->setTranslatesAutoresizingMaskIntoConstraints(false);
    _spacer->setHidden(true);
    addSubview(_titleLabel);
    addSubview(_subtitleLabel);
    addSubview(_spacer);
    addConstraints(blockConstraints());
}

std::vector<LayoutConstraint> ZRNNoContentView::blockConstraints() const {
    using enum LayoutAttribute;
    const std::weak_ptr<View> self =
        std::static_pointer_cast<View>(std::const_pointer_cast<Object>(shared_from_this()));
    const auto equal = [](std::weak_ptr<View> item, LayoutAttribute attribute, std::weak_ptr<View> other,
                          LayoutAttribute otherAttribute, double constant = 0) {
        return LayoutConstraint{std::move(item),       attribute, std::move(other),
                                otherAttribute,        1,         constant,
                                LayoutPriorityRequired};
    };
    return {equal(_subtitleLabel, FirstBaseline, _titleLabel, LastBaseline, lineDistance),
            equal(_titleLabel, Right, _spacer, Right),
            equal(_titleLabel, Left, _spacer, Left),
            equal(_subtitleLabel, Right, _spacer, Right),
            equal(_subtitleLabel, Left, _spacer, Left),
            equal(_spacer, Top, _titleLabel, Top),
            equal(_spacer, Bottom, _subtitleLabel, Bottom),
            equal(_spacer, Left, self, Left, margin),
            equal(_spacer, Right, self, Right, -margin),
            equal(_spacer, CenterY, self, CenterY, aboveMiddle)};
}

}  // namespace zornic
