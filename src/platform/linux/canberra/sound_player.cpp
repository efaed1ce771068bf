#include "platform/linux/canberra/sound_player.h"

#include "base/interface.h"

#include <QFile>
#include <QStandardPaths>
#include <array>
#include <canberra.h>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kLongestSeconds = 0.5;

constexpr auto kLatest = 250ms;

/// How long the end of the player waits for its thread; a sound server that hangs may hold that up for ever.
constexpr auto kPatience = 500ms;

struct CueSound {
    SoundCue cue;
    QLatin1StringView name;
};

constexpr std::array kCueSounds = {
    CueSound{SoundCue::Tink, "message-new-instant"_L1},
    CueSound{SoundCue::Pop, "complete"_L1},
    CueSound{SoundCue::Funk, "dialog-warning"_L1},
};

/// The theme's file of that name; empty when there is none. In the order freedesktop.org gives for sound themes, where an
/// (empty) file "….disabled" switches a sound off.
QString themeFile(QLatin1StringView name) {
    for (const char *extension : {"disabled", "oga", "ogg", "wav"}) {
        const QString file =
            u"sounds/freedesktop/stereo/%1.%2"_s.arg(QString(name), QLatin1StringView(extension));
        const QString path = QStandardPaths::locate(QStandardPaths::GenericDataLocation, file);
        if (!path.isEmpty())
            return path;
    }
    return {};
}

/// A connection to the sound server for cues; belongs to the thread of the player and may wait for the server.
class CueOutput : private Unmovable {
public:
    ~CueOutput() {
        const std::lock_guard lock(s_library);
        m_context.reset();
    }

    void open() {
        const std::lock_guard lock(s_library);
        connect();
    }

    /// A connection that has broken since the last cue, perhaps long ago, is made anew.
    void play(const QString &path) {
        const std::lock_guard lock(s_library);
        if (m_context && handOver(path))
            return;
        m_context.reset();
        connect();
        if (m_context)
            (void)handOver(path);
    }

private:
    struct Destroy {
        void operator()(ca_context *context) const { ca_context_destroy(context); }
    };

    void connect() {
        ca_context *context = nullptr;
        if (ca_context_create(&context) != CA_SUCCESS)
            return;
        m_context.reset(context);
        ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Velmo", nullptr);
        ca_context_open(context);
    }

    /// Whether the server has taken the sound; it plays on by itself.
    [[nodiscard]] bool handOver(const QString &path) {
        return ca_context_play(m_context.get(), 0, CA_PROP_MEDIA_FILENAME,
                               QFile::encodeName(path).constData(), CA_PROP_MEDIA_NAME, "Velmo",
                               CA_PROP_MEDIA_ROLE, "event", nullptr) == CA_SUCCESS;
    }

    /// libcanberra loads and unloads its back-end with libltdl, where two threads at once crash.
    inline static std::mutex s_library;

    std::unique_ptr<ca_context, Destroy> m_context;
};

/// What the player and its thread share; the last of the two drops it.
class CueQueue {
public:
    void push(SoundCue cue) {
        const std::lock_guard lock(m_mutex);
        m_cues.push_back({cue, Clock::now()});
        m_changed.notify_all();
    }

    /// Waits for the next cue that is not too late; nothing when the player is gone.
    std::optional<SoundCue> next() {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_isClosed || !m_cues.empty(); });
            if (m_isClosed)
                return std::nullopt;
            const Waiting waiting = m_cues.front();
            m_cues.pop_front();
            if (Clock::now() - waiting.since < kLatest)
                return waiting.cue;
        }
    }

    void close() {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        m_changed.notify_all();
    }

    void finish() {
        const std::lock_guard lock(m_mutex);
        m_isFinished = true;
        m_changed.notify_all();
    }
    bool awaitFinish(Clock::duration patience) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, patience, [this] { return m_isFinished; });
    }

private:
    struct Waiting {
        SoundCue cue;
        Clock::time_point since;
    };

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Waiting> m_cues;
    bool m_isClosed = false;
    bool m_isFinished = false;
};

/// The files of the cues that may be played.
std::map<SoundCue, QString> shortSounds(const AudioLength &lengths) {
    std::map<SoundCue, QString> sounds;
    for (const auto &[cue, name] : kCueSounds) {
        const QString path = themeFile(name);
        const auto seconds = lengths.seconds(path);
        if (seconds && *seconds < kLongestSeconds)
            sounds[cue] = path;
    }
    return sounds;
}

void playCues(CueQueue &queue, const AudioLength &lengths) {
    const auto sounds = shortSounds(lengths);
    CueOutput output;
    if (!sounds.empty())
        output.open();
    while (const auto cue = queue.next()) {
        if (const auto sound = sounds.find(*cue); sound != sounds.end())
            output.play(sound->second);
    }
}

class CanberraSoundPlayer final : public SoundPlayer {
public:
    explicit CanberraSoundPlayer(std::shared_ptr<const AudioLength> lengths)
        : m_thread([queue = m_queue, lengths = std::move(lengths)] {
              playCues(*queue, *lengths);
              queue->finish();
          }) {}
    ~CanberraSoundPlayer() override {
        m_queue->close();
        if (m_queue->awaitFinish(kPatience))
            m_thread.join();
        else
            m_thread.detach();
    }

    void play(SoundCue cue) override { m_queue->push(cue); }

private:
    std::shared_ptr<CueQueue> m_queue = std::make_shared<CueQueue>();
    std::thread m_thread;
};

} // namespace

std::unique_ptr<SoundPlayer> makeCanberraSoundPlayer(std::shared_ptr<const AudioLength> lengths) {
    return std::make_unique<CanberraSoundPlayer>(std::move(lengths));
}

} // namespace velmo
