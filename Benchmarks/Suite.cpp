#include "Benchmarks/Suite.h"

namespace helmo::benchmarks {

const std::vector<Benchmark>& allBenchmarks() {
    static const std::vector<Benchmark> benchmarks{
        {{"songs_1m_open", "songs_1m_jump", "songs_1m_cells"}, measureMillionSongs},
        {{"songs_1m_rss_mb"}, measureMillionSongsMemory},
        {{"frame_songs", "frame_now_playing", "tick_now_playing"}, measureFrames},
        {{"idle_frames", "idle_wakeups"}, measureIdle},
        {{"start"}, measureStart},
        {{"scan_rate", "scan_first_rows_ms", "scan_frame_ms", "rescan"}, measureScan},
    };
    return benchmarks;
}

}  // namespace helmo::benchmarks
