/** The least that helmo's libraries hold once each has done something: texts of several scripts, a drawing,
   an order of names, a database and sound. Prints the resident megabytes. */
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

#include <SDL.h>
#include <gst/gst.h>
#include <librsvg/rsvg.h>
#include <pango/pangocairo.h>
#include <sqlite3.h>
#include <unicode/coll.h>

#include "Host/Display/CairoHandles.h"

using namespace helmo;

namespace {

constexpr int width = 800, height = 480;

void drawTexts(cairo_t* context) {
    const ObjectPointer<PangoLayout> layout(pango_cairo_create_layout(context));
    PangoFontDescription* const font = pango_font_description_from_string("Inter 17");
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_text(layout.get(), "Songs 雨の日の喫茶店 느린 오후 Снег над каналом حديقة الياسمين", -1);
    pango_cairo_show_layout(context, layout.get());
}

bool drawFile(cairo_t* context, const char* drawing) {
    const ObjectPointer<RsvgHandle> handle(rsvg_handle_new_from_file(drawing, nullptr));
    const RsvgRectangle area{0, 0, 24, 24};
    return handle && rsvg_handle_render_document(handle.get(), context, &area, nullptr);
}

bool compareNames() {
    UErrorCode problem = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> order(icu::Collator::createInstance("en", problem));
    return order && order->compare("Äther", "Zither", problem) == UCOL_LESS;
}

bool readDatabase() {
    sqlite3* database = nullptr;
    const bool isRead =
        sqlite3_open(":memory:", &database) == SQLITE_OK &&
        sqlite3_exec(database, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(database);
    return isRead;
}

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const Surface pixels(width, height);
    const auto context = makeContext(pixels);
    drawTexts(context.get());
    if (argumentCount != 2 || !drawFile(context.get(), arguments[1]) || !compareNames() || !readDatabase())
        return 1;
    gst_init(nullptr, nullptr);
    if (SDL_Init(0) != 0) return 1;  // no window: helmo is measured without one
    std::printf("%.1f\n", residentMegabytes());
}
