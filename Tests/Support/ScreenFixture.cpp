#include "Tests/Support/ScreenFixture.h"

#include <fstream>
#include <sstream>

#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Media/ArtworkCatalog.h"
#include "Tests/Support/DrawnImageSource.h"
#include "Utilities/ZRNHelmoBundle.h"

namespace zornic {
namespace {

constexpr auto frameInterval = std::chrono::microseconds(16667);

/** Knows of an image file no more than its size, and of a drawn image what was drawn. */
class SizeOnlyImageLoader final : public ImageLoader {
public:
    std::shared_ptr<const ImageSource> sourceFromFile(const std::filesystem::path& file) override {
        auto& source = _sources[file];
        if (source) return source;
        std::ifstream stream(file);
        std::stringstream text;
        text << stream.rdbuf();
        const Size size{attribute(text.str(), " width=\""), attribute(text.str(), " height=\"")};
        return source = std::make_shared<FakeImageSource>(size, 0);
    }
    std::shared_ptr<const ImageSource> sourceFromData(const std::string&, Size size, double scale) override {
        return std::make_shared<FakeImageSource>(size, scale);
    }
    std::shared_ptr<const ImageSource> sourceByDrawing(Size size, bool opaque, double scale,
                                                       const std::function<void(Canvas&)>& draw) override {
        return std::make_shared<DrawnImageSource>(size, opaque, scale, draw);
    }

private:
    static double attribute(const std::string& text, const std::string& name) {
        const auto at = text.find(name);
        return at == std::string::npos ? 0 : std::stod(text.substr(at + name.size()));
    }
    std::map<std::filesystem::path, std::shared_ptr<const ImageSource>> _sources;
};

/** Once a process, for the library keeps the bundle that it found. */
void registerResources() {
    static const bool once = [] {
        for (const auto* identifier : {ZRNHelmoBundleIdentifier, Bundle::platformIdentifier})
            Bundle::registerBundle(make<Bundle>(identifier, ZORNIC_RESOURCES));
        ImageLoader::install(std::make_shared<SizeOnlyImageLoader>());
        return true;
    }();
    static_cast<void>(once);
}

}  // namespace

void ScreenFixture::setUp(int uiMode, Size size, double scale) {
    registerResources();
    ArtworkCatalog::evictAll();
    library = make<FakeMediaLibrary>();
    MediaLibrary::setDefaultLibrary(library);
    defaults = make<FakeDefaults>();
    player = make<AVController>(make<ClockedPlaybackEngine>());
    screen = make<Screen>(size, scale);
    Screen::setCarScreen(screen);
    window = make<Window>(screen->bounds());
    setUIMode(uiMode);
    window->setScreen(screen);
    window->setWindowHidden(false);
}

void ScreenFixture::tearDown() {
    BackgroundWork::waitUntilIdle(std::chrono::seconds(5));
    window->setRootViewController(nullptr);
    window = nullptr;
    player = nullptr;
    Screen::setCarScreen(nullptr);
    MediaLibrary::setDefaultLibrary(nullptr);
}

void ScreenFixture::setUIMode(int uiMode) {
    screen->setIntegerCapability(ScreenCapability::InteractionModels,
                                 uiMode == 2 ? InteractionModel::Knob : InteractionModel::Touch);
    screen->setIntegerCapability(ScreenCapability::TouchLevels, uiMode == 1 ? 1 : 0);
    window->screenDidChange();
}

void ScreenFixture::show(const std::shared_ptr<ViewController>& controller) {
    window->setRootViewController(controller);
    advance(0);
}

void ScreenFixture::advance(double seconds) {
    const TimePoint end = clock.now() + toDuration(Seconds(seconds));
    runWhatIsDue();
    while (clock.now() < end) {
        auto next = std::min(end, loop.nextDue().value_or(end));
        if (loop.wantsFrames()) next = std::min(next, clock.now() + frameInterval);
        clock.moveTo(next);
        runWhatIsDue();
        if (loop.wantsFrames()) loop.fireFrame();
    }
    window->layoutIfNeeded();
}

void ScreenFixture::runWhatIsDue() {
    while (true) {
        BackgroundWork::waitUntilIdle(std::chrono::seconds(5));
        if (loop.nextDue().value_or(TimePoint::max()) > clock.now()) return;
        loop.runDue();
    }
}

void ScreenFixture::touchDown(const View& view) { window->touchDown(centerOf(view)); }

void ScreenFixture::tap(const View& view) {
    touchDown(view);
    touchUp(view);
    advance(0);
}

void ScreenFixture::pressKnob() {
    window->pressKnob(true);
    window->pressKnob(false);
    advance(0);
}

std::shared_ptr<MediaQuery> ScreenFixture::addSongs(const std::vector<std::string>& titles, Dictionary more) {
    more.emplace(MediaItemProperty::PlaybackDuration, 180.0);
    std::int64_t track = 0;
    for (const auto& title : titles) {
        more.insert_or_assign(MediaItemProperty::Location, "/music/" + title + ".flac");
        library->addSong(title, "Artist of " + title, "Album", ++track, more);
    }
    return MediaQuery::songsQuery();
}

void ScreenFixture::play(const std::shared_ptr<MediaQuery>& query, std::uint64_t index) {
    const auto context = make<QueryPlaybackContext>(query);
    context->setStartIndex(index);
    player->reloadWithPlaybackContext(context);
    advance(0);
}

}  // namespace zornic
