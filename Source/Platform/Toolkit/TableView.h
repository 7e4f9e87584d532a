#pragma once

#include <functional>
#include <map>

#include "Platform/Toolkit/FocusContainer.h"
#include "Platform/Toolkit/IndexBar.h"
#include "Platform/Toolkit/ScrollView.h"
#include "Platform/Toolkit/TableHeaderFooterView.h"
#include "Platform/Toolkit/TableViewCell.h"
#include "Platform/Toolkit/TableViewDelegates.h"

namespace zornic {

enum class TableViewSeparatorStyle { None = 0, SingleLine = 1 };

/** A list of rows of one height in sections. Counts are asked once a reload, cells exist for the rows on view
   only, places are found by arithmetic: its work does not depend on its length. Main thread. */
class TableView : public ScrollView, public FocusContainer {
public:
    using CellFactory = std::function<std::shared_ptr<TableViewCell>(const std::string& reuseIdentifier)>;
    using HeaderFactory =
        std::function<std::shared_ptr<TableHeaderFooterView>(const std::string& reuseIdentifier)>;

    explicit TableView(const Rect& frame = {});
    ~TableView() override;
    void didMake() override;

    void setDataSource(std::weak_ptr<TableViewDataSource> dataSource);
    void setDelegate(std::weak_ptr<TableViewDelegate> delegate);

    double rowHeight() const { return _rowHeight; }
    void setRowHeight(double height);
    EdgeInsets separatorInset() const { return _separatorInset; }
    void setSeparatorInset(const EdgeInsets& inset);
    Color separatorColor() const { return _separatorColor; }
    void setSeparatorColor(Color color);
    TableViewSeparatorStyle separatorStyle() const { return _separatorStyle; }
    void setSeparatorStyle(TableViewSeparatorStyle style);

    void registerCellClass(const std::string& reuseIdentifier, CellFactory factory);
    void registerHeaderClass(const std::string& reuseIdentifier, HeaderFactory factory);
    /** An idle cell, prepared for reuse, or a new one; none for an identifier that was never registered. */
    std::shared_ptr<TableViewCell> dequeueReusableCellWithIdentifier(const std::string& reuseIdentifier);
    std::shared_ptr<TableHeaderFooterView> dequeueReusableHeaderFooterViewWithIdentifier(
        const std::string& reuseIdentifier);
    /** Row cells made since the process began, for statistics. */
    static std::uint64_t cellsMade();

    /** Asks for everything again; selection is dropped, the place is kept as far as there are rows. */
    void reloadData();
    /** Asks for everything again after a change: what was on view, focused and selected stays so, wherever
       its row went. What is gone leaves its place to the row that followed it, and is selected no more. A
       list at its beginning stays there. */
    void reloadDataKeepingPlace();
    void beginUpdates();
    /** Rows to be asked for again; within begin and end of updates they are done at the end, once each. */
    void reloadRowsAtIndexPaths(const std::vector<IndexPath>& indexPaths);
    void endUpdates();

    std::uint64_t numberOfSections();
    std::uint64_t numberOfRowsInSection(std::uint64_t section);
    std::vector<IndexPath> indexPathsForVisibleRows();
    std::vector<std::shared_ptr<TableViewCell>> visibleCells();
    /** The cell that shows that row at present; none when it is off screen. */
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(const IndexPath& indexPath) const;
    Rect rectForRowAtIndexPath(const IndexPath& indexPath);
    Rect rectForHeaderInSection(std::uint64_t section);
    /** Brings a row on view, with one more row beyond it where there is one; `toTop` puts it first, below its header. */
    void scrollToRowAtIndexPath(const IndexPath& indexPath, bool toTop, bool animated);

    std::vector<IndexPath> indexPathsForSelectedRows() const { return _selected; }
    void selectRowAtIndexPath(const IndexPath& indexPath, bool animated);
    void deselectRowAtIndexPath(const IndexPath& indexPath, bool animated);
    /** In knob mode gives focus to the first row on view; whether there was one. */
    bool _highlightFirstVisibleRowIfAppropriate();
    /** Whether section headers take room at all. */
    virtual bool _shouldShowHeadersAndFooters() const { return true; }
    const std::shared_ptr<IndexBar>& indexBar() const { return _indexBar; }

    /** A row was tapped or pressed by the knob: selects it and tells the delegate. */
    void rowWasActivated(const IndexPath& indexPath);
    /** The knob's focus came to a row: where it returns to. */
    void rowDidBecomeFocused(const IndexPath& indexPath);

    void layoutSubviews() override;
    std::shared_ptr<View> hitTest(Point point) override;
    std::shared_ptr<View> focusItemOnEntry(int direction) override;
    std::shared_ptr<View> focusItemNextTo(View& focused, int direction) override;
    bool shouldChangeFocus(View& focused, const std::shared_ptr<View>& next) override;
    std::shared_ptr<View> focusItemAfterReload() override;

protected:
    double maximumBounce() const override { return _rowHeight / 3; }
    double alignedOffset(double offset) const override;
    bool shouldDragBegin(const Touch& touch) const override;
    void contentOffsetDidChange() override;
    /** A focused row that went out of sight gives the focus to the first one on view. */
    void scrollingDidEnd() override;

private:
    struct Section {
        std::uint64_t rows = 0;
        double top = 0;  // of the header
        double headerHeight = 0;
    };
    /** A row of before a reload. */
    struct KeptRow {
        IndexPath indexPath;
        TableRowSubject subject;
        /** From the upper edge of what was on view. */
        double distance = 0;
    };
    // What stays over a reload
    void keepPlace();
    void returnToKeptPlace();
    void selectKeptRow();
    void focusKeptRow(const std::vector<KeptRow>& kept);
    void scrollToKeptRows(const std::vector<KeptRow>& kept);
    /** The empty path for what is gone. */
    IndexPath placeOf(const TableRowSubject& subject);

    // What there is
    void rebuild();
    void loadSections();
    void loadSectionsIfNeeded();
    double heightOfHeader(std::uint64_t section);
    bool hasRow(const IndexPath& indexPath) const;

    // Where it stands
    void placeSections();
    void placeIndexBar();
    double rowWidth() const;
    std::uint64_t sectionAtOffset(double offset) const;
    /** The first row that ends below `offset`; the empty path when there is none. */
    IndexPath rowAtOffset(double offset) const;
    IndexPath rowAfter(const IndexPath& indexPath) const;

    // What is on view
    void tile();
    void tileRows();
    void tileHeaders();
    std::shared_ptr<TableViewCell> makeCellVisible(const IndexPath& indexPath);
    std::shared_ptr<View> makeHeader(std::uint64_t section);
    void recycle(const std::shared_ptr<TableViewCell>& cell);
    void recycleHeader(const std::shared_ptr<View>& header);
    void reloadVisibleRows(const std::vector<IndexPath>& indexPaths);
    void setSelectedRow(const IndexPath& indexPath);
    bool isOnIndexBar(Point point) const;
    void indexBarDidPick(std::size_t index);

    // The knob
    bool holdsFocus() const;
    void restoreFocus();
    std::shared_ptr<TableViewCell> bringOnView(const IndexPath& indexPath);
    std::shared_ptr<View> focusItemInHeader(std::uint64_t section);
    std::shared_ptr<TableViewCell> firstRowOnView(int direction);

    std::weak_ptr<TableViewDataSource> _dataSource;
    std::weak_ptr<TableViewDelegate> _delegate;
    std::vector<Section> _sections;
    bool _sectionsLoaded = false, _tiling = false;
    std::map<IndexPath, std::shared_ptr<TableViewCell>> _visible;
    std::map<std::uint64_t, std::shared_ptr<View>> _headers;
    std::map<std::string, CellFactory> _cellClasses;
    std::map<std::string, HeaderFactory> _headerClasses;
    std::map<std::string, std::vector<std::shared_ptr<TableViewCell>>> _idleCells;
    std::map<std::string, std::vector<std::shared_ptr<TableHeaderFooterView>>> _idleHeaders;
    std::shared_ptr<IndexBar> _indexBar;
    std::vector<IndexPath> _selected;
    IndexPath _lastFocused;
    TableRowSubject _selectedSubject, _lastFocusedSubject;
    /** What was on view, from the top down, while a reload is due that keeps it. */
    std::optional<std::vector<KeptRow>> _kept;
    int _updateDepth = 0;
    std::vector<IndexPath> _pendingReloads;
    double _rowHeight = 44;
    EdgeInsets _separatorInset{0, 12, 0, 0};
    Color _separatorColor = _externalSystemDarkGrayColor();
    TableViewSeparatorStyle _separatorStyle = TableViewSeparatorStyle::SingleLine;
};

}  // namespace zornic
