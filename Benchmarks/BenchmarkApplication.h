#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Host/Automation/TimeDriver.h"
#include "Host/HelmoApplication.h"
#include "Platform/Toolkit/TableView.h"
#include "View Controllers/ZRNBrowserViewController.h"

namespace helmo::benchmarks {

/** A headless helmo inside this process, in virtual time, 800 x 480. One at a time. */
class BenchmarkApplication {
public:
    /** With a generated library, of which the music itself is nowhere. Throws when it can't be opened. */
    explicit BenchmarkApplication(const std::filesystem::path& data) : BenchmarkApplication(data, {data}) {}
    /** `data`: folder of an existing library; empty: a fresh one. Throws when it can't be opened. */
    BenchmarkApplication(const std::filesystem::path& data, const std::vector<std::filesystem::path>& music);

    HelmoApplication& helmo() { return _helmo; }
    TimeDriver& time() { return _time; }
    zornic::Window& window() { return *_helmo.rootController().helmoWindow(); }
    zornic::ZRNBrowserViewController& browser() { return *_helmo.rootController().browserViewController(); }
    /** Puts these tabs there, by the host's short names, the first one selected. */
    void arrangeTabs(const std::vector<std::string>& names);
    /** The middle of the tab of the screen with that identifier. Throws when there is none. */
    zornic::Point tabPoint(const std::string& identifier);
    /** The list on view. Throws when the front screen has none. */
    zornic::TableView& frontTable();
    /** Milliseconds from a finger's leaving the display at `point` to the end of the frame that shows what
       that did, without animations and work that comes behind it. */
    double millisecondsOfTap(zornic::Point point);
    /** The same to the frame in which nothing moves any more: a screen that is pushed has come to rest. */
    double millisecondsOfTapToRest(zornic::Point point);
    /** Milliseconds of the main thread for all frames of that time and the work that comes before each; what
       is queued elsewhere is done in between. */
    double millisecondsOfFrames(zornic::Seconds time);
    /** The longest of all these frames so far. */
    double longestFrame() const { return _longestFrame; }

private:
    double millisecondsOfFrame();

    HelmoApplication _helmo;
    TimeDriver _time;
    double _longestFrame = 0;
};

}  // namespace helmo::benchmarks
