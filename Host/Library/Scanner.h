#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

#include "Host/Library/LibraryScan.h"
#include "Platform/Foundation/DispatchQueue.h"

namespace helmo {

/** Keeps a library in step with folders of music, in the background. Main thread. */
class Scanner {
public:
    Scanner(std::shared_ptr<SqliteMediaLibrary> library, std::vector<std::filesystem::path> roots,
            std::shared_ptr<TagReader> reader);
    /** The folders that it scans, as a watch of them has to name them. */
    const std::vector<std::filesystem::path>& roots() const { return _roots; }
    /** Hears of what changes in the folders from the first scan on. Before `start`. */
    void setWatch(std::shared_ptr<FolderWatch> watch) { _watch = std::move(watch); }
    Scanner(const Scanner&) = delete;
    Scanner& operator=(const Scanner&) = delete;
    /** Stops a scan between two files and waits for that. */
    ~Scanner();

    /** Called on the scanning thread, after each batch and at the end. Before `start`. */
    void setProgressHandler(std::function<void(const ScanProgress&)> handler) {
        _progressHandler = std::move(handler);
    }
    /** Scans all folders, in order, unless a scan was already asked for. */
    void start();
    /** Scans again; several requests during a scan make one more. */
    void rescan() { scan(ScanScope::everything()); }
    /** Scans some folders again. */
    void scan(const ScanScope& scope);

private:
    void request(const ScanScope& scope);
    void run();

    const std::shared_ptr<SqliteMediaLibrary> _library;
    const std::vector<std::filesystem::path> _roots;
    const std::shared_ptr<TagReader> _reader;
    std::function<void(const ScanProgress&)> _progressHandler;
    std::atomic<bool> _isStopping{false};
    std::shared_ptr<FolderWatch> _watch;
    std::mutex _requestMutex;
    /** What is to be scanned next; a scan is queued unless it is empty. */
    ScanScope _requested;
    bool _wasStarted = false;
    /** Last: ends first. */
    zornic::SerialQueue _queue{"helmo.library.scan", zornic::QueuePriority::Background};
};

}  // namespace helmo
