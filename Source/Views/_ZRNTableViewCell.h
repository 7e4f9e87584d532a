#pragma once

#include "Platform/Toolkit/TableViewCell.h"

namespace zornic {

/** A row of the lists that fill their cells by hand; always of two lines. */
class _ZRNTableViewCell : public TableViewCell {
public:
    _ZRNTableViewCell(TableViewCellStyle, std::string reuseIdentifier)
        : TableViewCell(TableViewCellStyle::Subtitle, std::move(reuseIdentifier)) {}
};

}  // namespace zornic
