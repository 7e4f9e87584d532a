#include "Platform/Toolkit/Font.h"

#include "Platform/Toolkit/TextEngine.h"

namespace zornic {

double Font::ascender() const { return TextEngine::current().metrics(*this).ascent; }
double Font::descender() const { return -TextEngine::current().metrics(*this).descent; }
double Font::lineHeight() const { return TextEngine::current().metrics(*this).lineHeight; }
double Font::xHeight() const { return TextEngine::current().metrics(*this).xHeight; }

}  // namespace zornic
