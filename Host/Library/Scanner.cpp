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

void Scanner::scan(const ScanScope& scope) {
    _wasStarted = true;
    request(scope);
}

void Scanner::request(const ScanScope& scope) {
    if (scope.isEmpty()) return;
    {
        std::lock_guard lock(_requestMutex);
        const bool isQueued = !_requested.isEmpty();
        _requested.add(scope);
        if (isQueued) return;
    }
    _queue.async([this] { run(); });  // the queue ends before this does
}

void Scanner::run() {
    standBack();
    ScanScope scope;
    {
        std::lock_guard lock(_requestMutex);
        scope = std::exchange(_requested, {});
    }
    if (_isStopping) return;
    request(
        LibraryScan(*_library, _roots, *_reader, _isStopping, _progressHandler, scope, _watch.get()).run());
}

}  // namespace helmo
