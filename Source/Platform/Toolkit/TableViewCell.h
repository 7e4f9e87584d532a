#pragma once

#include "Platform/Toolkit/ImageView.h"
#include "Platform/Toolkit/Label.h"
#include "Platform/Toolkit/TableViewDelegates.h"

namespace zornic {

enum class TableViewCellStyle { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
enum class TableViewCellAccessory { None = 0, DisclosureIndicator = 1 };
class PlayingMarkView;

/** One row on view: a title line over an optional detail line, content of subclasses, an accessory at the
   right, and the mark of what plays in its place. Cells are reused: whoever fills one sets everything. Main
   thread. */
class TableViewCell : public View {
public:
    TableViewCell(TableViewCellStyle style, std::string reuseIdentifier);
    void didMake() override;
    /** Cells made since the process began. */
    static std::uint64_t made();

    const std::string& reuseIdentifier() const { return _reuseIdentifier; }
    TableViewCellStyle style() const { return _style; }
    const std::shared_ptr<Label>& textLabel() const { return _textLabel; }
    const std::shared_ptr<Label>& detailTextLabel() const { return _detailTextLabel; }
    /** What the row says, whichever labels show it. */
    virtual std::string titleText() const { return _textLabel->text(); }
    virtual std::string detailText() const { return _detailTextLabel->text(); }
    const std::shared_ptr<View>& contentView() const { return _contentView; }
    TableViewCellAccessory accessoryType() const { return _accessoryType; }
    void setAccessoryType(TableViewCellAccessory type);
    std::shared_ptr<View> accessoryView() const { return _accessoryView; }
    /** Instead of the accessory type; none: the type's again. */
    void setAccessoryView(std::shared_ptr<View> view);
    /** Of the line below the row, and of the texts: they begin at its left inset. AutomaticDimension: the
     * table's. */
    EdgeInsets separatorInset() const { return _separatorInset; }
    void setSeparatorInset(const EdgeInsets& inset);
    int indentationLevel() const { return _indentationLevel; }
    void setIndentationLevel(int level);
    double indentationWidth() const { return _indentationWidth; }
    void setIndentationWidth(double width);
    /** Where in its section the row stands, as the table tells: 1 first, 2 middle, 3 last, 4 only. */
    virtual void setSectionLocation(int location) { _sectionLocation = location; }
    int sectionLocation() const { return _sectionLocation; }

    bool isSelected() const { return _selected; }
    virtual void setSelected(bool selected, bool animated);
    bool isHighlighted() const { return _highlighted; }
    virtual void setHighlighted(bool highlighted);
    /** The mark of the row that plays: three bars that move while `moving`. */
    void setPlayingMark(bool shown, bool moving);
    bool showsPlayingMark() const { return _playingMark != nullptr; }

    /** Row that it shows at present; the table's. */
    const IndexPath& indexPath() const { return _indexPath; }
    TableView* tableView() const { return _tableView; }
    void setPlace(TableView* tableView, const IndexPath& indexPath);
    /** What the row stands for, from whoever fills the cell; the table forgets it with the row. */
    const TableRowSubject& subject() const { return _subject; }
    void setSubject(TableRowSubject subject) { _subject = std::move(subject); }
    /** The table's line look; the table's. */
    void setSeparator(bool shown, Color color, const EdgeInsets& tableInset);
    /** Before it shows another row. */
    virtual void prepareForReuse();

    void layoutSubviews() override;
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    bool canBecomeFocused() const override { return true; }
    void focusDidChange() override;
    void knobPressBegan() override;
    void knobPressEnded(bool cancelled) override;
    void touchBegan(const Touch& touch) override;
    void touchEnded(const Touch& touch) override;
    void touchCancelled(const Touch& touch) override;
    std::string accessibilityText() const override;

protected:
    /** Colours of labels and images for the present state: cut out of the tint while focused. Overrides add
       their own labels. */
    virtual void updateColors();
    /** Ground to cut texts out of a focused row; none while the row is not focused. */
    std::optional<Color> cutOutColor() const;
    /** Whether the row finds a place for the mark of what plays, in front of its texts, instead of the
       accessory's. */
    virtual bool placesPlayingMark() const { return false; }
    /** The mark while it is shown; none otherwise. */
    std::shared_ptr<View> playingMark() const;
    /** Puts a label on a baseline, measured from the row's top, as wide as it may be. */
    void placeOnBaseline(Label& label, double x, double baseline, double width) const;

private:
    bool isInside(const Touch& touch) const;
    double leftInset() const;
    std::shared_ptr<View> shownAccessory() const;
    void placeAccessory();
    void layoutTexts(double width);
    void updateAccessory();
    void updateAccessoryColor(const std::optional<Color>& cutOut);
    void updateGround(bool animated);
    const TableViewCellStyle _style;
    const std::string _reuseIdentifier;
    std::shared_ptr<View> _contentView;
    std::shared_ptr<Label> _textLabel, _detailTextLabel;
    std::shared_ptr<ImageView> _disclosureView;
    std::shared_ptr<View> _accessoryView;
    std::shared_ptr<PlayingMarkView> _playingMark;
    TableViewCellAccessory _accessoryType = TableViewCellAccessory::None;
    EdgeInsets _separatorInset{AutomaticDimension, AutomaticDimension, AutomaticDimension,
                               AutomaticDimension};
    EdgeInsets _tableSeparatorInset;
    Color _separatorColor;
    bool _separatorShown = false, _selected = false, _highlighted = false;
    int _indentationLevel = 0, _sectionLocation = 0;
    double _indentationWidth = 10;
    IndexPath _indexPath;
    TableView* _tableView = nullptr;
    TableRowSubject _subject;
    /** From 0, at rest, to 1, pressed or selected; between them while a release fades. */
    double _lightness = 0;
    Token _fade;
};

}  // namespace zornic
