#include "Platform/Toolkit/TableHeaderFooterView.h"

namespace zornic {

namespace {

constexpr double margin = 12;

}  // namespace

TableHeaderFooterView::TableHeaderFooterView(std::string reuseIdentifier)
    : _reuseIdentifier(std::move(reuseIdentifier)), _contentView(make<View>()), _textLabel(make<Label>()) {}

void TableHeaderFooterView::didMake() {
    View::didMake();
    setBackgroundColor(_externalSystemSuperDarkGrayColor());
    _textLabel->setFont(Font::boldSystemFont(13));
    _textLabel->setTextColor(_externalSystemGrayColor());
    addSubview(_contentView);
    _contentView->addSubview(_textLabel);
}

void TableHeaderFooterView::layoutSubviews() {
    View::layoutSubviews();
    _contentView->setFrame(bounds());
    const double width = std::max(0.0, bounds().width() - 2 * margin);
    const double height = _textLabel->sizeThatFits({width, UnboundedLength}).height;
    _textLabel->setFrame(
        {margin, roundedToScale((bounds().height() - height) / 2, displayScale()), width, height});
}

}  // namespace zornic
