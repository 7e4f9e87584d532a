#include <cstdint>
#include <cstring>
#include <thread>

#include <SDL.h>

#include "Host/Display/SdlDisplay.h"
#include "Platform/Toolkit/Window.h"

namespace helmo {
namespace {

using zornic::Color;
using zornic::Rect;
using zornic::View;

std::uint32_t pixel(const DisplaySurface& surface, int x, int y) {
    std::uint32_t value;
    std::memcpy(&value, surface.pixels().pixels() + y * surface.pixels().stride() + x * 4, 4);
    return value;
}

/** A window of 100 x 50 points with a white view of 10 x 10 in it, on a screen. */
struct Stage {
    Stage() {
        window->setScreen(screen);
        window->addSubview(view);
        view->setBackgroundColor(Color::whiteColor());
        window->setWindowHidden(false);
        window->addDamage(window->bounds());
    }
    std::shared_ptr<zornic::Screen> screen = zornic::make<zornic::Screen>(zornic::Size{100, 50}, 1.5);
    std::shared_ptr<zornic::Window> window = zornic::make<zornic::Window>(Rect(0, 0, 100, 50));
    std::shared_ptr<View> view = zornic::make<View>(Rect(20, 10, 10, 10));
};

TEST(DisplaySurfaceTest, AFramePaintsTheDamageAndNothingElse) {
    const zornic::SystemClock clock{};
    const zornic::RunLoop loop(clock);
    Stage stage;
    DisplaySurface surface({100, 50}, 1.5);
    EXPECT_EQ(surface.pixels().width(), 150);
    ASSERT_FALSE(surface.render(*stage.window).empty());
    EXPECT_EQ(pixel(surface, 37, 22), 0xFFFFFFFF);
    EXPECT_NE(pixel(surface, 50, 22), 0xFFFFFFFF);
    EXPECT_TRUE(surface.render(*stage.window).empty()) << "nothing changed";

    stage.view->setBackgroundColor(Color::rgb(0x3CC9BC));
    const auto drawn = surface.render(*stage.window);
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_LE(drawn[0].width * drawn[0].height, 17 * 17);
    EXPECT_EQ(pixel(surface, 37, 22), 0xFF3CC9BC);
    EXPECT_EQ(surface.statistics().take().count, 2U);
    EXPECT_EQ(surface.statistics().take().count, 0U);
    EXPECT_NE(surface.writePng("/nowhere/picture.png"), "");
}

/** SDL without a screen. */
class SdlDisplayTest : public testing::Test {
protected:
    void SetUp() override {
        SDL_setenv("SDL_VIDEODRIVER", "dummy", 1);
        ASSERT_EQ(display.open(), "");
        display.show(stage.window);
    }
    static void push(SDL_Event event) { SDL_PushEvent(&event); }
    static void pushButton(Uint32 type, int x, int y) {
        SDL_Event event{};
        event.type = type;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.x = x;
        event.button.y = y;
        push(event);
    }
    static void pushKey(SDL_Keycode key) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = key;
        push(event);
    }
    /** Runs for some tens of milliseconds. */
    void runAWhile() {
        const auto end = loop.after(std::chrono::milliseconds(60), [this] { display.quit(); });
        display.run();
    }

    const zornic::SystemClock clock{};
    zornic::RunLoop loop{clock};
    Stage stage;
    SdlDisplay display{loop, {{100, 50}, 1.5, false, {}}};
};

TEST_F(SdlDisplayTest, DrawsOnceAndThenRests) {
    int firstFrames = 0;
    display.onFirstFrame = [&] { ++firstFrames; };
    runAWhile();
    EXPECT_EQ(firstFrames, 1);
    EXPECT_GE(display.surface().statistics().take().count, 1U);
    runAWhile();
    EXPECT_EQ(display.surface().statistics().take().count, 0U) << "an idle display draws nothing";
    // A block from another thread is run, and what it changed is shown.
    std::thread([this] {
        loop.async([this] { stage.view->setBackgroundColor(Color::rgb(0x3CC9BC)); });
    }).join();
    runAWhile();
    EXPECT_EQ(display.surface().statistics().take().count, 1U);
    EXPECT_EQ(pixel(display.surface(), 37, 22), 0xFF3CC9BC);
}

TEST_F(SdlDisplayTest, HandsOnTheDriversTouchesAndKeys) {
    struct Touched : View {
        using View::View;
        void touchBegan(const zornic::Touch&) override { ++began; }
        int began = 0;
    };
    const auto view = zornic::make<Touched>(Rect(40, 10, 10, 10));
    const auto root = zornic::make<zornic::ViewController>();
    root->view()->addSubview(view);
    stage.window->setRootViewController(root);
    std::vector<MediaKey> keys;
    bool quit = false;
    display.onMediaKey = [&](MediaKey key) { keys.push_back(key); };
    display.onQuit = [&] { quit = true; };
    pushButton(SDL_MOUSEBUTTONDOWN, 66, 22);  // in pixels
    pushButton(SDL_MOUSEBUTTONUP, 66, 22);
    pushKey(SDLK_AUDIONEXT);
    pushKey(SDLK_AUDIOPLAY);
    SDL_Event event{};
    event.type = SDL_QUIT;
    push(event);
    runAWhile();
    EXPECT_EQ(view->began, 1);
    EXPECT_EQ(keys, (std::vector{MediaKey::Next, MediaKey::PlayPause}));
    EXPECT_TRUE(quit);
}

}  // namespace
}  // namespace helmo
