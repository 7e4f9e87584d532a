#include "Benchmarks/Suite.h"

namespace helmo::benchmarks {

const std::vector<Benchmark>& allBenchmarks() {
    static const std::vector<Benchmark> benchmarks = [] {
        std::vector<Benchmark> all{
            {{"songs_1m_open", "songs_1m_jump", "songs_1m_cells"}, measureMillionSongs},
            {{"songs_1m_rss_mb", "rss_1m_mb", "rss_10k_mb"}, measureMemory},
            {{"update_1m", "update_1m_frame_ms"}, measureUpdate},
            {{"fling_artwork"}, measureFling},
            {{"frame_songs", "frame_now_playing", "tick_now_playing"}, measureFrames},
            {{"idle_frames", "idle_wakeups"}, measureIdle},
            {{"start"}, measureStart},
            {{"scan_rate", "scan_first_rows_ms", "scan_frame_ms", "rescan"}, measureScan},
            {{"scan_100k_rate", "scan_100k_rss_mb"}, measureLargeScan},
        };
        const auto open = openBenchmarks();
        all.insert(all.begin() + 2, open.begin(), open.end());
        return all;
    }();
    return benchmarks;
}

}  // namespace helmo::benchmarks
