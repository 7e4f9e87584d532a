#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Media/MediaEntity.h"
#include "Platform/Toolkit/TableView.h"

namespace zornic {

class QueryTableViewController;

/** Look of a list, as far as a configuration decides it: bare rows of the table's own height unless it says
   otherwise. */
struct TableAppearance {
    Color tableViewBackgroundColor = Color::clear();
    Color tableViewCellBackgroundColor = Color::clear();
    /** Points; AutomaticDimension: the table's own. */
    double tableViewCellHeight = AutomaticDimension;
    Color tableViewSeparatorColor = Color::clear();
    EdgeInsets tableViewSeparatorInset{AutomaticDimension, AutomaticDimension, AutomaticDimension,
                                       AutomaticDimension};
    TableViewSeparatorStyle tableViewSeparatorStyle = TableViewSeparatorStyle::None;
};

/** How the rows of one kind are made and filled. One immutable object a class, shared by every list of that
   kind, never copied. Main thread. */
class BaseCellConfiguration {
public:
    BaseCellConfiguration() = default;
    BaseCellConfiguration(const BaseCellConfiguration&) = delete;
    BaseCellConfiguration& operator=(const BaseCellConfiguration&) = delete;
    virtual ~BaseCellConfiguration() = default;

    /** Writes the entity of a row into its cell. */
    virtual void configureCellWithViewControllerEntityAtIndexAnimated(
        const std::shared_ptr<TableViewCell>& cell, QueryTableViewController& viewController,
        const std::shared_ptr<MediaEntity>& entity, std::uint64_t index, bool animated) const;
    /** What a row reads of an item, in one fetch. */
    virtual const std::vector<std::string>& mediaEntityPropertiesToFetch() const;
    /** What a row reads of a collection, in one fetch. */
    virtual const std::vector<std::string>& collectionPropertiesToFetch() const;
    /** By default the name of the class. */
    virtual std::string reuseIdentifier() const;
    /** Makes a cell of the class that the rows take. */
    virtual TableView::CellFactory tableViewCellClass() const;
    virtual TableAppearance tableAppearance() const { return {}; }
};

/** A row that does something instead of showing an entity: it is filled without one, by its place among the
 * actions. */
class BaseActionCellConfiguration : public BaseCellConfiguration {
public:
    /** Does what the row is there for. */
    virtual void performActionForCellWithViewController(const std::shared_ptr<TableViewCell>& cell,
                                                        QueryTableViewController& viewController) const = 0;
};

/** Properties of a row's kind with those of its base, when the base has any. */
std::vector<std::string> propertiesByAdding(std::vector<std::string> properties,
                                            const std::vector<std::string>& base);

}  // namespace zornic
