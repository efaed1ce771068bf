#include "platform/linux/x11/keys/hotkey.h"

#include "base/log.h"
#include "platform/linux/x11/server/xkb.h"

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

/// A held key shall repeat its press alone, not as a series of presses and releases.
void askForPlainRepeats(Connection &connection) {
    xcb_connection_t *xcb = connection.xcb();
    const Owned<xcb_xkb_use_extension_reply_t> used(xcb_xkb_use_extension_reply(
        xcb, xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
    constexpr uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const Owned<xcb_xkb_per_client_flags_reply_t> set(xcb_xkb_per_client_flags_reply(
        xcb, xcb_xkb_per_client_flags(xcb, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0), nullptr));
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
        const auto code = m_watch.keyboard().codeWriting(m_hotkey.letter);
        if (!code)
            return kNoSuchKey;
        std::vector<xcb_void_cookie_t> grabs;
        for (const uint16_t locks : m_watch.keyboard().lockStates())
            grabs.push_back(xcb_grab_key_checked(m_connection->xcb(), /*owner_events=*/0,
                                                 m_connection->root(),
                                                 static_cast<uint16_t>(coreMask(m_hotkey.modifiers) | locks),
                                                 *code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        GlobalHotkey::Status status = 0;
        for (const auto grab : grabs) {
            const Owned<xcb_generic_error_t> error(xcb_request_check(m_connection->xcb(), grab));
            if (error)
                status = error->error_code;
        }
        return xcb_connection_has_error(m_connection->xcb()) ? kNoSuchKey : status;
    }

    std::function<void(GlobalHotkey::Status status)> onLost;

private:
    [[nodiscard]] int descriptor() const { return xcb_get_file_descriptor(m_connection->xcb()); }

    void keyboardChanged() override {
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
        return failed(Status(status));
    return std::make_unique<HeldHotkey>(m_watch, std::move(grab));
}

} // namespace velmo::x11
