#include "Host/HelmoApplication.h"

#include <cstdio>

#include "Host/Automation/AutomationServer.h"
#include "Host/Log.h"
#include "Host/MusicFolders.h"
#include "Host/Player/GStreamerEngine.h"
#include "Host/ProcessTime.h"
#include "Host/Reader/ReaderTagReader.h"
#include "Host/Resources.h"
#include "Host/Settings/IcuLocaleServices.h"
#include "Host/Settings/XdgPaths.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/ArtworkCatalog.h"
#include "Utilities/ZRNShared.h"

namespace helmo {

using namespace zornic;

namespace {

constexpr int failure = 1;
/** Real time that the first scan may take before automation answers nevertheless. */
constexpr Duration scanLimit = std::chrono::minutes(10);

/** From the font of one script to the next. */
constexpr Duration fallbackInterval = std::chrono::milliseconds(40);

/** What the silent engine of virtual time asks of a song: that it is there. */
std::string whyNotPlayable(const std::string& location) {
    std::error_code error;
    return std::filesystem::exists(location, error) ? "" : location + ": no such file";
}

}  // namespace

HelmoApplication::HelmoApplication(CommandLine commandLine) : _commandLine(std::move(commandLine)) {
    if (isVirtual())
        _clock = std::make_unique<ManualClock>();
    else
        _clock = std::make_unique<SystemClock>();
    _runLoop = std::make_unique<RunLoop>(*_clock);
}

HelmoApplication::~HelmoApplication() {
    _bookmarkKeeper = nullptr;
    _libraryWatch = nullptr;
    if (_library) _library->stopWaiting();
    _libraryNotice = nullptr;
    _scanner = nullptr;
    _mixes = nullptr;
    _playbackNotice = nullptr;
    _notices = nullptr;
    _rootController = nullptr;
    ZRNSetSharedAVPlayer(nullptr);
    ZRNSetSharedDefaults(nullptr);
    _player = nullptr;
    MediaLibrary::setDefaultLibrary(nullptr);
    if (_settings) _settings->finishWriting();
    // Blocks on their way home still refer to what ends below.
    BackgroundWork::waitUntilIdle(std::chrono::seconds(5));
    while (_runLoop->nextDue() && *_runLoop->nextDue() <= _runLoop->now()) _runLoop->runDue();
    ImageLoader::install(nullptr);  // and with it ends the reader of pictures
}

void HelmoApplication::choosePaths() {
    const XdgPaths paths;
    if (_commandLine.data) {
        _dataFolder = *_commandLine.data;
        _settingsFile = _dataFolder / "settings.toml";
    } else if (_commandLine.headless) {
        _dataFolder = _temporaryFolder.emplace().path();
        _settingsFile = _dataFolder / "settings.toml";
    } else {
        _dataFolder = paths.data();
        _settingsFile = paths.config() / "settings.toml";
    }
    if (_commandLine.settings) _settingsFile = *_commandLine.settings;
}

void HelmoApplication::installServices() {
    _textEngine = std::make_shared<PangoTextEngine>();  // first: it reads the fonts while the rest is made
    _settings = std::make_unique<Settings>(_settingsFile, logLine);
    ArtworkCatalog::setCacheLimit(static_cast<std::size_t>(_settings->values().coverCacheMegabytes) << 20);
    const std::string language = _settings->values().language;
    LocaleServices::install(std::make_unique<IcuLocaleServices>(language));
    auto languages = preferredLanguages();
    if (!language.empty()) languages.insert(languages.begin(), language);
    if (!languages.empty()) _language = languages.front();
    Bundle::setPreferredLanguages(languages);
    _readerProgram = ReaderProgram::find();
    _imageLoader = std::make_shared<HostImageLoader>(std::make_shared<PictureReader>(_readerProgram));
    ImageLoader::install(_imageLoader);
    TextEngine::install(_textEngine);
}

bool HelmoApplication::openLibrary() {
    _library = SqliteMediaLibrary::open(_dataFolder / "library.sqlite",
                                        {.coverReader = _imageLoader, .language = _language});
    if (!_library) return false;
    MediaLibrary::setDefaultLibrary(_library);
    _musicFolders = chosenMusicFolders(_commandLine, _settings->values());
    _scanner =
        std::make_unique<Scanner>(_library, _musicFolders, std::make_shared<ReaderTagReader>(_readerProgram));
    _mixes = std::make_unique<Mixes>(_library, _settings->values().brivo);
    _scanner->setProgressHandler([this](const ScanProgress& progress) {
        if (progress.isFinished) _mixes->update();
    });
    watchFolders();
    if (_commandLine.headless) _scanner->start();
    return true;
}

void HelmoApplication::watchFolders() {
    const auto folders = std::make_shared<FolderWatch>(_scanner->roots());
    _scanner->setWatch(folders);
    _libraryWatch = make<LibraryWatch>(
        folders, [this](const ScanScope& scope) { _scanner->scan(scope); },
        isVirtual() ? LibraryWatch::Way::Asks : LibraryWatch::Way::Waits);
}

void HelmoApplication::makePlayer() {
    std::shared_ptr<PlaybackEngine> engine;
    if (isVirtual()) {
        engine = make<ClockedPlaybackEngine>(whyNotPlayable);
    } else {
        const auto sink = _commandLine.headless ? Pipeline::Sink::Null : Pipeline::Sink::Audio;
        engine = make<GStreamerEngine>(GStreamerEngine::Options{sink, logLine});
    }
    _player = make<AVController>(std::move(engine));
    if (isVirtual()) _player->setShuffleSeed(1);  // a script gets the same answers each time
    _bookmarkKeeper = make<BookmarkKeeper>(_player, _library);
    _player->setActiveShuffleType(_settings->values().shuffleType);
    _player->setActiveRepeatType(_settings->values().repeatType);
}

void HelmoApplication::makeScreens() {
    Screen::setCarScreen(_screen);
    _defaults = make<HostDefaults>(*_settings);
    ZRNSetSharedDefaults(_defaults);
    _tabs = make<HostTabBarController>(*_settings);
    _serviceProvider = make<HostServiceProvider>();
    _rootController = make<ZRNRootController>(_screen, _tabs);
    _rootController->setPlayer(_player);
    _rootController->setServiceProvider(_serviceProvider);
    _notices = make<HostNotices>(_rootController->helmoWindow());
    _playbackNotice = make<PlaybackNotice>(_player.get(), _notices);
    _libraryNotice = make<LibraryNotice>(_library, _musicFolders, _notices, [this] { _scanner->rescan(); });
    applyMode(_commandLine.mode.value_or(_settings->values().mode));
}

bool HelmoApplication::openServices() {
    const auto resources = findResources(_commandLine.resources);
    if (!resources) {
        logLine("helmo: texts and images were not found" +
                (_commandLine.resources ? " in " + _commandLine.resources->string() : std::string()));
        return false;
    }
    registerResources(*resources);
    choosePaths();
    installServices();
    return openLibrary();
}

int HelmoApplication::run() {
    if (!_commandLine.headless) return openServices() ? runWindow() : failure;
    return openHeadless() ? AutomationServer(*this, stdin, stdout).run() : failure;
}

bool HelmoApplication::openHeadless() {
    if (!openServices()) return false;
    const ScreenSize wanted = _commandLine.screen.value_or(_settings->values().screen);
    const Size size{static_cast<double>(wanted.width), static_cast<double>(wanted.height)};
    _surface = std::make_unique<DisplaySurface>(size, wanted.scale);
    _screen = make<Screen>(size, wanted.scale);
    makePlayer();
    // Nothing may depend on how far the scan has come when the first screen is made.
    if (isVirtual()) BackgroundWork::waitUntilIdle(scanLimit);
    makeScreens();
    return true;
}

int HelmoApplication::runWindow() {
    const ScreenSize wanted = _commandLine.screen.value_or(_settings->values().screen);
    SdlDisplay::Options options;
    options.size = {static_cast<double>(wanted.width), static_cast<double>(wanted.height)};
    options.scale = wanted.scale;
    options.isFullscreen = _commandLine.fullscreen || _settings->values().fullscreen;
    options.icon = Bundle::platformBundle()->pathForImage("HelmoAppIcon").value_or("");
    _display = std::make_unique<SdlDisplay>(*_runLoop, options);
    if (const std::string problem = _display->open(); !problem.empty()) {
        logLine("helmo: " + problem);
        return failure;
    }
    _screen = make<Screen>(_display->surface().size(), wanted.scale);
    makePlayer();
    makeScreens();
    _display->onMediaKey = [this](MediaKey key) { handleMediaKey(key); };
    _display->onQuit = [this] { _display->quit(); };
    _display->onFirstFrame = [this] { didDrawFirstFrame(); };
    _display->show(_rootController->helmoWindow());
    _display->run();
    _display->show(nullptr);
    return 0;
}

void HelmoApplication::didDrawFirstFrame() {
    _startMilliseconds = millisecondsSinceProcessStart();
    globalQueue(QueuePriority::Background).async([] { GStreamerEngine::prepare(); });
    _scanner->start();
    // One at a time, so that frames come in between.
    _fallbacks = _runLoop->every(fallbackInterval, [this] {
        if (!_textEngine->prepareNextFallback()) _fallbacks = {};
    });
}

void HelmoApplication::handleMediaKey(MediaKey key) {
    constexpr std::int64_t driversButton = 2;
    switch (key) {
        case MediaKey::PlayPause:
            return _player->togglePlayback(driversButton);
        case MediaKey::Next:
            return _player->changePlaybackIndexBy(1);
        case MediaKey::Previous:
            return _player->changePlaybackIndexBy(-1);
        case MediaKey::Stop:
            return _player->pause();
    }
}

void HelmoApplication::applyMode(InteractionMode mode) {
    _screen->setIntegerCapability(ScreenCapability::InteractionModels, mode == InteractionMode::Knob
                                                                           ? InteractionModel::Knob
                                                                           : InteractionModel::Touch);
    _screen->setIntegerCapability(ScreenCapability::TouchLevels, mode == InteractionMode::LowTouch ? 1 : 0);
    _rootController->helmoWindow()->screenDidChange();
}

void HelmoApplication::drawFrame() {
    auto& window = *_rootController->helmoWindow();
    if (!window.needsFrame()) return;
    surface().render(window);
    if (_startMilliseconds != 0) return;
    if (isVirtual())
        _startMilliseconds = millisecondsSinceProcessStart();
    else
        didDrawFirstFrame();
}

std::string HelmoApplication::writeScreenshot(const std::string& file) {
    drawFrame();
    return surface().writePng(file);
}

DisplayStatistics HelmoApplication::takeStatistics() {
    const auto summary = surface().statistics().take();
    const auto milliseconds = [](Duration duration) {
        return std::chrono::duration<double, std::milli>(duration).count();
    };
    return {summary.count, milliseconds(summary.p50), milliseconds(summary.p99), milliseconds(summary.max),
            _startMilliseconds};
}

}  // namespace helmo
