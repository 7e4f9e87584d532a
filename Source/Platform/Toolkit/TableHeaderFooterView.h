#pragma once

#include "Platform/Toolkit/Label.h"

namespace zornic {

/** The header of a section: a title, or what a subclass puts into its content view. Reused. Main thread. */
class TableHeaderFooterView : public View {
public:
    explicit TableHeaderFooterView(std::string reuseIdentifier);
    void didMake() override;
    const std::string& reuseIdentifier() const { return _reuseIdentifier; }
    const std::shared_ptr<View>& contentView() const { return _contentView; }
    const std::shared_ptr<Label>& textLabel() const { return _textLabel; }
    virtual void prepareForReuse() {}
    void layoutSubviews() override;
    std::string accessibilityText() const override { return _textLabel->text(); }

private:
    const std::string _reuseIdentifier;
    std::shared_ptr<View> _contentView;
    std::shared_ptr<Label> _textLabel;
};

}  // namespace zornic
