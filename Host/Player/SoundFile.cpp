#include "Host/Player/SoundFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <gst/base/gsttypefindhelper.h>

#include "Host/Player/GstPointer.h"
#include "Platform/Foundation/TextTools.h"

namespace helmo {

namespace {

/** Enough for every format's signature behind a small tag. */
constexpr std::size_t inspectedBytes = 64 * 1024;

std::vector<char> beginningOf(const std::string& path) {
    std::vector<char> bytes(inspectedBytes);
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

}  // namespace

bool isAddress(const std::string& location) {
    return !location.starts_with('/') && gst_uri_is_valid(location.c_str());
}

std::string addressOf(const std::string& location) {
    if (location.empty()) return {};
    if (isAddress(location)) return location;
    const GstPointer<gchar> address(gst_filename_to_uri(location.c_str(), nullptr));
    return address ? address.get() : "";
}

std::string nameOf(const std::string& location) {
    if (location.find("://") != std::string::npos && !location.starts_with('/'))
        return zornic::validUtf8(location);
    const auto name = std::filesystem::path(location).filename().string();
    return zornic::validUtf8(name.empty() ? location : name);
}

std::string unreadableReason(const std::string& path) {
    std::error_code failure;
    const auto status = std::filesystem::status(path, failure);
    if (status.type() == std::filesystem::file_type::not_found) return "there is no such file";
    if (failure) return failure.message();
    if (std::filesystem::is_directory(status)) return "it is a folder";
    if (!std::filesystem::is_regular_file(status)) return "it is not a regular file";
    if (::access(path.c_str(), R_OK) != 0)
        return errno == EACCES ? "reading it is not permitted" : std::strerror(errno);
    if (std::filesystem::file_size(path, failure) == 0 && !failure) return "the file is empty";
    return {};
}

FileKind kindOfFile(const std::string& path) {
    const auto bytes = beginningOf(path);
    if (bytes.empty()) return FileKind::Unknown;
    const GstPointer<GstCaps> caps(gst_type_find_helper_for_data(
        nullptr, reinterpret_cast<const guint8*>(bytes.data()), bytes.size(), nullptr));
    if (!caps || gst_caps_is_empty(caps.get()) || gst_caps_is_any(caps.get())) return FileKind::Unknown;
    const std::string_view type = gst_structure_get_name(gst_caps_get_structure(caps.get(), 0));
    const auto isOneOf = [&](const auto& kinds) {
        return std::ranges::any_of(kinds, [&](const char* kind) { return type.starts_with(kind); });
    };
    // Containers that may hold sound; a tag hides the format behind it.
    if (isOneOf(
            std::array{"audio/", "video/", "application/ogg", "application/x-id3", "application/x-apetag"}))
        return FileKind::Sound;
    // Decoders take a picture for a film without sound and wait for it for ever.
    return isOneOf(std::array{"image/", "text/"}) ? FileKind::Other : FileKind::Unknown;
}

}  // namespace helmo
