#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Tests/Journeys/HelmoProcess.h"

/** A driver with a small music folder in a temporary folder, and words for what he does and sees. */
class JourneyFixture : public testing::Test {
protected:
    using Json = nlohmann::json;

    JourneyFixture();
    ~JourneyFixture() override;

    /** Starts helmo on the music folder, in place of one that runs. */
    void start(std::vector<std::string> arguments = {});
    /** A song without tags, so that its file names it. */
    void addSong(const std::string& file, int seconds);

    /** Does a command that must succeed; its answer. */
    Json perform(const Json& command);
    /** Opens the list of all songs as a driver does, with the knob or a finger. */
    void openSongs();
    /** Taps the first view that shows `text`, and lets movements end. */
    void tap(const std::string& text);
    /** Taps the centre of the view that shows the named image, and holds for `seconds`. */
    void tapImage(const std::string& image, double seconds = 0);
    void turn(int detents) { perform({{"do", "knob"}, {"turn", detents}}); }
    /** Turns the knob clockwise until what is focused begins with `text`. */
    void turnTo(const std::string& text);
    void press();
    void back();
    void advance(double seconds) { perform({{"do", "advance"}, {"seconds", seconds}}); }
    void set(const char* name, const Json& value) { perform({{"do", "settings"}, {"set", {{name, value}}}}); }

    Json player() { return perform({{"do", "player"}}); }
    Json settings() { return perform({{"do", "settings"}})["settings"]; }
    /** Titles of the songs on view: all, or those that are marked as playing. */
    std::vector<std::string> titles(bool onlyPlaying = false);
    std::vector<std::string> playingTitles() { return titles(true); }
    /** Class of the topmost screen. */
    std::string frontScreen();
    bool isOnDisplay(const std::string& text);
    /** Every node of the visible tree that `wanted` accepts, from back to front. */
    std::vector<Json> nodes(const std::function<bool(const Json&)>& wanted);
    /** The only focused node. Fails when there is none, or more than one. */
    Json focused();

    std::filesystem::path _home, _music;
    std::unique_ptr<HelmoProcess> _helmo;
};
