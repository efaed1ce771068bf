#include "platform/linux/pulse/microphone.h"

#include "base/main_queue.h"
#include "platform/linux/pulse/connection.h"
#include "platform/linux/pulse/source.h"

#include <cstring>
#include <optional>
#include <pulse/error.h>
#include <pulse/stream.h>
#include <vector>

namespace velmo {

namespace pulse {

namespace {

/// How much sound the server hands over at a time: little, so that the last word of a recording is not still there
/// when it stops.
constexpr pa_usec_t kFragmentMicroseconds = 10000;

struct CloseStream {
    void operator()(pa_stream *stream) const {
        pa_stream_set_state_callback(stream, nullptr, nullptr);
        pa_stream_set_read_callback(stream, nullptr, nullptr);
        pa_stream_set_moved_callback(stream, nullptr, nullptr);
        pa_stream_disconnect(stream);
        pa_stream_unref(stream);
    }
};

class StreamCapture final : public Capture, Connection::Client {
public:
    StreamCapture(std::shared_ptr<Connection> connection, const MainQueue &clock, CaptureListener &listener);
    ~StreamCapture() override;

private:
    /// What the listener was told; it holds for every stream this capture opens.
    struct Layout {
        pa_sample_spec spec;
        pa_channel_map map;
    };

    void connected(pa_context *context) override;
    void disconnected(int error) override;

    void openStream(pa_context *context, const pa_source_info *source);
    [[nodiscard]] bool connectStream(pa_stream *stream);
    void streamChanged();
    void deliverReadable();
    void deliver(const void *data, std::size_t bytes);
    void checkNewSource();
    void lost(int error);

    std::shared_ptr<Connection> m_connection;
    const MainQueue &m_clock;
    CaptureListener &m_listener;

    // All below under the connection's lock.
    SourceQuery m_query;
    std::optional<Layout> m_layout;
    std::unique_ptr<pa_stream, CloseStream> m_stream;
    std::vector<float> m_silence;
    bool m_isOpen = false;      ///< The listener has been told so.
    bool m_isReopening = false; ///< Lost, and nothing has been heard since.
};

StreamCapture::StreamCapture(std::shared_ptr<Connection> connection, const MainQueue &clock,
                             CaptureListener &listener)
    : m_connection(std::move(connection)), m_clock(clock), m_listener(listener) {
    const Connection::Lock lock(*m_connection);
    m_connection->join(*this);
}

StreamCapture::~StreamCapture() {
    const Connection::Lock lock(*m_connection);
    m_connection->leave(*this);
    m_query.cancel();
    m_stream.reset();
}

// Opening

void StreamCapture::connected(pa_context *context) {
    m_query.askForDefault(context,
                          [this, context](const pa_source_info *source) { openStream(context, source); });
}

void StreamCapture::openStream(pa_context *context, const pa_source_info *source) {
    if (!source || !isMicrophone(*source)) {
        lost(PA_ERR_NOENTITY);
        return;
    }
    if (!m_layout) {
        m_layout = Layout{source->sample_spec, source->channel_map};
        m_layout->spec.format = PA_SAMPLE_FLOAT32NE;
    }
    m_stream.reset(pa_stream_new(context, "Dictation", &m_layout->spec, &m_layout->map));
    if (!m_stream || !connectStream(m_stream.get()))
        lost(pa_context_errno(context));
}

bool StreamCapture::connectStream(pa_stream *stream) {
    pa_stream_set_state_callback(
        stream, [](pa_stream *, void *self) { static_cast<StreamCapture *>(self)->streamChanged(); }, this);
    pa_stream_set_read_callback(
        stream,
        [](pa_stream *, std::size_t, void *self) { static_cast<StreamCapture *>(self)->deliverReadable(); },
        this);
    pa_stream_set_moved_callback(
        stream, [](pa_stream *, void *self) { static_cast<StreamCapture *>(self)->checkNewSource(); }, this);
    pa_buffer_attr attributes;
    std::memset(&attributes, 0xff, sizeof attributes); // all as the server likes, but for
    attributes.fragsize =
        static_cast<std::uint32_t>(pa_usec_to_bytes(kFragmentMicroseconds, &m_layout->spec));
    // No device is named, so the stream follows the default.
    return pa_stream_connect_record(stream, nullptr, &attributes, PA_STREAM_ADJUST_LATENCY) == 0;
}

void StreamCapture::streamChanged() {
    const pa_stream_state_t state = pa_stream_get_state(m_stream.get());
    if (state == PA_STREAM_READY && !m_isOpen) {
        m_isOpen = true;
        m_listener.opened({static_cast<int>(m_layout->spec.rate), m_layout->spec.channels});
    } else if (!PA_STREAM_IS_GOOD(state)) {
        lost(pa_context_errno(pa_stream_get_context(m_stream.get())));
    }
}

// Hearing

void StreamCapture::deliverReadable() {
    const void *data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_peek(m_stream.get(), &data, &bytes) == 0 && bytes > 0) {
        deliver(data, bytes);
        pa_stream_drop(m_stream.get());
    }
}

/// A hole in the stream, where the server has no data, is handed on as silence.
void StreamCapture::deliver(const void *data, std::size_t bytes) {
    m_isReopening = false;
    const std::size_t samples = bytes / sizeof(float);
    const std::chrono::microseconds duration(pa_bytes_to_usec(bytes, &m_layout->spec));
    if (!data)
        m_silence.assign(samples, 0.0F);
    m_listener.captured({data ? static_cast<const float *>(data) : m_silence.data(), samples},
                        m_clock.uptime() - duration);
}

// Losing

/// The server has moved the stream. When the last microphone vanishes, it may have been to the sound being played.
void StreamCapture::checkNewSource() {
    m_query.askFor(pa_stream_get_context(m_stream.get()), pa_stream_get_device_index(m_stream.get()),
                   [this](const pa_source_info *source) {
                       if (!source || !isMicrophone(*source))
                           lost(PA_ERR_NOENTITY);
                   });
}

void StreamCapture::disconnected(int error) {
    lost(error);
}

/// Tries once more what had been open, otherwise gives up.
void StreamCapture::lost(int error) {
    m_query.cancel();
    m_stream.reset();
    m_connection->leave(*this);
    if (m_isOpen && !m_isReopening) {
        m_isReopening = true;
        m_connection->join(*this);
    } else {
        m_listener.ended({sentenceFor(error)});
    }
}

class DefaultMicrophone final : public Microphone {
public:
    DefaultMicrophone(std::shared_ptr<Connection> connection, const MainQueue &queue)
        : m_connection(std::move(connection)), m_queue(queue) {}

    [[nodiscard]] std::unique_ptr<Capture> open(CaptureListener &listener) override {
        return std::make_unique<StreamCapture>(m_connection, m_queue, listener);
    }

private:
    std::shared_ptr<Connection> m_connection;
    const MainQueue &m_queue;
};

} // namespace

} // namespace pulse

std::unique_ptr<Microphone> makePulseMicrophone(std::shared_ptr<pulse::Connection> connection,
                                                const MainQueue &queue) {
    return std::make_unique<pulse::DefaultMicrophone>(std::move(connection), queue);
}

} // namespace velmo
