/** The least that a program with a window does: opens one, and shows a text in it. */
#include <SDL.h>
#include <pango/pangocairo.h>

#include "Host/Display/CairoHandles.h"

using namespace helmo;

namespace {

constexpr int width = 800, height = 480;

void drawText(const Surface& pixels) {
    const auto context = makeContext(pixels);
    const ObjectPointer<PangoLayout> layout(pango_cairo_create_layout(context.get()));
    PangoFontDescription* const font = pango_font_description_from_string("Inter 17");
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_text(layout.get(), "Songs", -1);
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    pango_cairo_show_layout(context.get(), layout.get());
}

}  // namespace

int main() {
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return 1;
    SDL_Window* const window = SDL_CreateWindow("start", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                                width, height, SDL_WINDOW_RESIZABLE);
    SDL_Surface* const target = window ? SDL_GetWindowSurface(window) : nullptr;
    if (!target) return 1;
    const Surface pixels(width, height);
    drawText(pixels);
    SDL_Surface* const source = SDL_CreateRGBSurfaceWithFormatFrom(
        pixels.pixels(), width, height, 32, static_cast<int>(pixels.stride()), SDL_PIXELFORMAT_RGB888);
    SDL_BlitSurface(source, nullptr, target, nullptr);
    SDL_UpdateWindowSurface(window);
    SDL_FreeSurface(source);
    SDL_DestroyWindow(window);
    SDL_Quit();
    return 0;
}
