#pragma once

#include "Views/ZRNTableViewCell.h"

namespace zornic {

/** A row that does something; drawn like a row in the middle of a group wherever it stands. */
class ZRNActionTableViewCell : public ZRNTableViewCell {
public:
    using ZRNTableViewCell::ZRNTableViewCell;
    void setSectionLocation(int) override { ZRNTableViewCell::setSectionLocation(2); }
};

}  // namespace zornic
