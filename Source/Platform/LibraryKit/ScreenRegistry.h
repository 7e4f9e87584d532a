#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Platform/LibraryKit/QueryTableViewController.h"

namespace zornic {

/** What a screen identifier stands for. */
struct ScreenAttributes {
    using DataSourceFactory =
        std::function<std::shared_ptr<CompletionQueryDataSource>(std::shared_ptr<MediaQuery>, EntityType)>;
    using ViewControllerFactory = std::function<std::shared_ptr<QueryTableViewController>(
        std::shared_ptr<CompletionQueryDataSource>, const BaseCellConfiguration&)>;

    /** Fills a row. Lives as long as the process. */
    const BaseCellConfiguration* configurationClass = nullptr;
    /** Makes what loads the rows; may make none. */
    DataSourceFactory dataSourceClass;
    EntityType entityType = EntityType::Items;
    ViewControllerFactory viewControllerClass;
    int viewControllerType = 0;
};

/** Library screens by identifier. A registered screen may be made many times. Main thread. */
class ScreenRegistry {
public:
    using QueryCreationHandler = std::function<std::shared_ptr<MediaQuery>()>;

    static ScreenRegistry& shared();

    /** `handler` makes the query of a screen that is asked for without one; may be absent. */
    void registerIdentifierWithAttributesDefaultQueryCreationHandler(const std::string& identifier,
                                                                     ScreenAttributes attributes,
                                                                     QueryCreationHandler handler);
    /** A new screen over the identifier's default query, with its identifier set; none for an unknown
       identifier, or when there is no query. */
    std::shared_ptr<QueryTableViewController> viewControllerForIdentifier(
        const std::string& identifier) const;
    /** The same over `query`; the default query when it is none. */
    std::shared_ptr<QueryTableViewController> viewControllerForIdentifierQuery(
        const std::string& identifier, const std::shared_ptr<MediaQuery>& query) const;
    std::size_t count() const { return _records.size(); }

private:
    struct Record {
        ScreenAttributes attributes;
        QueryCreationHandler handler;
    };
    std::map<std::string, Record> _records;
};

}  // namespace zornic
