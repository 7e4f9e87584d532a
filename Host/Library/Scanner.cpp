#include "Host/Library/Scanner.h"

#include "Host/Library/ThreadPriority.h"

namespace helmo {

namespace {

std::vector<std::filesystem::path> normalized(const std::vector<std::filesystem::path>& roots) {
    std::vector<std::filesystem::path> result;
    for (const auto& root : roots) {
        std::error_code error;
        auto path = std::filesystem::absolute(root, error).lexically_normal();
        if (!path.has_filename() && path.has_relative_path())
            path = path.parent_path();  // a slash at the end
        result.push_back(std::move(path));
    }
    return result;
}

}  // namespace

Scanner::Scanner(std::shared_ptr<SqliteMediaLibrary> library, std::vector<std::filesystem::path> roots,
                 std::shared_ptr<TagReader> reader)
    : _library(std::move(library)), _roots(normalized(roots)), _reader(std::move(reader)) {}

Scanner::~Scanner() { _isStopping = true; }

void Scanner::start() {
    if (!_wasStarted) rescan();
}

void Scanner::rescan() {
    _wasStarted = true;
    if (_isQueued.exchange(true)) return;
    _queue.async([this] {  // the queue ends before this does
        standBack();
        _isQueued = false;
        if (!_isStopping) LibraryScan(*_library, _roots, *_reader, _isStopping, _progressHandler).run();
    });
}

}  // namespace helmo
