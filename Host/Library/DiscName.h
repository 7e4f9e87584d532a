#pragma once

#include <string>
#include <string_view>

namespace helmo {

/** The disc that a folder or a title is called after. */
struct DiscName {
    /** 0 when the name is none of a disc. */
    int disc = 0;
    /** What is left of the name without the disc; empty for "CD 2". The whole name when it is none of a
       disc. */
    std::string album;

    /** Of a folder: "CD 2", "Disc1", "Vol. 3", "Nightfall CD2", "Nightfall (Disc 1 of 2)". */
    static DiscName ofFolder(std::string_view name);
    /** Of an album's title, where only a disc in brackets is surely no part of it: "Nightfall (Disc 1)". */
    static DiscName ofTitle(std::string_view title);
};

}  // namespace helmo
