#pragma once

#include <future>
#include <map>

#include "Host/Display/PangoTextLayout.h"
#include "Platform/Foundation/EvictingCache.h"

typedef struct _PangoContext PangoContext;
typedef struct _PangoFontDescription PangoFontDescription;

namespace helmo {

/** Lays out text with Pango in one family, with figures of equal width. Layouts don't depend on the scale
   that they are drawn at. Main thread. */
class PangoTextEngine final : public zornic::TextEngine {
public:
    /** No text is longer than this, in code points, once it is laid out: far more than any display shows. */
    static constexpr std::size_t maxLength = 4096;

    /** Returns at once: the system's fonts are read, and those that every screen shows opened, on another
       thread, which the first text waits for. */
    PangoTextEngine();
    ~PangoTextEngine() override;

    /** Lines stand within `maxWidth` by the request's alignment; a text without a limit in width within its
       longest line. Empty text has no lines and no size. */
    std::shared_ptr<const zornic::TextLayout> layout(const zornic::TextRequest& request) override;
    zornic::FontMetrics metrics(const zornic::Font& font) override;

    /** Opens the font of one more script, which takes some milliseconds, so that the first title in it
       doesn't halt a scrolling list. For the time after the first frame. False when all are open. */
    bool prepareNextFallback();
    /** The family in use. Says so once on stderr where the usual one is missing; then it is the system's
       sans. */
    const std::string& family();

private:
    struct RequestHash {
        std::size_t operator()(const zornic::TextRequest& request) const;
    };
    struct FontOrder {
        bool operator()(const zornic::Font& a, const zornic::Font& b) const {
            return std::pair(a.size, a.weight) < std::pair(b.size, b.weight);
        }
    };
    using Layout = std::shared_ptr<const PangoTextLayout>;

    void openFonts();
    /** Nobody uses Pango on another thread any more. */
    void waitForFonts();
    zornic::FontMetrics knownMetrics(const zornic::Font& font);
    Layout keptLayout(const zornic::TextRequest& request);
    Layout makeLayout(const zornic::TextRequest& request);
    zornic::FontMetrics measured(const zornic::Font& font);
    zornic::FontMetrics metricsOf(const zornic::TextRequest& request);
    PangoFontDescription* description(const zornic::Font& font) const;
    void setAttributes(_PangoLayout* layout, const zornic::TextRequest& request) const;

    ObjectPointer<PangoContext> _context;
    std::string _family;
    std::map<zornic::Font, zornic::FontMetrics, FontOrder> _metrics;
    zornic::EvictingCache<zornic::TextRequest, Layout, RequestHash> _layouts;
    std::future<void> _opening;
    std::size_t _preparedFallbacks = 0;
};

}  // namespace helmo
