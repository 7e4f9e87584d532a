#include "Tools/DemoLibrary/AudioEncoder.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

#include <gst/app/gstappsrc.h>
#include <gst/gst.h>

#include "Tools/DemoLibrary/StereoBuffer.h"

namespace helmo::demo {

namespace {

struct Recipe {
    std::string_view extension;
    std::vector<std::string> elements;  // encoder to container, with their settings
};

const Recipe& recipeOf(Format format) {
    static const Recipe flac{"flac", {"flacenc quality=6"}};
    static const Recipe vorbis{"ogg", {"vorbisenc quality=0.3", "oggmux"}};
    static const Recipe opus{"opus", {"opusenc bitrate=80000 complexity=6", "oggmux"}};
    static const Recipe mp3{"mp3", {"lamemp3enc target=quality quality=5", "xingmux"}};
    static const Recipe m4a{"m4a", {"avenc_aac bitrate=112000 aac-coder=fast", "aacparse", "mp4mux"}};
    static const Recipe wav{"wav", {"wavenc"}};
    switch (format) {
        case Format::Flac:
            return flac;
        case Format::Vorbis:
            return vorbis;
        case Format::Opus:
            return opus;
        case Format::Mp3:
            return mp3;
        case Format::M4a:
            return m4a;
        case Format::Wav:
            return wav;
    }
    return wav;
}

struct GstDeleter {
    void operator()(void* object) const { gst_object_unref(object); }
    void operator()(GstMessage* message) const { gst_message_unref(message); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(char* text) const { g_free(text); }
};
template <typename T>
using Owned = std::unique_ptr<T, GstDeleter>;

std::string messageOf(GstMessage* message) {
    GError* error = nullptr;
    char* details = nullptr;
    gst_message_parse_error(message, &error, &details);
    const Owned<GError> ownedError(error);
    const Owned<char> ownedDetails(details);
    return error->message;
}

/** A pipeline from samples in memory to a file, stopped when it goes. */
class Pipeline {
public:
    Pipeline(const Recipe& recipe, const std::filesystem::path& file) {
        std::string description = "appsrc name=source format=time ! audioconvert ! audioresample";
        for (const std::string& element : recipe.elements) description += " ! " + element;
        description += " ! filesink name=sink";
        GError* error = nullptr;
        _pipeline.reset(gst_parse_launch(description.c_str(), &error));
        const Owned<GError> ownedError(error);
        if (!_pipeline || error) throw std::runtime_error(error ? error->message : "no pipeline");
        const Owned<GstElement> sink(gst_bin_get_by_name(GST_BIN(_pipeline.get()), "sink"));
        g_object_set(sink.get(), "location", file.c_str(), "sync", FALSE, nullptr);
        _source.reset(gst_bin_get_by_name(GST_BIN(_pipeline.get()), "source"));
        const Owned<GstCaps> caps(gst_caps_new_simple(
            "audio/x-raw", "format", G_TYPE_STRING, "S16LE", "layout", G_TYPE_STRING, "interleaved", "rate",
            G_TYPE_INT, sampleRate, "channels", G_TYPE_INT, 2, nullptr));
        gst_app_src_set_caps(GST_APP_SRC(_source.get()), caps.get());
    }
    ~Pipeline() { gst_element_set_state(_pipeline.get(), GST_STATE_NULL); }
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    void run(std::span<const std::int16_t> samples) {
        gst_element_set_state(_pipeline.get(), GST_STATE_PLAYING);
        push(samples);
        const Owned<GstBus> bus(gst_element_get_bus(_pipeline.get()));
        constexpr auto awaited = static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR);
        const Owned<GstMessage> message(gst_bus_timed_pop_filtered(bus.get(), GST_CLOCK_TIME_NONE, awaited));
        if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR) {
            throw std::runtime_error(messageOf(message.get()));
        }
    }

private:
    void push(std::span<const std::int16_t> samples) {
        constexpr std::size_t chunk = 2 * std::size_t{sampleRate};
        for (std::size_t first = 0; first < samples.size(); first += chunk) {
            const auto part = samples.subspan(first, std::min(chunk, samples.size() - first));
            GstBuffer* buffer = gst_buffer_new_allocate(nullptr, part.size_bytes(), nullptr);
            gst_buffer_fill(buffer, 0, part.data(), part.size_bytes());
            GST_BUFFER_PTS(buffer) = gst_util_uint64_scale(first / 2, GST_SECOND, sampleRate);
            GST_BUFFER_DURATION(buffer) = gst_util_uint64_scale(part.size() / 2, GST_SECOND, sampleRate);
            if (gst_app_src_push_buffer(GST_APP_SRC(_source.get()), buffer) != GST_FLOW_OK) return;
        }
        gst_app_src_end_of_stream(GST_APP_SRC(_source.get()));
    }

    Owned<GstElement> _pipeline;
    Owned<GstElement> _source;
};

}  // namespace

std::string_view AudioEncoder::extensionOf(Format format) { return recipeOf(format).extension; }

std::optional<std::string> AudioEncoder::missingElement(Format format) {
    for (const std::string& element : recipeOf(format).elements) {
        std::string name = element.substr(0, element.find(' '));
        const Owned<GstElementFactory> factory(gst_element_factory_find(name.c_str()));
        if (!factory) return name;
    }
    return std::nullopt;
}

void AudioEncoder::write(std::span<const std::int16_t> samples, Format format,
                         const std::filesystem::path& file) {
    Pipeline(recipeOf(format), file).run(samples);
}

}  // namespace helmo::demo
