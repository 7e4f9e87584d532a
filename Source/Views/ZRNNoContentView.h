#pragma once

#include <string>

#include "Platform/Toolkit/Label.h"

namespace zornic {

/** Stands in for a list that has nothing to show: one line that says what is so, one that says what can be
 * done. */
class ZRNNoContentView : public View {
public:
    /** With the texts for an empty category. */
    explicit ZRNNoContentView(const Rect& frame);
    ZRNNoContentView(const Rect& frame, std::string title, std::string subtitle);
    void didMake() override;

    const std::shared_ptr<Label>& titleLabel() const { return _titleLabel; }
    const std::shared_ptr<Label>& subtitleLabel() const { return _subtitleLabel; }

private:
    std::vector<LayoutConstraint> blockConstraints() const;

    const std::string _title, _subtitle;
    std::shared_ptr<Label> _titleLabel, _subtitleLabel;
    /** Hidden; the two labels as one block, for centring. */
    std::shared_ptr<View> _spacer;
};

}  // namespace zornic
