#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace helmo::broken {

/** An ID3v2.3 frame whose header says `size`, or what its content has. */
std::string id3Frame(std::string_view name, std::string_view content, std::int64_t size = -1);
/** A text frame; `encoding` is 0 for Latin-1, 1 for UTF-16 with a mark, 3 for UTF-8 (of version 2.4). */
std::string id3Text(std::string_view name, std::string_view text, char encoding = 0);
/** An embedded front cover. */
std::string id3Picture(std::string_view bytes);
/** An ID3v2 tag of frames, whose header says `size`, or what the frames have. */
std::string id3Tag(std::string_view frames, std::int64_t size = -1, char version = 3, char flags = 0);

using Comments = std::vector<std::pair<std::string, std::string>>;
/** A block of Vorbis comments that says it has `count` of them, or as many as there are. */
std::string vorbisComments(const Comments& comments, std::int64_t count = -1);
/** A FLAC file with a metadata block of `type` put behind its first; the block's header says `size`, or what
   the block has. */
std::string withFlacBlock(const std::string& flac, int type, std::string_view block, std::int64_t size = -1);
/** An APE tag as it stands at a file's end, whose footer says so many items. */
std::string apeTag(std::string_view items, std::uint32_t count);

}  // namespace helmo::broken
