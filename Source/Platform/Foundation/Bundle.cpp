#include "Platform/Foundation/Bundle.h"

#include <algorithm>
#include <fstream>
#include <iostream>

namespace zornic {

namespace {

constexpr std::uintmax_t largestTable = 4 << 20;  // bytes; the longest of ours is far below

struct Known {
    std::mutex mutex;
    std::map<std::string, std::shared_ptr<Bundle>> bundles;
    std::shared_ptr<const std::vector<std::string>> languages =
        std::make_shared<std::vector<std::string>>(1, "en");
};

Known& known() {
    static auto& all = *new Known;
    return all;
}

/** Whether `name` is a file's name and leads nowhere else. */
bool isPlainName(std::string_view name) {
    const auto isPathLike = [](char letter) { return letter == '/' || letter == '\\' || letter == '\0'; };
    return !name.empty() && name.find("..") == std::string_view::npos &&
           std::ranges::none_of(name, isPathLike);
}

/** "zh-Hant-TW", "zh-Hant", "zh". */
void appendWithFallbacks(std::vector<std::string>& languages, std::string language) {
    std::ranges::replace(language, '_', '-');
    while (isPlainName(language)) {
        if (std::ranges::find(languages, language) == languages.end()) languages.push_back(language);
        const auto region = language.rfind('-');
        if (region == std::string::npos) return;
        language.resize(region);
    }
}

void complain(const std::filesystem::path& file, std::size_t line, const std::string& message) {
    const auto place = line > 0 ? file.string() + ":" + std::to_string(line) : file.string();
    std::cerr << place + ": " + message + "\n";
}

/** The file's text; none, after a complaint if the file is there, when it can't be read. */
std::optional<std::string> contents(const std::filesystem::path& file) {
    std::error_code failure;
    if (!std::filesystem::exists(file, failure) && !failure) return std::nullopt;
    if (std::filesystem::is_regular_file(file, failure)) {
        const auto size = std::filesystem::file_size(file, failure);
        std::string text(failure || size > largestTable ? 0 : static_cast<std::size_t>(size), '\0');
        std::ifstream stream(file, std::ios::binary);
        if (!failure && size <= largestTable &&
            stream.read(text.data(), static_cast<std::streamsize>(text.size())))
            return text;
    }
    complain(file, 0, "the texts can't be read");
    return std::nullopt;
}

}  // namespace

Bundle::Bundle(std::string identifier, std::filesystem::path folder)
    : _identifier(std::move(identifier)), _folder(std::move(folder)) {}

void Bundle::registerBundle(const std::shared_ptr<Bundle>& bundle) {
    std::lock_guard lock(known().mutex);
    known().bundles[bundle->identifier()] = bundle;
}

std::shared_ptr<Bundle> Bundle::bundleWithIdentifier(const std::string& identifier) {
    std::lock_guard lock(known().mutex);
    const auto found = known().bundles.find(identifier);
    return found == known().bundles.end() ? nullptr : found->second;
}

std::shared_ptr<Bundle> Bundle::platformBundle() { return bundleWithIdentifier(platformIdentifier); }

void Bundle::setPreferredLanguages(std::vector<std::string> languages) {
    std::vector<std::string> asked;
    for (auto& language : languages) appendWithFallbacks(asked, std::move(language));
    appendWithFallbacks(asked, "en");
    auto kept = std::make_shared<const std::vector<std::string>>(std::move(asked));
    std::lock_guard lock(known().mutex);
    known().languages = std::move(kept);
}

std::string Bundle::localizedString(std::string_view key, std::string_view fallback,
                                    const std::string& table) const {
    std::shared_ptr<const std::vector<std::string>> languages;
    {
        std::lock_guard lock(known().mutex);
        languages = known().languages;
    }
    std::lock_guard lock(_mutex);
    for (const auto& language : *languages)
        if (const auto* text = this->table(language, table).textForKey(key)) return *text;
    return std::string(fallback);
}

const StringTable& Bundle::table(const std::string& language, const std::string& name) const {
    const auto [entry, isNew] = _tables.try_emplace(language + "/" + name);
    if (!isNew || !isPlainName(name)) return entry->second;
    const auto file = _folder / language / (name + ".strings");
    const auto text = contents(file);
    if (!text) return entry->second;
    std::vector<StringTable::Problem> problems;
    entry->second = StringTable::parse(*text, problems);
    for (const auto& [line, message] : problems) complain(file, line, message);
    return entry->second;
}

std::optional<std::filesystem::path> Bundle::pathForImage(const std::string& name) const {
    if (!isPlainName(name)) return std::nullopt;
    auto file = _folder / "Images" / (name + ".svg");
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure)) return std::nullopt;
    return file;
}

}  // namespace zornic
