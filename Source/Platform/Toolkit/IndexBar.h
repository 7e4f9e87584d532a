#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Platform/Toolkit/View.h"

namespace zornic {

/** The letters at a list's right edge, 28 points wide and to be hit over 44. They are as large as there is
   room for; when there is none for all, some are left out and dots stand for them. Main thread. */
class IndexBar : public View {
public:
    static constexpr double width = 28;
    explicit IndexBar(const Rect& frame = {});
    const std::vector<std::string>& titles() const { return _titles; }
    void setTitles(std::vector<std::string> titles);
    /** A finger is on the title at this index. */
    std::function<void(std::size_t index)> onPick;

    void drawRect(Canvas& canvas, const Rect& dirty) override;
    bool pointInside(Point point) const override;
    void touchBegan(const Touch& touch) override;
    void touchMoved(const Touch& touch) override;
    void touchEnded(const Touch&) override;
    void touchCancelled(const Touch&) override;
    void setFrame(const Rect& frame) override;

private:
    void pick(const Touch& touch);
    void updateShownTitles();
    void setPicked(std::size_t index);
    /** Places that are drawn: letters, and dots between letters that are no neighbours. */
    struct Place {
        std::size_t title;  // the first that it stands for
        bool dot;
    };
    std::vector<Place> places() const;
    /** Where they stand, one below the other, around the middle. */
    Rect areaOfPlaces(std::size_t count) const;
    std::vector<std::string> _titles;
    /** Indices of the titles that are drawn; a dot stands between two whose neighbours are left out. */
    std::vector<std::size_t> _shown;
    std::size_t _picked = static_cast<std::size_t>(-1);
};

}  // namespace zornic
