#include "Host/Library/LeadArtist.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

#include "Host/Library/SortKey.h"

namespace helmo {

namespace {

/** In lower case, as all these are. */
constexpr std::string_view guestMarks[] = {"feat. ", "feat ", "ft. ", "ft ", "featuring "};
constexpr std::string_view joints[] = {", ",    " & ",  " and ", " und ", " et ", " e ", " y ",    " x ",
                                       " vs. ", " vs ", " + ",   "; ",    "/",    " / ", " with ", " mit "};

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return lower;
}

/** Up to " feat. ...", in brackets or not. */
std::string withoutGuests(const std::string& artist) {
    const std::string lower = lowered(artist);
    std::size_t end = artist.size();
    for (const std::string_view mark : guestMarks)
        for (auto at = lower.find(mark); at != std::string::npos; at = lower.find(mark, at + 1))
            if (at > 1 && std::string_view(" ([").find(lower[at - 1]) != std::string_view::npos) {
                end = std::min(end, at);
                break;
            }
    const auto last = artist.find_last_not_of(" ([,;", end == 0 ? 0 : end - 1);
    return end == artist.size() || last == std::string::npos ? artist : artist.substr(0, last + 1);
}

bool isJoined(const std::string& folded, const std::string& first) {
    if (first.size() >= folded.size() || !folded.starts_with(first)) return false;
    const std::string_view behind = std::string_view(folded).substr(first.size());
    return std::ranges::any_of(joints, [&](std::string_view joint) { return behind.starts_with(joint); });
}

}  // namespace

std::vector<LeadArtist> LeadArtist::of(const std::vector<std::string>& artists) {
    std::map<std::string, LeadArtist> known;
    for (const std::string& artist : artists) {
        if (known.contains(artist)) continue;
        const std::string name = withoutGuests(artist);
        known[artist] = {name, SortKey::folded(name)};
    }
    std::map<std::string, std::string> names;
    for (const std::string& artist : artists) names.emplace(known[artist].folded, known[artist].name);
    std::vector<LeadArtist> leads;
    for (const std::string& artist : artists) {
        const LeadArtist& whole = known[artist];
        // The shortest comes first.
        const auto first = std::ranges::find_if(names, [&](const auto& other) {
            return !other.first.empty() && isJoined(whole.folded, other.first);
        });
        leads.push_back(first == names.end() ? whole : LeadArtist{first->second, first->first});
    }
    return leads;
}

}  // namespace helmo
