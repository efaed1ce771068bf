#include "platform/linux/x11/keys/hotkey.h"

#include "base/log.h"
#include "platform/linux/x11/server/keyboard_extension.h"

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

/// For a display that cannot be opened or a letter no key writes: X's BadValue.
constexpr GlobalHotkey::Status kNoSuchKey = XCB_VALUE;

/// Auto-repeat never waits this long, so a press after more than this is a new one even though the release of
/// the one before was not seen.
constexpr uint32_t kLongestRepeatMs = 2000;

uint16_t coreMask(KeyFlags flags) {
    // Mod1 and Mod4 are Alt and Super by a convention that every layout of today keeps.
    uint16_t mask = 0;
    mask |= flags.testFlag(KeyFlag::Shift) ? XCB_MOD_MASK_SHIFT : 0;
    mask |= flags.testFlag(KeyFlag::Control) ? XCB_MOD_MASK_CONTROL : 0;
    mask |= flags.testFlag(KeyFlag::Option) ? XCB_MOD_MASK_1 : 0;
    mask |= flags.testFlag(KeyFlag::Command) ? XCB_MOD_MASK_4 : 0;
    return mask;
}

/// One registered hot key. Everything happens in the watch's thread.
class HotkeyGrab final : private DesktopWatch::Observer {
public:
    HotkeyGrab(DesktopWatch &watch, std::unique_ptr<Connection> connection, const Hotkey &hotkey,
               std::function<void()> pressed)
        : m_watch(watch),
          m_connection(std::move(connection)),
          m_hotkey(hotkey),
          m_pressed(std::move(pressed)) {
        askForPlainRepeats(*m_connection);
        m_watch.add(this);
        m_watch.loop().addSource(descriptor(), [this] { handleEvents(); });
    }
    ~HotkeyGrab() override {
        m_watch.loop().removeSource(descriptor());
        m_watch.remove(this);
    }

    /// @return 0, or why the key cannot be had in every state of the locks.
    [[nodiscard]] GlobalHotkey::Status take() {
        m_grabs = wantedGrabs();
        if (m_grabs.empty())
            return kNoSuchKey;
        const GlobalHotkey::Status status = grab();
        if (status != 0)
            m_grabs.clear();
        return status;
    }

    std::function<void(GlobalHotkey::Status status)> onLost;

private:
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(m_connection->xcb()); }

    /// A key with the modifiers that are held or locked, as a core mask.
    struct Grab {
        xcb_keycode_t code;
        uint16_t modifiers;

        bool operator==(const Grab &other) const = default;
    };

    /// One for every state of the locks; none when no key writes the letter.
    [[nodiscard]] std::vector<Grab> wantedGrabs() const {
        const auto code = m_watch.keyboard().codeWriting(m_hotkey.letter);
        std::vector<Grab> grabs;
        if (code) {
            for (const uint16_t locks : m_watch.keyboard().lockStates())
                grabs.push_back({static_cast<xcb_keycode_t>(*code),
                                 static_cast<uint16_t>(coreMask(m_hotkey.modifiers) | locks)});
        }
        return grabs;
    }

    /// @return 0, or the error of one of the grabs.
    [[nodiscard]] GlobalHotkey::Status grab() const {
        xcb_connection_t *xcb = m_connection->xcb();
        std::vector<xcb_void_cookie_t> requests;
        for (const Grab &grab : m_grabs)
            requests.push_back(xcb_grab_key_checked(xcb, /*owner_events=*/0, m_connection->root(),
                                                    grab.modifiers, grab.code, XCB_GRAB_MODE_ASYNC,
                                                    XCB_GRAB_MODE_ASYNC));
        GlobalHotkey::Status status = 0;
        for (const auto request : requests) {
            const Owned<xcb_generic_error_t> error(xcb_request_check(xcb, request));
            if (error)
                status = error->error_code;
        }
        return xcb_connection_has_error(xcb) ? kNoSuchKey : status;
    }

    void keyboardChanged() override {
        if (wantedGrabs() == m_grabs)
            return;
        xcb_ungrab_key(m_connection->xcb(), XCB_GRAB_ANY, m_connection->root(), XCB_MOD_MASK_ANY);
        if (const auto status = take(); status != 0)
            onLost(status);
    }

    void handleEvents() {
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->xcb())}) {
            if (kindOf(*event) == XCB_KEY_PRESS)
                keyPressed(as<xcb_key_press_event_t>(*event).time);
            else if (kindOf(*event) == XCB_KEY_RELEASE)
                m_isDown = false;
        }
    }

    void keyPressed(xcb_timestamp_t at) {
        const bool isRepeat = m_isDown && at - m_pressedAt <= kLongestRepeatMs;
        m_isDown = true;
        m_pressedAt = at;
        if (!isRepeat)
            m_pressed();
    }

    DesktopWatch &m_watch;
    std::unique_ptr<Connection> m_connection;
    Hotkey m_hotkey;
    std::function<void()> m_pressed;
    std::vector<Grab> m_grabs; ///< Those that are in force.
    bool m_isDown = false;
    xcb_timestamp_t m_pressedAt = 0;
};

class HeldHotkey final : public GlobalHotkey::Registration {
public:
    HeldHotkey(std::shared_ptr<DesktopWatch> watch, std::unique_ptr<HotkeyGrab> grab)
        : m_watch(std::move(watch)), m_grab(std::move(grab)) {}
    ~HeldHotkey() override {
        m_watch->run([this] { m_grab.reset(); });
    }

private:
    std::shared_ptr<DesktopWatch> m_watch;
    std::unique_ptr<HotkeyGrab> m_grab;
};

} // namespace

Result<std::unique_ptr<GlobalHotkey::Registration>, GlobalHotkey::Status>
Hotkeys::registerHotkey(const Hotkey &hotkey, std::function<void()> pressed) {
    if (!m_watch)
        return failed(Status(kNoSuchKey));
    auto connection = Connection::open(m_display);
    if (!connection)
        return failed(Status(kNoSuchKey));
    std::unique_ptr<HotkeyGrab> grab;
    Status status = 0;
    m_watch->run([&] {
        grab = std::make_unique<HotkeyGrab>(*m_watch, std::move(*connection), hotkey, std::move(pressed));
        // The main thread writes the line: whoever reads the log may be slow.
        grab->onLost = onMain(m_queue, [](Status lost) {
            log(LogTag::Hotkey, u"Fallback hotkey lost with the change of keyboard: %1"_s.arg(lost));
        });
        status = grab->take();
        if (status != 0)
            grab.reset();
    });
    if (status != 0)
        return failed(status);
    return std::make_unique<HeldHotkey>(m_watch, std::move(grab));
}

} // namespace velmo::x11
