#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace helmo::broken {

/** A file of a second of sound without tags. */
struct Sample {
    /** Extension without a dot. */
    std::string extension;
    std::string bytes;
};

/** One sample for each format that the installed encoders can write, and wav always. */
class Samples {
public:
    /** Encodes them by way of files in `scratch`; throws std::runtime_error. */
    explicit Samples(const std::filesystem::path& scratch);
    const std::vector<Sample>& all() const { return _all; }
    /** Throws std::runtime_error when its encoder is missing. */
    const std::string& of(std::string_view extension) const;

private:
    std::vector<Sample> _all;
};

}  // namespace helmo::broken
