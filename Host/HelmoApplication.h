#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "Host/Automation/AutomationTarget.h"
#include "Host/BookmarkKeeper.h"
#include "Host/Display/HostImageLoader.h"
#include "Host/Display/PangoTextEngine.h"
#include "Host/Display/SdlDisplay.h"
#include "Host/HostDefaults.h"
#include "Host/HostNotices.h"
#include "Host/HostServiceProvider.h"
#include "Host/HostTabBarController.h"
#include "Host/Library/LibraryWatch.h"
#include "Host/Library/Mixes/Mixes.h"
#include "Host/Library/Scanner.h"
#include "Host/LibraryNotice.h"
#include "Host/PlaybackNotice.h"
#include "Host/Settings/CommandLine.h"
#include "Host/TemporaryFolder.h"

namespace helmo {

/** The running program: puts library, player, settings and display together around a root controller. Main
 * thread. */
class HelmoApplication final : public AutomationTarget {
public:
    explicit HelmoApplication(CommandLine commandLine);
    ~HelmoApplication() override;

    /** Runs until the end; the program's exit status. */
    int run();
    /** Makes everything but the window, for whoever drives a headless helmo from inside the process instead
       of by `run`; whether that worked, and if not, why is on stderr. */
    bool openHeadless();
    /** Looks in the background for what has changed in the music folders. */
    void rescan() { _scanner->rescan(); }

    zornic::RunLoop& runLoop() override { return *_runLoop; }
    zornic::ZRNRootController& rootController() override { return *_rootController; }
    zornic::ManualClock* virtualClock() override { return dynamic_cast<zornic::ManualClock*>(_clock.get()); }
    void drawFrame() override;
    std::string writeScreenshot(const std::string& file) override;
    DisplayStatistics takeStatistics() override;
    nlohmann::json settings() const override;
    std::string changeSettings(const nlohmann::json& changes) override;

private:
    bool isVirtual() const { return _commandLine.headless && !_commandLine.realtime; }
    bool openServices();
    void choosePaths();
    void installServices();
    bool openLibrary();
    void watchFolders();
    void makePlayer();
    void makeScreens();
    int runWindow();
    void applyMode(InteractionMode mode);
    void applySettings(const SettingsValues& values);
    void handleMediaKey(MediaKey key);
    void didDrawFirstFrame();
    DisplaySurface& surface() { return _display ? _display->surface() : *_surface; }

    const CommandLine _commandLine;
    std::optional<TemporaryFolder> _temporaryFolder;
    std::filesystem::path _dataFolder, _settingsFile;
    std::unique_ptr<zornic::Clock> _clock;
    std::unique_ptr<zornic::RunLoop> _runLoop;
    std::unique_ptr<Settings> _settings;
    std::shared_ptr<ReaderProgram> _readerProgram;
    std::shared_ptr<HostImageLoader> _imageLoader;
    std::shared_ptr<PangoTextEngine> _textEngine;
    zornic::Token _fallbacks;
    /** The driver's, as "de" or "pt-BR". */
    std::string _language = "en";
    std::shared_ptr<SqliteMediaLibrary> _library;
    std::vector<std::filesystem::path> _musicFolders;
    std::unique_ptr<Mixes> _mixes;
    std::unique_ptr<Scanner> _scanner;
    std::shared_ptr<LibraryWatch> _libraryWatch;
    std::shared_ptr<zornic::Screen> _screen;
    std::shared_ptr<zornic::AVController> _player;
    std::shared_ptr<BookmarkKeeper> _bookmarkKeeper;
    std::shared_ptr<HostDefaults> _defaults;
    std::shared_ptr<HostTabBarController> _tabs;
    std::shared_ptr<HostServiceProvider> _serviceProvider;
    std::shared_ptr<zornic::ZRNRootController> _rootController;
    std::shared_ptr<HostNotices> _notices;
    std::shared_ptr<PlaybackNotice> _playbackNotice;
    std::shared_ptr<LibraryNotice> _libraryNotice;
    std::unique_ptr<SdlDisplay> _display;
    std::unique_ptr<DisplaySurface> _surface;
    double _startMilliseconds = 0;
};

}  // namespace helmo
