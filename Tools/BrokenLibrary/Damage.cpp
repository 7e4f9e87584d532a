#include "Tools/BrokenLibrary/Damage.h"

#include "Tools/BrokenLibrary/Bytes.h"
#include "Tools/BrokenLibrary/HostileTags.h"

namespace helmo::broken {

namespace {

using namespace std::string_literals;
using demo::Random;

using Make = std::function<std::string(const Samples&, Random&, const std::string&)>;

std::string noise(Random& random, std::size_t size) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random.next());
    return bytes;
}

/** Always the same. */
Make fixed(std::string bytes) {
    return [bytes = std::move(bytes)](const Samples&, Random&, const std::string&) { return bytes; };
}

/** The beginning of a sample, up to `least` + `spread` bytes. */
Make beginning(std::string extension, std::size_t least, std::size_t spread) {
    return [=](const Samples& samples, Random& random, const std::string&) {
        return samples.of(extension).substr(0, least + random.below(spread + 1));
    };
}

/** A format's first bytes with rubbish behind. */
Make rubbishBehind(std::string beginning) {
    return [beginning = std::move(beginning)](const Samples&, Random& random, const std::string&) {
        return beginning + noise(random, 2000);
    };
}

/** Sound with an ID3v2 tag before it. */
Make tagged(std::function<std::string(Random&, const std::string& title)> tag) {
    return [tag = std::move(tag)](const Samples& samples, Random& random, const std::string& title) {
        return tag(random, title) + samples.of("mp3");
    };
}

/** The same, of a tag whose frames are the title's and others. */
Make withFrames(std::function<std::string(Random&)> frames) {
    return tagged([frames = std::move(frames)](Random& random, const std::string& title) {
        return id3Tag(id3Text("TIT2", title) + frames(random));
    });
}

/** A sample with bytes written over those behind a mark inside. */
Make overwritten(std::string extension, std::string mark, std::size_t behind, std::string bytes) {
    return [=](const Samples& samples, Random&, const std::string&) {
        const std::string& sample = samples.of(extension);
        return patched(sample, sample.find(mark) + behind, bytes);
    };
}

/** The head of a PNG that claims to be 60,000 pixels wide and high. */
std::string vastPng() {
    return "\x89PNG\r\n\x1a\n"s + bigEndian(13, 4) + "IHDR" + bigEndian(60000, 4) + bigEndian(60000, 4) +
           "\x08\x06\0\0\0"s + std::string(64, '\x7f') + "IEND";
}

std::vector<Damage> noMusic() {
    return {
        {"empty", "mp3", Outcome::LeftOut, fixed("")},
        {"empty flac", "flac", Outcome::LeftOut, fixed("")},
        {"random bytes", "ogg", Outcome::LeftOut, rubbishBehind("")},
        {"zeros", "mp3", Outcome::LeftOut, fixed(std::string(20'000, '\0'))},
        {"web page", "mp3", Outcome::LeftOut,
         fixed("<!DOCTYPE html><html><body>404 Not Found</body></html>\n")},
        {"picture", "flac", Outcome::LeftOut, fixed(vastPng())},
        {"cut in the first bytes", "m4a", Outcome::LeftOut, beginning("m4a", 4, 20)},
        {"cut in the header", "flac", Outcome::LeftOut, beginning("flac", 4, 20)},
        {"cut behind the first page", "ogg", Outcome::LeftOut, beginning("ogg", 40, 15)},
        {"cut before the samples", "wav", Outcome::LeftOut, beginning("wav", 12, 20)},
        {"tag without sound", "mp3", Outcome::LeftOut,
         [](const Samples&, Random&, const std::string& title) { return id3Tag(id3Text("TIT2", title)); }},
        {"opus head alone", "opus", Outcome::LeftOut, beginning("opus", 47, 0)},
        {"rubbish named wv", "wv", Outcome::LeftOut, rubbishBehind("wvpk")},
        {"rubbish named ape", "ape", Outcome::LeftOut, rubbishBehind("MAC ")},
        {"rubbish named wma", "wma", Outcome::LeftOut,
         rubbishBehind("\x30\x26\xb2\x75\x8e\x66\xcf\x11\xa6\xd9\0\xaa\0\x62\xce\x6c"s)},
        {"rubbish named aiff", "aiff", Outcome::LeftOut,
         rubbishBehind("FORM\x7f\xff\xff\xff"
                       "AIFF")},
        {"atom without end", "m4a", Outcome::LeftOut,
         fixed("\0\0\0\x14"
               "ftypM4A \0\0\0\0M4A \xff\xff\xff\xff"
               "moov"s +
               std::string(100, '\0'))},
        {"atoms inside atoms", "m4a", Outcome::LeftOut,
         [](const Samples&, Random&, const std::string&) {
             std::string atoms;
             for (int depth = 0; depth < 20'000; ++depth)
                 atoms = bigEndian(8 * (depth + 1), 4) + "moov" + atoms;
             return "\0\0\0\x14"
                    "ftypM4A \0\0\0\0M4A "s +
                    atoms;
         }},
        {"no channels", "wav", Outcome::LeftOut, overwritten("wav", "fmt ", 10, "\0\0\0\0\0\0"s)},
    };
}

std::vector<Damage> hostileTags() {
    return {
        {"frame of two gigabytes", "mp3", Outcome::KeptWithLine,
         withFrames([](Random&) { return id3Frame("TPE1", "\0Artist"s, 0x7fffffff); })},
        {"tag longer than the file", "mp3", Outcome::LeftOut, tagged([](Random&, const std::string& title) {
             return id3Tag(id3Text("TIT2", title), 0x0fffffff);
         })},
        {"title of 100,000 characters", "mp3", Outcome::KeptWithLine,
         tagged([](Random&, const std::string& title) {
             return id3Tag(id3Text("TIT2", title + ' ' + std::string(100'000, 'x')));
         })},
        {"title that is no UTF-8", "mp3", Outcome::KeptWithLine,
         tagged([](Random&, const std::string& title) {
             return id3Tag(id3Text("TIT2", title + " \xc3\x28 \xff\xfe\xfa", 3), -1, 4);
         })},
        {"half a UTF-16 character", "mp3", Outcome::Kept, withFrames([](Random&) {
             return id3Text("TPE1",
                            "\xff\xfe"
                            "A\0r\0t\0\x3d"s,
                            1) +
                    id3Text("TALB", "\0\xd8\0\xd8"s, 1);
         })},
        {"numbers that are none", "mp3", Outcome::KeptWithLine, withFrames([](Random&) {
             return id3Text("TRCK", "seven/none") + id3Text("TPOS", "-3/0") + id3Text("TYER", "19x4");
         })},
        {"numbers beyond all numbers", "mp3", Outcome::KeptWithLine, withFrames([](Random&) {
             return id3Text("TRCK", "99999999999999999999999/2147483648") + id3Text("TYER", "4294967299");
         })},
        {"control characters", "mp3", Outcome::KeptWithLine,
         withFrames([](Random&) { return id3Text("TPE1", "Art\x01\x1b[31mist\r\n\tof\x7f the night"); })},
        {"picture of rubbish", "mp3", Outcome::KeptWithLine,
         withFrames([](Random& random) { return id3Picture(noise(random, 4000)); })},
        {"picture that breaks off", "mp3", Outcome::Kept, withFrames([](Random& random) {
             return id3Picture("\xff\xd8\xff\xe0\0\x10JFIF\0"s + noise(random, 500));
         })},
        {"picture 60,000 pixels wide", "mp3", Outcome::Kept,
         withFrames([](Random&) { return id3Picture(vastPng()); })},
        {"twenty thousand frames", "mp3", Outcome::Kept, withFrames([](Random&) {
             std::string frames;
             for (int i = 0; i < 20'000; ++i) frames += id3Text("TXXX", "a\0b"s);
             return frames;
         })},
        {"tags that contradict each other", "mp3", Outcome::Kept,
         [](const Samples& samples, Random&, const std::string& title) {
             return id3Tag(id3Text("TIT2", title)) + samples.of("mp3") + apeTag("", 0xffffffff) + "TAG" +
                    std::string(125, '\xff');
         }},
        {"comments without number", "flac", Outcome::Kept,
         [](const Samples& samples, Random&, const std::string& title) {
             return withFlacBlock(samples.of("flac"), 4, vorbisComments({{"TITLE", title}}, 0xffffffff));
         }},
        {"comment past its block", "flac", Outcome::Kept,
         [](const Samples& samples, Random&, const std::string& title) {
             auto block = vorbisComments({{"TITLE", title}, {"ARTIST", "x"}});
             return withFlacBlock(samples.of("flac"), 4,
                                  patched(block, block.size() - 12, littleEndian(0x7fffffff, 4)));
         }},
        {"picture block past the file", "flac", Outcome::LeftOut,
         [](const Samples& samples, Random&, const std::string&) {
             return withFlacBlock(samples.of("flac").substr(0, 60), 6, "short", 0xffffff);
         }},
        {"samples past the file", "wav", Outcome::KeptWithLine,
         overwritten("wav", "data", 4, "\xff\xff\xff\xff")},
    };
}

}  // namespace

std::string_view nameOf(Outcome outcome) {
    switch (outcome) {
        case Outcome::LeftOut:
            return "left out";
        case Outcome::KeptWithLine:
            return "kept with a line";
        case Outcome::Kept:
            break;
    }
    return "kept";
}

const std::vector<Damage>& allDamages() {
    static const std::vector<Damage> damages = [] {
        auto all = noMusic();
        for (auto& damage : hostileTags()) all.push_back(std::move(damage));
        return all;
    }();
    return damages;
}

std::string goodFile(const Samples& samples, std::string_view extension, const std::string& title) {
    const std::string& sample = samples.of(extension);
    if (extension == "mp3") return id3Tag(id3Text("TIT2", title)) + sample;
    if (extension == "flac") return withFlacBlock(sample, 4, vorbisComments({{"TITLE", title}}));
    return sample;
}

}  // namespace helmo::broken
