#pragma once

#include "Tools/DemoLibrary/Catalogue.h"
#include "Tools/DemoLibrary/CoverBrush.h"

namespace helmo::demo {

/** The pictures, one a motif. */
class CoverMotifs : private CoverBrush {
public:
    CoverMotifs(cairo_t* context, const Cover& cover)
        : CoverBrush(context, cover.colors), _motif(cover.motif) {}

    void paint();

private:
    void harbour();
    void reeds();
    void swallows();
    void rails();
    void bay();
    void tram();
    void rain();
    void moon();
    void star();
    void keys();
    void rings();
    void road();
    void firs();
    void orchard();

    void swallow(double x, double y, double size, double angle);
    void fir(double x, double foot, double height);

    Motif _motif;
};

}  // namespace helmo::demo
