#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace helmo {

/** How the driver works the display; the numbers are those of the library's interaction modes. */
enum class InteractionMode { Touch = 0, LowTouch = 1, Knob = 2 };

/** From "touch", "lowtouch", "knob" or the mode's number; nullopt for anything else. */
std::optional<InteractionMode> interactionModeFromText(std::string_view text);
const char* textOf(InteractionMode mode);

/** The display's size in points and its pixels a point. A value. */
struct ScreenSize {
    int width = 800;
    int height = 480;
    double scale = 1;

    /** What `fromText` takes, for a sentence. */
    static constexpr const char* form =
        "WIDTHxHEIGHT or WIDTHxHEIGHT@SCALE, with 200 to 8192 points a side and a scale of 0.5 to 4";
    /** From "1280x720" or "1280x720@1.5"; nullopt for anything else, also for a size out of range. */
    static std::optional<ScreenSize> fromText(std::string_view text);
    std::string text() const;
    friend bool operator==(const ScreenSize&, const ScreenSize&) = default;
};

/** Everything that the driver may choose and that lasts. A value. */
struct SettingsValues {
    std::vector<std::filesystem::path> musicFolders;
    /** Short identifiers, in the order of the tabs: what every library has comes first. */
    std::vector<std::string> tabs{"artists",      "albums",    "songs",      "playlists", "genres",
                                  "compilations", "composers", "audiobooks", "brivomix"};
    bool sortByArtist = false;
    bool groupByAlbumArtist = false;
    /** Whether mixes are made and shown. */
    bool brivo = true;
    /** 0 off, 1 on. */
    int shuffleType = 0;
    /** 0 off, 1 the song, 2 everything. */
    int repeatType = 0;
    ScreenSize screen;
    bool fullscreen = false;
    InteractionMode mode = InteractionMode::Touch;
    /** Megabytes that covers may take in memory. */
    int coverCacheMegabytes = 32;
    /** "de" or "pt-BR"; empty: the system's. */
    std::string language;
    friend bool operator==(const SettingsValues&, const SettingsValues&) = default;
};

}  // namespace helmo
